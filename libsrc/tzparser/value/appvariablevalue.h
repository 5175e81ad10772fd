#pragma once

#include "host/runtime/tzexport.h"
#include "tzparser/text/letlist.h"
#include "tzparser/variable/appdatatype.h"

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <boost/core/noncopyable.hpp>

class CAppParseRule;
class CAppVariableDef;
struct _object;

// CAppVariableValue is the result of a parse: a tree of the shape of the variable definition tree
// in which each node holds what the rules found for that variable.
//
//     std::shared_ptr<CAppVariableValue> root = parser.Parse(text, error);
//     if (auto* uptime = root->GetChildValueByName("uptime"))
//         if (const auto* let = uptime->GetVariableValue(0))
//             use(let->text, let->beginRow, let->beginCol);
//
// A plain variable holds its value as the first of its lets; a further let is reached by GetValues
// only. A table has no lets of its own but a child for each column, and the let number i of a
// column is the cell of row i. Columns may differ in length; the length of a table is that of its
// first column that has any value.
//
// A tree stands alone: it needs neither the rules nor the parser that made it. The values of a rule
// come as the rule holds them, in columns of places in the text that was parsed: making a tree
// costs no value, and reading texts or exporting makes no lets. A tree that shows but a small part
// of a text doesn't keep the text. A tree belongs to whoever received it and is used by one thread
// at a time, for reading too; trees that were made of the same rules may be used by a thread each.
// Pointers that look-ups return are the tree's and live as long as it does, or until the lets of
// that node are changed. Trees that share a definition never write to it: the first that has to,
// copies it for itself.
class TZPARSER_API CAppVariableValue : private boost::noncopyable {
public:
    using Lets = CLetList::Values;

    // Builds the node and all below it from a definition and the rules that were run; the rule may
    // be null, which leaves all without values. With bCopyDef and without a parent the tree keeps
    // its own deep copy of the definition, otherwise the definition must outlive it. The limit is
    // that of the table hash, for this node alone: all below have 5000.
    CAppVariableValue(CAppVariableDef* def, bool bCopyDef, CAppParseRule* rule,
                      CAppVariableValue* parent, int rowCountLimitForHash);
    // A root over a definition that several trees share and nobody writes.
    CAppVariableValue(std::shared_ptr<const CAppVariableDef> def, CAppParseRule* rule,
                      int rowCountLimitForHash);
    // A copy of a tree, with a copy of its definition; properties are copied too.
    explicit CAppVariableValue(const CAppVariableValue* other);
    virtual ~CAppVariableValue();

    const std::string& GetName() const;
    AppDataType_e GetDataType() const;
    // The names from the top down joined by ".", without dollar signs and without parsing roots:
    // "table.column".
    std::string GetVariableFullName() const;
    // The definition, in the tree's copy once it has one of its own (see
    // AddTableHashAndRowCountToProperty); what was handed out before stays valid.
    const CAppVariableDef* GetVarDef() const { return m_varDef; }
    CAppVariableValue* GetParentValue() const { return m_parentValue; }
    std::vector<CAppVariableValue*> GetChildValues() const { return Pointers(m_childValues); }
    // The values of a table's properties, when they have been made; of the root's built-in
    // properties, when the definition asked for them.
    std::vector<CAppVariableValue*> GetProperties() const { return Pointers(m_properties); }
    std::vector<CAppVariableValue*> GetBuiltInProperties() const {
        return Pointers(m_builtInProperties);
    }
    int GetRowCountLimitForHash() const { return m_rowCountLimitForHash; }

    // The number of rows of a table, of lets of any other node.
    int GetValueCount() const;
    // All lets, for reading and writing. What a rule stored as a column becomes lets when they are
    // first asked for, here or by a pointer to one of them: some 90 bytes each.
    Lets& GetValues() { return m_values.Lets(); }
    const Lets& GetValues() const { return m_values.Lets(); }
    // Without making lets: their number, the text of one (empty when there is none; valid until the
    // lets of the node are changed or first asked for) and a copy of one (of zeros when there is
    // none).
    std::size_t GetLetCount() const { return m_values.Count(); }
    std::string_view GetText(std::size_t index) const { return m_values.Text(index); }
    CAppTextLet CopyLet(std::size_t index) const { return m_values.Copy(index); }
    // The cell of a column at a row; of any other node the first let, whatever the index. Null when
    // there is none.
    CAppTextLet* GetVariableValue(int index);
    // Its text alone, without making lets.
    std::optional<std::string_view> GetVariableText(int index) const;
    // The same, and for a column or table the texts of the row's key columns, by column name: those
    // of the definition's keys, or of all columns when it has none.
    CAppTextLet* GetVariableValue(int index, std::map<std::string, std::string>& keys);
    // The same by the definition's table keys and interface keys.
    CAppTextLet* GetVarValueExtendTableKey(int index, std::map<std::string, std::string>& keys);
    // On a column: the first row whose cells have the given texts, by column name; -1 when there is
    // none, when a name is no column, and on any other node. 0 for no keys.
    int GetVariableIndex(const std::map<std::string, std::string>& keys) const;

