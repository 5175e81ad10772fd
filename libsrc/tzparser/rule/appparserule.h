#pragma once

#include "host/json/hxjson.h"
#include "host/runtime/copyonwrite.h"
#include "tzparser/pattern/appregex.h"
#include "tzparser/rule/applinestatus.h"
#include "tzparser/rule/nigroupinfo.h"
#include "tzparser/rule/rulefactory.h"
#include "tzparser/rule/searchreplaceoperation.h"
#include "tzparser/text/apptextlet.h"
#include "tzparser/text/letlist.h"
#include "tzparser/text/lumoserializable.h"
#include "tzparser/variable/appdatatype.h"

#include <cstddef>
#include <initializer_list>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <boost/core/noncopyable.hpp>

class CAppParseRuleSample;
class CAppSampleLines;
class CAppVariableDef;
class CMarkup;
class IParagraphScope;

// The kinds of rules; the numbers are also the "type" of rule documents and never change.
enum RuleType {
    RuleType_KeyWord = 0,
    RuleType_Filter = 1,
    RuleType_DesignReader = 2,
    RuleType_Table = 3,
    RuleType_Paragraph = 4,
    RuleType_Ping = 5,
    RuleType_TraceRoute = 6,
    RuleType_Sample = 7,
    RuleType_Script = 8,
    RuleType_DiffFilter = 9,
    RuleType_Text = 15,
};

// Whether rules of a kind make a keyword rule as their first child when they are constructed: a
// keyword node in the first place of their document fills it, and it stays when it is emptied.
constexpr bool HasDefaultKeyWord(RuleType type) {
    return type == RuleType_Filter || type == RuleType_DesignReader || type == RuleType_Paragraph;
}

// What a host gives a parse to answer for global variables. Passed down a rule tree unchanged; may
// be null everywhere.
class IAppVariableCallback {
public:
    // Fills `value` with the value of the global variable `name`.
    virtual void GetVariableValue(const std::string& name, std::string& value) = 0;

protected:
    ~IAppVariableCallback() = default;
};

