// Writing of a tree as JSON text. The arrays and objects that are open at a moment stand in a list
// of places, the innermost last, so that depth costs no stack.

#include "host/json/hxvalue.h"
#include "host/json/jsontext.h"

#include <algorithm>
#include <cmath>

namespace hxJson {

namespace {

// Deeper levels get no further indentation; else the text would grow with the square of the depth.
constexpr size_t MaxIndentedLevels = 100;
constexpr size_t BlanksALevel = 4;

class Writer {
public:
    explicit Writer(bool isStyled) : m_isStyled(isStyled) {}

    std::string Write(const Value& root) {
        WriteNode(root);
        while (!m_open.empty()) Step();
        return std::move(m_out);
    }

private:
    struct Place {
        ValueConstIterator next;
        ValueConstIterator end;
        bool isObject;
        bool isFirst;
    };

    // Writes the node; of an array or object with elements only the opening bracket.
    void WriteNode(const Value& node) {
        switch (node.type()) {
            case nullValue:
                m_out.append("null");
                break;
            case stringValue:
                AppendQuotedJson(m_out, node.stringView());
                break;
            case realValue:
                m_out.append(std::isfinite(node.asDouble()) ? RealJson(node.asDouble()) : "null");
                break;
            case arrayValue:
            case objectValue:
                Open(node);
                break;
            default:
                m_out.append(node.asString());
                break;
        }
    }

    void Open(const Value& node) {
        if (node.empty()) {
            m_out.append(node.isObject() ? "{}" : "[]");
            return;
        }
        m_out.push_back(node.isObject() ? '{' : '[');
        m_open.push_back({node.begin(), node.end(), node.isObject(), true});
    }

    // Writes the next element of the innermost open node, or closes it.
    void Step() {
        Place& place = m_open.back();
        if (place.next == place.end) {
            const char bracket = place.isObject ? '}' : ']';
            m_open.pop_back();
            NewLine();
            m_out.push_back(bracket);
            return;
        }
        if (!place.isFirst) m_out.push_back(',');
        place.isFirst = false;
        NewLine();
        if (place.isObject) {
            AppendQuotedJson(m_out, place.next.memberName());
            m_out.append(m_isStyled ? ": " : ":");
        }
        const Value& node = *place.next;
        ++place.next;
        WriteNode(node);
    }

    void NewLine() {
        if (!m_isStyled) return;
        m_out.push_back('\n');
        m_out.append(BlanksALevel * std::min(m_open.size(), MaxIndentedLevels), ' ');
    }

    const bool m_isStyled;
    std::string m_out;
    std::vector<Place> m_open;
};

}  // namespace

std::string Value::toString(bool) const {
    return Writer(false).Write(*this);
}

std::string Value::toStyledString() const {
    return Writer(true).Write(*this) + '\n';
}

}  // namespace hxJson
