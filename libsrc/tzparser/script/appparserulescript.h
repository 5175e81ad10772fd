#pragma once

#include "tzparser/rule/appparserule.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

class CScriptCode;
class PyRef;
struct _object;

// CAppParseRuleScript hands the whole text to a Python script and takes what the script's function
// ParseText returns for its variables and tables.
//
//     CAppParseRuleScript* rule = new CAppParseRuleScript(&sample);
//     sample.AddChildRule(rule);
//     rule->SetScript("def ParseText(text):\n"
//                     "    return {'host': text.split()[0], 'ports': {'name': ['Gi0/1']}}\n");
//     sample.Parse("sw1# show ports", 0, -1, nullptr);
//     rule->GetVariableValue("host");              // "sw1#"
//     rule->GetVariableValue("ports.name");        // "Gi0/1"
//
// A dict in the returned dict is a table: its keys are columns, their values lists of cells. All
// else is a plain variable. A block in the script's source (see ScriptDeclaration) says what
// counts; without one all does that can be converted. The document of a definition lists the
// variables and tables that a host can count on; a run replaces these lists, in its clone, by what
// it found.
//
// Scripts of all threads run in one interpreter and share its module `__main__`. A script finds
// there what earlier scripts left, and leaves its own names; so of two scripts that run at a time,
// the functions of the one that ran last count for both. The text and the result carry the thread's
// number in their names and stay there until the thread's next run.
//
// A script runs with all rights of the process. A text never does: it is data for the script,
// whatever it holds.
//
// The rule takes no part in line status, bounds and replacements, and runs no children. What
// Python keeps of the script is shared by clones. One thread at a time uses a rule. The
// interpreter is held while a script runs, and may be held by the caller before.
class TZPARSER_API CAppParseRuleScript : public CAppParseRule {
public:
    using TypeMap = std::map<std::string, std::string>;
    using TableTypeMap = std::map<std::string, TypeMap>;
    using PositionMap = std::map<std::string, std::map<int, CAppTextLet>>;
    using TablePositionMap = std::map<std::string, PositionMap>;
    using ColumnSetMap = std::map<std::string, std::set<std::string>>;

    explicit CAppParseRuleScript(CAppParseRule* parent);
    ~CAppParseRuleScript() override;

    // The source. A run changes imports from a module of old in it.
    const std::string& GetScript() const;
    void SetScript(const std::string& script);
    // Empties the script, the variables and the last results; the keys of tables stay.
    void Reset();

    // The variables with their types, by name with "$"; after a run those of its result.
    std::string GetVariableType(const std::string& name) const;
    std::string GetTableVariableType(const std::string& table, const std::string& column) const;
    std::vector<std::string> GetVariableNames() const;
    std::vector<std::string> GetTableNames() const;
    // The columns in their order. An unknown table gets an empty list, which stays with the rule.
    std::vector<std::string> GetTableVariableNames(const std::string& table);
    const TypeMap& GetVariableTypeDefine() const { return m_types->variables; }
    const TableTypeMap& GetTableVariableTypeDefine() const { return m_types->tables; }

    // What the last run found, by variable or by table and column, then by row; rows count from 0,
    // and a declared column has a row -1 too. May be changed.
    PositionMap& GetVariablePos() { return m_variablePos; }
    TablePositionMap& GetTableVariablePos() { return m_tableVariablePos; }
    // Python's words on the last run; empty when there were none.
    const std::string& GetPyErrorText() const { return m_pyErrorMsg; }

    // The keys and hash columns of tables. A table's name counts without the "$" in front. A getter
    // leaves its argument alone for a table that has none. A copy of the rule has none of them.
    using CAppParseRule::GetTableCmpColumns;
    using CAppParseRule::GetTableInterfaceKeys;
    using CAppParseRule::GetTableKeys;
    using CAppParseRule::GetTableKeysEx;
    using CAppParseRule::IsTableCmpSort;
    using CAppParseRule::SetTableCmpColumns;
    using CAppParseRule::SetTableCmpSort;
    void GetTableKeys(const std::string& table, std::set<std::string>& keys) const;
    void GetTableInterfaceKeys(const std::string& table, std::string& key) const;
    // Adds both to `keys`.
    void GetTableKeysEx(const std::string& table, std::set<std::string>& keys) const;
    void SetTableKey(const ColumnSetMap& keys);
    void SetTableInterfaceKey(const TypeMap& keys);
    virtual void GetTableCmpColumns(ColumnSetMap& columns) const;
    virtual void SetTableCmpColumns(const ColumnSetMap& columns);
    virtual void GetTableCmpColumnsByTable(const std::string& table,
                                           std::set<std::string>& columns) const;
    virtual void SetTableCmpColumnsByTable(const std::string& table,
                                           const std::set<std::string>& columns);
    virtual bool IsTableCmpSort(const std::string& table) const;
    virtual void SetTableCmpSort(const std::string& table, bool sort);