// CAppParseRule is a node of a rule tree: the base of the root (CAppParseRuleSample) and of all
// kinds of rules.
//
//     auto rule = std::make_unique<CAppParseRuleSample>("");
//     rule->Load(document);                          // children are made of the document
//     if (!rule->Parse(text, 0, -1, nullptr))
//         report(rule->GetLastError());
//     auto lets = rule->GetVariableValue("uptime");
//
// A rule owns its children. What its definition says and what a parse makes are kept apart: the
// definition half is shared by all clones until one of them is edited, the run half is each rule's
// own, so a clone costs a few pointers and behaves as a deep copy.
//
// Line numbers are 0-based indexes into the lines of the sample; a range includes its start and
// excludes its end. Failures are quiet: an operation reports by its result, and a rule's words are
// the text of GetLastError, which is replaced, never appended to. Parse tells that a rule ran, not
// that it matched.
//
// A rule tree is used by one thread at a time; compiled expressions and definition halves are
// immutable and shared by trees on any threads.
class TZPARSER_API CAppParseRule : public Lumo::serialization::LumoSerializable<hxJson::Value>,
                                   private boost::noncopyable {
public:
    // The parent may be null; the rule doesn't add itself to it, AddChildRule does that.
    CAppParseRule(RuleType ruleType, CAppParseRule* parent);
    ~CAppParseRule() override;

    // Reads a rule node: its children, its envelope and, by LoadParseRule, the kind's own keys.
    // False only when the kind's keys can't be read; unreadable parts are skipped without words.
    bool Load(const hxJson::Value& node) override;
    // Writes the children and the kind's own keys. The envelope's id, bounds and operations aren't
    // written.
    bool Save(hxJson::Value& node) override;

protected:
    virtual bool LoadParseRule(const hxJson::Value& node);
    virtual bool SaveParseRule(hxJson::Value& node);

public:
    // Runs the rule over the lines from startLine to endLine, exclusive. The base runs the children
    // in order, ignores their results and returns true.
    virtual bool Parse(const std::string& text, int startLine, int endLine,
                       IAppVariableCallback* callback);

    // Takes ownership of a rule and appends it; null is ignored. Always true.
    virtual bool AddChildRule(CAppParseRule* child);
    // Destroys a child and takes it out; a rule that is no child is left alone. Always true.
    virtual bool DelChildRule(CAppParseRule* child);
    // Appends nothing, replaces: the children in order, still owned by this rule.
    virtual void GetChildRules(std::vector<CAppParseRule*>& children);
    // Adds what the rule yields below `def`, which owns it from then on.
    virtual bool AddToVariableTree(CAppVariableDef* def) = 0;
    // The rule's line status, taken from the parent when the count of lines differs, for hosts to
    // read and write. Valid until the next parse.
    virtual AppLineStatus& GetLineStatus();
    // The same as rules ask each other for it, without making a bit a line.
    virtual const CAppLineStatus& LineStatus();
    // Reads the rule from the element that the document's cursor stands in. What has no element
    // keeps its value; children are added to those there are. The base reads the children and is
    // always true.
    virtual bool LoadFromXml(CMarkup& xml);
    // Adds the rule at the document's cursor, with its own element around it; the base adds the
    // children alone. False when a part is left out, since the document would be too deep. The
    // cursor's level stays in both.
    virtual bool SaveToXml(CMarkup& xml);
    // Copies of the values found for a variable, in line order; empty when there are none. The base
    // asks the children in order for the first answer that isn't empty.
    virtual std::vector<CAppTextLet> GetVariableValue(const std::string& name);
    // The same as the rule holds them, without making lets. A class that replaces one of both has
    // to give the same answer to the other: this asks GetVariableValue.
    virtual CLetList FindValues(const std::string& name);
    // The rule that owns a variable; null when none does. The base asks the children in order.
    virtual CAppParseRule* GetChildRuleByVariableName(const std::string& name);
    // This rule or one of its own children by the id of the document; null for an empty or unknown
    // id. It looks no further down than one level.
    virtual CAppParseRule* GetChildRuleByRuleId(const std::string& id);
    // Whether a variable was left without a value.
    virtual bool IsNoneExist();
    // A new empty rule of the same class; the caller owns it.
    virtual CAppParseRule* CreateObject(CAppParseRule* parent) = 0;
    virtual void ClearVariablePosition();

    // The rule's part of the parse result document, as XML at the document's cursor and as JSON.
    virtual void SaveResultAsXML(CMarkup& xml);
    virtual bool SaveResultAsJson(hxJson::Value& node);
    virtual bool SaveLineNumberAndResult(hxJson::Value& node);
    // Adds the lines of variables and the lines shown around them; no line stands in both.
    virtual void GetAllVarLineNums(std::set<int>& varLines, std::set<int>& extendLines) const;

protected:
    // Copies the kind's own fields; every kind replaces it.
    virtual bool OnCopyTo(CAppParseRule* target);
    // Tells the root that the definition has changed.
    virtual void SetRuleModify();

public:
    // What table rules answer; the base has none of it. GetTableRowCount is -1 for a rule that is
    // no table.
    virtual void GetTableKeys(std::set<std::string>& keys) const;
    virtual void AddTableKey(const std::string& key);
    virtual void GetTableKeysEx(std::set<std::string>& keys) const;
    virtual int GetTableCmpColumns(std::set<std::string>& columns) const;
    virtual void SetTableCmpColumns(std::set<std::string>& columns);
    virtual bool IsTableCmpSort() const;
    virtual void SetTableCmpSort(bool sort);
    virtual int GetTableRowCount() const;
    virtual void SetTableRowCount(int count);
    virtual const std::string& GetTableHash() const;
    virtual void SetTableHash(const std::string& hash);
    virtual void GetTableInterfaceKeys(std::set<std::string>& keys) const;
    virtual void AddTableInterfaceKey(const std::string& key);

    // A line as the text has it, and as this rule's replacements left it. Empty for a number that
    // isn't a line. Valid until the next parse.
    virtual const std::string& GetOriginalLine(int line) const;
    virtual const std::string& GetWrappedLine(int line) const;
    // The line of a variable's first value; false when the rule has no such variable.
    virtual bool GetVariableLine(const std::string& name, int& line);
    // What the rules below ask of a paragraph; null for every other kind.
    virtual IParagraphScope* AsParagraphScope();
    virtual const IParagraphScope* AsParagraphScope() const;
    // The rule as the root that owns the lines; null for every other kind.
    virtual CAppParseRuleSample* AsSample();
    virtual const CAppParseRuleSample* AsSample() const;

    RuleType GetRuleType() const { return m_ruleType; }
    void SetRuleType(RuleType ruleType) { m_ruleType = ruleType; }
    int GetRuleLevel() const { return m_ruleLevel; }
    std::string GetRuleGuid() const { return m_definition->ruleGuid; }
    CAppParseRule* GetParentRule() { return m_parent; }
    const CAppParseRule* GetParentRule() const { return m_parent; }
    CAppParseRule* GetRootParentRule();
    const CAppParseRule* GetRootParentRule() const;
    bool IsLeaf() const { return m_children.empty(); }
    const std::vector<std::unique_ptr<CAppParseRule>>& Children() const { return m_children; }
    const std::string& GetLastError() const { return m_lastError; }
    void SetLastError(const std::string& error) { m_lastError = error; }
    // Whether results carry what the extended built-in variables need.
    bool GetSaveExBuiltInInfo() const { return m_saveExBuiltInInfo; }
    void SetSaveExBuiltInInfo(bool save) { m_saveExBuiltInInfo = save; }
    // The range of the last OnBeginParse, its end exclusive.
    int GetNIStartLine() const { return m_niStartLine; }
    int GetNIEndLine() const { return m_niEndLine; }
    const NIGroupInfo& GetNIStart() const { return m_definition->niStart; }
    const NIGroupInfo& GetNIEnd() const { return m_definition->niEnd; }
    // Replaced texts by line number.
    const std::map<int, std::string>& GetSearchReplaceResult() const {
        return *m_searchReplaceResult;
    }
    static AppDataType_e GetDataType(const std::string& typeName);
    // Whether some descendant is a script rule; the argument plays no part.
    bool HasChildParser(int unused) const;

    // A copy of the tree below and including this rule, which the caller owns; null when a part
    // can't be copied.
    CAppParseRule* Clone(CAppParseRule* parent);
    // Copies this rule and its children into a rule of the same kind; false for null and for
    // another kind.
    bool CopyTo(CAppParseRule* target);

    // Takes over the parent's line status and applies the bounds to the range: false when a bound
    // isn't found.
    bool OnBeginParse(int startLine, int endLine);

    // Runs the operations over the open lines of the range; always true. What the matcher throws
    // goes to the caller.
    bool ExecuteSearchReplace(int startLine, int endLine);
    // The replaced text of a line: empty, and false in the first form, when there is none.
    bool GetSearchReplaceLine(int line, std::string& text) const;
    const std::string& GetSearchReplaceLine(int line) const;

    // Finds the line of one bound within a range. `line` comes in with the default and stays when
    // nothing is found.
    bool CalcNILineNo(int startLine, int endLine, const NIGroupInfo& info, bool isStart, int& line);
    // The same with this rule's own bounds, for both ends of the range given.
    bool GetNIStartEndLineNumber(int& startLine, int& endLine);

    // The first line of the first match of an expression over the lines of a range, closed lines
    // standing as empty ones; endLine when nothing matches. `matchEnd` is the line where the match
    // ends.
    int ParseMultipleLineMatch(int startLine, int endLine, const std::string& pattern,
                               int& matchEnd);

    // Positions in a text whose lines end in line feeds.
    static int GetPosByLine(const std::string& text, const std::string& line, int startPos,
                            bool first);
    static int GetLineCountByPos(std::string_view text, int pos);
    static int ConvertToLinePos(std::string_view text, int line, int pos);

    // The expression of a statement, remembered in `regexByLine`; a line that is no statement gives
    // its escaped text, which isn't remembered. Statements over several lines are noted in
    // `multiLine`.
    static std::string GetRegexByLine(const std::string& line,
                                      std::map<std::string, std::string>& regexByLine,
                                      std::set<std::string>& multiLine);

    // For each variable the sorted names of the data types that one of its values (at most 99 are
    // tried) fits.
    static std::map<std::string, std::vector<std::string>> GetPosibleVariableTypes(
        const std::map<std::string, std::set<std::string>>& values);

    // Brings all line ends of a text to line feeds.
    static void FormatString(std::string& text);
    static bool IsMultiLineSyntax(const std::string& text);

    // Writes variables as the parse result document has them, in the given order or else by name.
    bool SaveResultAsJSON(const std::map<std::string, std::map<int, CAppTextLet>>& values,
                          hxJson::Value& node, const std::map<std::string, std::string>& types,
                          std::vector<std::string> order);

    // The same below the cursor of an XML document, all variables by name and the lets with their
    // texts.
    static void SaveResultAsXml(const std::map<std::string, std::map<int, CAppTextLet>>& values,
                                CMarkup& xml, const std::map<std::string, std::string>& types);

    // The same bytes as GetOriginalLine and GetWrappedLine without making a string; views live
    // until the next parse.
    std::string_view OriginalLineView(int line) const;
    std::string_view WrappedLineView(int line) const;
    bool IsLineOpen(int line) const { return m_lineStatus.IsOpen(line); }

protected:
    // Makes the child rules of a "child" object; false when it holds none that can be made.
    bool FillChildNode(const hxJson::Value& child);
    bool SaveChildNode(hxJson::Value& child);
    // Adds the rules of the "parserule" elements on the level of a document; an element of a kind
    // that isn't among `known` is skipped, as are rules deeper than 333 below the root.
    void FillFromXml(CMarkup& xml, std::initializer_list<RuleType> known);
    // Adds the children to the level; false when a part is left out.
    bool SaveChildrenToXml(CMarkup& xml);

    // The compiled expression of a pattern, one object for a whole tree, kept by its root; null
    // when it doesn't compile. The pattern text alone is the key, the flags play no part.
    std::shared_ptr<const CAppRegex> GetCachedRegex(const std::string& pattern, unsigned flags);

    // The root as the sample that owns the lines; null for a tree with another root.
    CAppParseRuleSample* GetSampleRoot();
    const CAppParseRuleSample* GetSampleRoot() const;
    const CAppSampleLines* GetSampleLines() const;

    // FindValues of the children in order, the first answer that isn't empty.
    CLetList FindValuesBelow(const std::string& name);

    CAppLineStatus m_lineStatus;

private:
    struct ByText {
        using is_transparent = void;
        using Regex = std::shared_ptr<const CAppRegex>;
        bool operator()(const Regex& a, const Regex& b) const {
            return a->GetText() < b->GetText();
        }
        bool operator()(const Regex& a, std::string_view b) const { return a->GetText() < b; }
        bool operator()(std::string_view a, const Regex& b) const { return a < b->GetText(); }
    };
    using RegexSet = std::set<std::shared_ptr<const CAppRegex>, ByText>;
    using RegexList = std::vector<std::shared_ptr<const CAppRegex>>;  // in the order of the texts
    struct Definition {
        NIGroupInfo niStart;
        NIGroupInfo niEnd;
        std::vector<SearchReplaceOperation> operations;
        std::string ruleGuid;
    };

    bool AddRuleOfNode(const hxJson::Value& node, bool isFirst, bool isArray);
    // The child that a node of a document fills: a new one, or the default keyword rule for a
    // keyword in the first place. Null for a kind that isn't known in this form.
    CAppParseRule* AddRuleOfType(int type, bool isFirst, RuleNodeForm_e form);
    void LoadBounds(const hxJson::Value& node);
    void CopyOwnFieldsTo(CAppParseRule& target) const;
    std::shared_ptr<const CAppRegex> FindCachedRegex(const std::string& pattern) const;
    void SetCachedRegex(std::shared_ptr<const CAppRegex> regex);
    bool CalcLineByVariable(const NIGroupInfo& info, int& line);
    bool CalcLineByPattern(int startLine, int endLine, const NIGroupInfo& info, int& line);
    int FindLine(int startLine, int endLine, const CAppRegex& expression);
    void ReplaceInLine(int line, std::vector<char>& done);

protected:
    void AddOperation(const hxJson::Value& node);
    void DeleteChildren();
    // Hands the expressions compiled so far to all later clones at once: called when a definition
    // is loaded.
    void ShareCachedRegex();

private:
    // The tree.
    CAppParseRule* m_parent;
    std::vector<std::unique_ptr<CAppParseRule>> m_children;
    RuleType m_ruleType;
    int m_ruleLevel;

    // What the definition says.
    CCopyOnWrite<Definition> m_definition;
    bool m_saveExBuiltInInfo = false;

    // Compiled expressions: those that came with the definition, and those of this rule alone.
    std::shared_ptr<const RegexList> m_sharedRegex;
    RegexSet m_cachedRegex;

    // What the last parse made.
    std::string m_lastError;
    int m_niStartLine = 0;
    int m_niEndLine = 0;
    CCopyOnWrite<std::map<int, std::string>> m_searchReplaceResult;
};
