// A walk from the top down with a stack of its own. An open node goes through its sections, each
// the list of one kind of node below it, and is closed behind the last.
#include "treeformat.h"

#include "host/json/jsontext.h"
#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appvariablearraydef.h"

#include "jsonlayout.h"

#include <array>

namespace {

struct Section {
    std::string_view key;
    std::vector<CAppVariableValue*> (CAppVariableValue::*members)() const;
};

constexpr std::array<Section, 3> Sections = {{
    {"children", &CAppVariableValue::GetChildValues},
    {"properties", &CAppVariableValue::GetProperties},
    {"builtIn", &CAppVariableValue::GetBuiltInProperties},
}};

void AppendMember(std::string& out, std::string_view name, int number) {
    hxJson::AppendQuotedJson(out, name);
    out += ": ";
    out += std::to_string(number);
    out += ", ";
}

void AppendLines(std::string& out, const std::vector<int>& lines) {
    out += ", \"lines\": [";
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i != 0) out += ", ";
        out += std::to_string(lines[i]);
    }
    out += ']';
}

void AppendLet(std::string& out, const CAppTextLet& let) {
    out += '{';
    AppendMember(out, "beginRow", let.beginRow);
    AppendMember(out, "beginCol", let.beginCol);
    AppendMember(out, "endRow", let.endRow);
    AppendMember(out, "endCol", let.endCol);
    out += "\"text\": ";
    hxJson::AppendQuotedJson(out, let.text);
    if (!let.lines.empty()) AppendLines(out, let.lines);
    out += '}';
}

class CTreeWalk {
public:
    explicit CTreeWalk(COutputWriter& out) : m_json(out) {}

    void Write(const CAppVariableValue& root) {
        Open(root);
        while (!m_open.empty()) Step();
    }

private:
    struct OpenNode {
        explicit OpenNode(const CAppVariableValue& opened) : node(&opened) {}

        const CAppVariableValue* node;
        std::size_t section = 0;  // of the members, counted from 1; 0 before the first section
        std::vector<CAppVariableValue*> members;
        std::size_t next = 0;
    };

    void Open(const CAppVariableValue& node) {
        m_json.Begin('{');
        m_json.Key("name");
        hxJson::AppendQuotedJson(m_json.Value(), node.GetName());
        m_json.Key("type");
        m_json.Value() += std::to_string(node.GetDataType());
        if (const auto* array = dynamic_cast<const CAppVariableArrayDef*>(node.GetVarDef())) {
            m_json.Key("baseType");
            m_json.Value() += std::to_string(array->GetBaseType());
        }
        if (!node.GetValues().empty()) WriteLets(node.GetValues());
        m_open.emplace_back(node);
    }

    void WriteLets(const CAppVariableValue::Lets& lets) {
        m_json.Key("values");
        m_json.Begin('[');
        for (const auto& let : lets) AppendLet(m_json.Value(), let);
        m_json.End();
    }

    void Step() {
        auto& open = m_open.back();
        if (open.next < open.members.size()) {
            Open(*open.members[open.next++]);
            return;
        }
        if (!open.members.empty()) m_json.End();
        if (open.section == Sections.size()) {
            m_json.End();
            m_open.pop_back();
            return;
        }
        const auto& section = Sections[open.section++];
        open.members = (open.node->*section.members)();
        open.next = 0;
        if (open.members.empty()) return;
        m_json.Key(section.key);
        m_json.Begin('[');
    }

    CJsonLayout m_json;
    std::vector<OpenNode> m_open;
};

}  // namespace

void WriteTree(const CAppVariableValue& root, COutputWriter& out) {
    CTreeWalk(out).Write(root);
}