    // Runs the script over the text; the lines and the callback play no part. False when Python
    // can't be started, when the script fails or returns no dict, with words in GetLastError; the
    // program of a script that failed is then saved in the folder for temporary files, under
    // "ParserError/".
    bool Parse(const std::string& text, int startLine, int endLine,
               IAppVariableCallback* callback) override;

    // The elements are read in the order in which they are written; one that stands before an
    // earlier one of them isn't found. Keys and hash columns of tables aren't part of the XML form.
    bool LoadFromXml(CMarkup& xml) override;
    bool SaveToXml(CMarkup& xml) override;
    bool AddToVariableTree(CAppVariableDef* def) override;
    // "name" is a plain variable, "table.column" a column; a "$" may stand in front of either.
    std::vector<CAppTextLet> GetVariableValue(const std::string& name) override;
    CAppParseRule* CreateObject(CAppParseRule* parent) override;
    void ClearVariablePosition() override;
    bool SaveResultAsJson(hxJson::Value& node) override;

protected:
    bool LoadParseRule(const hxJson::Value& node) override;
    bool OnCopyTo(CAppParseRule* target) override;

    // One run in the interpreter that all share, and one in an interpreter of its own, for an
    // editor that wants no names of other scripts.
    bool ParseScriptWhenRun(const std::string& text);
    bool ParseScriptWhenEdit(const std::string& text);
    // Takes Python's pending error for this rule's.
    void GetPyErrorMsg();

    // Reads what ParseText returned; false when it is no dict. The interpreter is held.
    bool FillVariablePosInfos(_object* result);
    // The text and type of a value; false for one that has none. The type comes in with the
    // default.
    bool ExtractSingleVariableInfo(_object* object, AppDataType_e& type, std::string& text);
    bool ExtractSingleObjectInfo(_object* object, AppDataType_e& type, std::string& text);
    void AddVariableInfo(const std::string& name, const std::string& text, AppDataType_e type,
                         int row);
    void AddTableVariableInfo(const std::string& table, const std::string& column,
                              const std::string& text, AppDataType_e type, int row);
    // Brings the lists of types and of columns in order.
    void CheckVariableType();
    void CheckTableColumns();

private:
    struct Plan;
    struct Definition {
        std::string script;
        std::shared_ptr<const Plan> plan;  // made when the definition is loaded
    };
    struct Types {
        TypeMap variables;
        TableTypeMap tables;
        std::map<std::string, std::vector<std::string>> columns;  // in the order of display
    };
    struct Keys {
        ColumnSetMap tableKeys;
        TypeMap interfaceKeys;
        ColumnSetMap cmpColumns;
        std::map<std::string, bool> cmpSort;
    };
    // The place of a column's cells, and of its type when no declaration gives it.
    struct ColumnPlace {
        std::string* type = nullptr;
        std::map<int, CAppTextLet>* lets = nullptr;
    };

    static std::shared_ptr<const Plan> MakePlan(const std::string& script);
    std::shared_ptr<const Plan> PlanOfRun();

    void LoadTables(const hxJson::Value& node);
    void LoadTable(const hxJson::Value& element, const hxJson::Value& node);

    void LoadTablesFromXml(CMarkup& xml);
    void LoadTableFromXml(CMarkup& xml);
    bool SaveTableToXml(CMarkup& xml, const std::string& name, const TypeMap& types) const;

    bool InnerParseByScript(const std::string& text);
    bool RunScript(const std::string& text, CScriptCode& code, _object* globals);
    bool FailAtServer(const char* function, int line, const char* words);
    void SaveProgram(const std::string& program) const;

    void ParseVariableTree();
    void ReadTable(const std::string& table, _object* columns);
    void ReadColumn(const std::string& table, const std::string& column, _object* cells);
    void ReadColumnOrder(const std::string& table, _object* names);
    bool FindColumn(const std::string& table, const std::string& column, ColumnPlace& place);
    void FillRows();

    std::unique_ptr<CAppVariableDef> MakeTableDef(const std::string& table, const TypeMap& types,
                                                  CAppVariableDef* parent) const;

    CCopyOnWrite<Definition> m_definition;
    CCopyOnWrite<Keys> m_keys;
    // The document's lists, until a run puts its own in their place.
    CCopyOnWrite<Types> m_types;

    // What the last run made.
    PositionMap m_variablePos;
    TablePositionMap m_tableVariablePos;
    std::string m_pyErrorMsg;
    bool m_hasDeclaration = false;
    bool m_hasPresentImports = false;       // a run has changed the script
    std::shared_ptr<const Plan> m_runPlan;  // when the definition has none
};
