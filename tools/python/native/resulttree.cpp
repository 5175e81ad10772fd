// The bytes of a result: "TZR1", then the lets of each node from the top down, children in order:
// their number, and for each its four positions, its lines and its text. Behind them the built-in
// properties, names and texts in turn. Numbers are 32 bits, low byte first; lists and texts begin
// with their length. The shape of the tree isn't in there: the document has it.
#include "resulttree.h"

#include "host/json/hxjson.h"
#include "tzparser/variable/appvariabledef.h"

#include <cstdint>
#include <stdexcept>
#include <unordered_map>

#include <boost/python/errors.hpp>

namespace {

constexpr std::string_view Mark = "TZR1";

class CBytesWriter {
public:
    void Number(std::int64_t number) {
        const auto bits = static_cast<std::uint32_t>(number);
        for (int shift = 0; shift < 32; shift += 8) m_bytes += static_cast<char>(bits >> shift);
    }
    void Text(std::string_view text) {
        Number(static_cast<std::int64_t>(text.size()));
        m_bytes += text;
    }
    void Let(const CAppTextLet& let) {
        for (const auto number : {let.beginRow, let.beginCol, let.endRow, let.endCol})
            Number(number);
        Number(static_cast<std::int64_t>(let.lines.size()));
        for (const auto line : let.lines) Number(line);
        Text(let.text);
    }

    std::string m_bytes;
};

// Bytes that a pickle brought; each operation throws std::invalid_argument at a premature end.
class CBytesReader {
public:
    explicit CBytesReader(std::string_view bytes) : m_left(bytes) {}

    std::string_view Take(std::size_t size) {
        if (size > m_left.size()) throw std::invalid_argument("not the values of a result");
        const auto taken = m_left.substr(0, size);
        m_left.remove_prefix(size);
        return taken;
    }
    std::int32_t Number() {
        std::uint32_t bits = 0;
        const auto bytes = Take(4);
        for (std::size_t i = 0; i < 4; ++i)
            bits |= std::uint32_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
        return static_cast<std::int32_t>(bits);
    }
    // The length of a list whose elements take so many bytes at least.
    std::size_t Count(std::size_t elementSize) {
        const auto count = static_cast<std::uint32_t>(Number());
        if (count > m_left.size() / elementSize)
            throw std::invalid_argument("not the values of a result");
        return count;
    }
    std::string_view Text() { return Take(Count(1)); }
    CAppTextLet Let() {
        CAppTextLet let;
        for (auto* number : {&let.beginRow, &let.beginCol, &let.endRow, &let.endCol})
            *number = Number();
        let.lines.resize(Count(4));
        for (auto& line : let.lines) line = Number();
        let.text = Text();
        return let;
    }
    bool IsAtEnd() const { return m_left.empty(); }

private:
    std::string_view m_left;
};

constexpr std::size_t LetSize = 6 * 4;
constexpr std::size_t PropertySize = 2 * 4;

// Calls `visit` for each node from the top down.
template <class Visit>
void WalkNodes(CAppVariableValue& root, Visit visit) {
    std::vector<CAppVariableValue*> pending{&root};
    while (!pending.empty()) {
        auto* const node = pending.back();
        pending.pop_back();
        visit(*node);
        const auto children = node->GetChildValues();
        pending.insert(pending.end(), children.rbegin(), children.rend());
    }
}

PyRef SaveDocument(const CAppVariableValue& root) {
    const std::unique_ptr<CAppVariableDef> def(root.GetVarDef()->Copy(true));
    hxJson::Value document;
    def->Save(document);
    const std::string text = document.toString(false);
    return PyRef(PyBytes_FromStringAndSize(text.data(), static_cast<Py_ssize_t>(text.size())));
}

// What the results of one document share.
struct RestoredShape {
    std::shared_ptr<const CAppVariableDef> def;
    std::shared_ptr<ResultShape> shape;
};

std::shared_ptr<RestoredShape> LoadShape(PyObject* document) {
    hxJson::Value value;
    hxJson::Reader reader;
    if (!reader.parse(std::string(BytesOf(document)), value) || !value.isObject())
        throw std::invalid_argument("not the variables of a result");
    auto def = std::make_shared<CAppVariableDef>();
    def->Load(value);
    auto loaded = std::make_shared<RestoredShape>();
    loaded->def = std::move(def);
    loaded->shape = std::make_shared<ResultShape>();
    loaded->shape->document = PyRef::Share(document);
    return loaded;
}

// The last documents, so that each is read once for many results. The interpreter's lock guards the
// list; it is never destroyed, as it owns Python objects.
std::shared_ptr<RestoredShape> FindShape(PyObject* document) {
    constexpr std::size_t sweepSize = 64;
    static auto& known = *new std::unordered_map<std::string, std::shared_ptr<RestoredShape>>;
    std::string key(BytesOf(document));
    if (const auto found = known.find(key); found != known.end()) return found->second;
    auto loaded = LoadShape(document);
    if (known.size() >= sweepSize) known.clear();
    known.emplace(std::move(key), loaded);
    return loaded;
}

}  // namespace

CResultTree::CResultTree(std::shared_ptr<CAppVariableValue> root,
                         std::shared_ptr<ResultShape> shape)
    : m_root(std::move(root)), m_shape(std::move(shape)) {
    for (auto* const property : m_root->GetBuiltInProperties()) {
        const auto* const let = property->GetVariableValue(0);
        m_builtIns.emplace_back(property->GetName(), let != nullptr ? let->text : std::string());
    }
}

PyObject* CResultTree::Document() const {
    if (!m_shape->document) m_shape->document = SaveDocument(*m_root);
    if (!m_shape->document) boost::python::throw_error_already_set();
    return m_shape->document.Get();
}

std::string CResultTree::SaveValues() const {
    CBytesWriter out;
    out.m_bytes = Mark;
    WalkNodes(*m_root, [&out](const CAppVariableValue& node) {
        const auto count = node.GetLetCount();
        out.Number(static_cast<std::int64_t>(count));
        for (std::size_t i = 0; i < count; ++i) out.Let(node.CopyLet(i));
    });
    out.Number(static_cast<std::int64_t>(m_builtIns.size()));
    for (const auto& [name, text] : m_builtIns) {
        out.Text(name);
        out.Text(text);
    }
    return std::move(out.m_bytes);
}

std::shared_ptr<CResultTree> CResultTree::Restore(PyObject* document, std::string_view values) {
    CBytesReader in(values);
    if (in.Take(Mark.size()) != Mark) throw std::invalid_argument("not the values of a result");
    const auto shape = FindShape(document);
    auto root = std::make_shared<CAppVariableValue>(shape->def, nullptr, 0);
    WalkNodes(*root, [&in](CAppVariableValue& node) {
        auto& lets = node.GetValues();
        const auto count = in.Count(LetSize);
        lets.reserve(count);
        for (std::size_t i = 0; i < count; ++i) lets.push_back(in.Let());
    });
    auto tree = std::make_shared<CResultTree>(std::move(root), shape->shape);
    for (std::size_t left = in.Count(PropertySize); left > 0; --left) {
        std::string name(in.Text());
        tree->m_builtIns.emplace_back(std::move(name), std::string(in.Text()));
    }
    if (!in.IsAtEnd()) throw std::invalid_argument("not the values of a result");
    return tree;
}