    // Walks down by child names joined by ".", compared exactly; an empty name gives this node, a
    // missing step null.
    CAppVariableValue* GetChildValueByName(const std::string& name);
    // The same for a name that begins with this node's own name.
    CAppVariableValue* GetValueByName(const std::string& name);

    // The node as a Python object, a new reference: a parsing root or a table is a dict of its
    // children by name, dollar signs included; a column a list as long as its table, with None for
    // what is missing; any other node the object of its first let. See GetPyVariableValue for the
    // objects of lets. The caller holds the interpreter; no error is pending afterwards.
    _object* GetPythonObject();
    // The Python object of the let that GetVariableValue(index) gives, a new reference, of the
    // class that TzP3TypeObject makes for the node's type, a column's base type. None when there is
    // no let, when it has no text (but for one that was changed from outside), when the text is no
    // value of the type, and for types without a class: devices, interfaces, configlets, untyped
    // values. The caller holds the interpreter.
    _object* GetPyVariableValue(int index);

    // Drops the lets of this node, and of all below it when asked.
    void ClearValue(bool bChildren);

    // What changed between two results of one definition: 0 equal, 1 different, -1 not comparable
    // (null, or definitions that differ, which includes the row counts and hashes written into
    // them). Only texts count, never positions. A table is compared as a whole. A column is
    // compared at one 0-based row, with the other's row of the same key texts, wherever it stands;
    // a table without key columns has all its columns as keys. Any other node by its first let.
    int GetCompareValue(CAppVariableValue* other, int row);

    // A table's digest of its hash columns' cells, in row order or, when the definition asks for
    // it, in the order of their texts; see CTzNonCryptographicChecksum. Columns count in the
    // table's own order. Empty for any other node and for a table without hash columns.
    std::string GenerateTableHash() const;
    // On a table: appends the values of its properties, `_rowCount` and `_hashCmp`, and notes both
    // in the tree's definition. The hash is empty for a table of more rows than this node's limit,
    // which is 5000 for every table below a root. A second call appends them once more.
    void AddTableHashAndRowCountToProperty();

protected:
    CAppVariableValue();

    // The comparison of two tables; same answers. Different numbers of columns aren't comparable.
    int CompareTableValue(CAppVariableValue* other);

    // The Python object of a let, which may be null, as a value of a type; see GetPyVariableValue.
    static _object* GetPyObjectByText(const CAppTextLet* let, AppDataType_e type);

    CAppVariableValue* GetChildByName(const std::string& name) const;
    // The node of a definition anywhere in the tree; null when there is none.
    CAppVariableValue* GetValueByDef(const CAppVariableDef* def) const;
    const CAppVariableValue* GetRoot() const;
    std::map<std::string, CAppVariableValue*> GetTableChildValues() const;

private:
    using Nodes = std::vector<std::unique_ptr<CAppVariableValue>>;

    static constexpr int ChildRowCountLimitForHash = 5000;

    static std::vector<CAppVariableValue*> Pointers(const Nodes& nodes);
    static std::unique_ptr<CAppVariableValue> MakeNode(const CAppVariableDef* def,
                                                       CAppVariableValue* parent);

    void BuildBelow(CAppParseRule* rule);
    void TakeValues(CAppParseRule* rule);
    void LeaveLargeText();
    void BuildBuiltInProperties(CAppParseRule* rule);
    void CopyBelow(const CAppVariableValue& other);
    void CopyProperties(const CAppVariableValue& other);
    void DestroyBelow() noexcept;
    void FillKeys(int index, std::map<std::string, std::string>& keys, bool extendTableKeys) const;
    void MakeDefinitionWritable();
    AppDataType_e GetElementType() const;
    bool IsPythonDict() const;
    _object* MakePythonLeaf();
    _object* MakePythonList() const;

    class CKeyIndex;
    struct TablePair;

    const CAppVariableDef* m_varDef = nullptr;
    // At a root that keeps its definition: the one it shares, the one of its own, or both when the
    // second was copied from the first.
    std::shared_ptr<const CAppVariableDef> m_sharedDef;
    std::unique_ptr<CAppVariableDef> m_ownDef;
    Nodes m_childValues;  // in the order of the definition's children
    Nodes m_properties;
    Nodes m_builtInProperties;
    CAppVariableValue* m_parentValue = nullptr;
    CLetList m_values;
    int m_rowCountLimitForHash = ChildRowCountLimitForHash;
    // At a root only, made by the first look-up.
    using NodeByDef = std::unordered_map<const CAppVariableDef*, CAppVariableValue*>;
    mutable std::unique_ptr<NodeByDef> m_valueByDef;
};
