#pragma once

#include "tzparser/rule/appparserule.h"
#include "tzparser/text/letcolumns.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// CAppParseRuleKeyWord pulls single values out of lines: its definition lists keyword lines (KVPs)
// in the statement language, and each "$name" in them becomes a variable.
//
//     auto* rule = new CAppParseRuleKeyWord(&sample);
//     sample.AddChildRule(rule);                        // the sample owns it now
//     rule->AddKVP("uptime is $int:days days");
//     sample.Parse("r1 uptime is 12 days\n", 0, -1, nullptr);
//     rule->GetVariablePos()["$days"].begin()->second;  // row 0, columns 13 to 15, "12"
//
// A KVP takes the first line of the range that it matches, anywhere in the line. Lines aren't used
// up: the next KVP begins at the first line again. After a parse each known variable has a value
// for the range: one that nothing matched has a stand-by value with an empty span at the first
// line. Below a paragraph a rule runs once a paragraph and keeps the values of all of them, keyed
// by line.
//
// KVPs are compiled when the definition is loaded, otherwise when they are first needed. What the
// compiling finds is part of the definition half and shared by clones. One thread at a time uses a
// rule.
class TZPARSER_API CAppParseRuleKeyWord : public CAppParseRule {
public:
    using VariablePositions = CLetColumns::Positions;

    explicit CAppParseRuleKeyWord(CAppParseRule* parent);
    ~CAppParseRuleKeyWord() override;

    // Definition. Setters tell the root that the definition has changed; nothing is compiled by
    // them.
    void AddKVP(const std::string& kvp);
    void AddStatement(const std::string& statement);
    // Overwrites a KVP in place, deletes it when the new text is empty, appends a new text whose
    // old one isn't there. Always true.
    bool UpdateKVP(const std::string& oldKvp, const std::string& newKvp);
    // Takes out a KVP and the types of its variables; values found stay.
    void DelKVP(const std::string& kvp);
    void DelStatement(const std::string& statement);
    // Takes a variable out of the KVP that declares it: the KVP goes with its only variable,
    // otherwise "$_dummy" stands in the variable's place. An edited KVP yields nothing until the
    // definition is saved and loaded again.
    void DeleteVariable(const std::string& name);
    // Replaces the first occurrence of a variable in a text, by "$_dummy" when the replacement is
    // empty.
    void ReplaceDummyVariable(std::string& text, const std::string& variable,
                              const std::string& replacement);
    // The same in each KVP. The type of the variable replaced stays; a variable written with a type
    // word isn't found.
    void ReplaceInKVPs(const std::string& variable, const std::string& replacement);
    // Empties definition and values; context lines and mline definitions stay.
    void Reset();

    const std::vector<std::string>& GetKVPs() const { return m_definition->kvps; }
    const std::vector<std::string>& GetStatements() const { return m_definition->statements; }
    // False below a paragraph, at any depth.
    bool IsSingle() const { return m_isSingle; }
    // The names that a KVP declares, without dummies; false for an empty KVP and one that doesn't
    // compile.
    bool ExtractVariableNames(const std::string& kvp, std::vector<std::string>& names);
    // Cuts the statements at their first "=" into names and expressions. Always true.
    bool ParseStatement();
    // The expression of a KVP; empty when it has none or wasn't compiled yet.
    std::string GetKVPRegex(const std::string& kvp) const;
    // All variables that a reader of this rule's lines sees, in order of first appearance.
    std::vector<std::string> GetVariableNames();
    // The type word of a variable, "$" in front or not; empty when it isn't known.
    std::string GetVariableType(const std::string& name) const;
    // The names that a KVP declares with the dummies among them, so that index i is capture group
    // i + 1; empty when it wasn't compiled yet.
    std::vector<std::string> GetKVPVariableDefineWithDummy(const std::string& kvp) const;
    // Compiles what runs will need, also the lines of the paragraph above, where all clones find
    // it. Called when a definition is loaded, by the paragraph once more when it is complete.
    void PreparePlan();
    // The text kept for an enumerated variable; empty when there is none.
    std::string GetEnumVariableValue(const std::string& name) const;

    // Matching.
    bool Parse(const std::string& text, int startLine, int endLine,
               IAppVariableCallback* callback) override;
    bool ParseKeywordVariable(int startLine, int endLine);
    // The KVPs that a run takes, in its order: this rule's own and, in the first rule of a
    // paragraph, those of the paragraph's start and id lines in front of them.
    std::vector<std::string> GetRunKVPs() const;
    // Runs one expression over a range of lines joined; only its first match counts. Names that get
    // a value leave `missing`. False when the expression doesn't compile.
    bool ParseKeywordVariableByMultipleLine(int startLine, int endLine,
                                            std::set<std::string>& missing,
                                            const std::string& regex,
                                            const std::vector<std::string>& names);
    // The values found, by variable name with "$" and by line: for reading, and as the maps
    // themselves for a host.
    const CLetColumns& Values() const { return m_values; }
    VariablePositions& GetVariablePos() { return m_values.HostPositions(); }
    // Forgets all values, as a run does that isn't below a paragraph.
    void ClearValues() { m_values.Clear(); }
    // Stores a value of a known variable under a line; a name without a type is ignored.
    void AddVariablePosInfo(const std::string& name, int line, const CAppTextLet& value);
    // For each variable that has values and a type, stores an empty value under each line, whatever
    // stood there. Lines ascend.
    void StoreEmptyValues(const std::vector<int>& lines);
    // Overwrites values by those of a paragraph's parent lines: each value takes the latest that
    // begins above its line.
    void SetVariableValueOfParentLine(
        const std::map<std::string, std::vector<CAppTextLet>>& parentValues);

    bool AddToVariableTree(CAppVariableDef* parent) override;
    // KVPs and statements are added to those there are, and nothing is compiled; types replace the
    // types there are.
    bool LoadFromXml(CMarkup& xml) override;
    bool SaveToXml(CMarkup& xml) override;
    std::vector<CAppTextLet> GetVariableValue(const std::string& name) override;
    CLetList FindValues(const std::string& name) override;
    CAppParseRule* GetChildRuleByVariableName(const std::string& name) override;
    bool IsNoneExist() override;
    CAppParseRule* CreateObject(CAppParseRule* parent) override;
    bool GetVariableLine(const std::string& name, int& line) override;
    void SaveResultAsXML(CMarkup& xml) override;
    bool SaveResultAsJson(hxJson::Value& node) override;
    bool SaveLineNumberAndResult(hxJson::Value& node) override;
    void GetAllVarLineNums(std::set<int>& varLines, std::set<int>& extendLines) const override;

protected:
    // The lines of a built-in form, see below.
    class CBuiltInLines;

    // For the built-in forms, which are keyword rules with another number and lines of their own.
    CAppParseRuleKeyWord(RuleType ruleType, CAppParseRule* parent);
    CAppParseRuleKeyWord(RuleType ruleType, CAppParseRule* parent, const CBuiltInLines& lines);

    // Forgets definition and values as Reset does, and takes over the lines.
    void Install(const CBuiltInLines& lines);
    // The part of a parse behind its bounds: reads the range that OnBeginParse settled.
    void ParseRange();
    void ClearVariable(const std::string& name) { m_values.Column(name).Clear(); }
    // Stores a value that stands nowhere in the text, under line 0 with positions of 0.
    void StoreComputed(const std::string& name, std::string text);
    // The same for the outcome of a built-in form: "True" or "False", as the result of the lines.
    void StoreResult(const CBuiltInLines& lines, bool result);
    void SetVariableType(const std::string& name, const std::string& type);

    bool LoadParseRule(const hxJson::Value& node) override;
    bool SaveParseRule(hxJson::Value& node) override;
    bool OnCopyTo(CAppParseRule* target) override;
    // Notes that the lines around a line are to be shown with the result; not below tables and
    // paragraphs.
    void AddLineAndOriTextInfo(int line);

private:
    using Spans = std::vector<std::pair<std::string, std::string>>;

    // What compiling a KVP found. A definition holds many of these, so what two of its parts say is
    // held once.
    struct Kvp {
        std::string regexText;  // empty when `regex` has it
        std::shared_ptr<const CAppRegex>
            regex;                            // null until a plan was made, or it doesn't compile
        std::vector<std::string> names;       // without dummies
        std::vector<std::string> groupNames;  // of the capture groups in order
        bool hasDummy = false;                // else the groups have the names
        bool isMultiLine = false;

        const std::string& RegexText() const { return regex ? regex->GetText() : regexText; }
        const std::vector<std::string>& NamesWithDummy() const {
            return hasDummy ? groupNames : names;
        }
        // Other names for the same groups.
        void SetNames(std::vector<std::string> other);
    };

    // One KVP made ready to be run.
    struct PlanItem {
        std::shared_ptr<const CAppRegex> regex;          // null: it doesn't compile
        std::unique_ptr<const std::string> brokenRegex;  // its text then
        std::vector<std::size_t> slots;                  // of each name, in Plan::variables
        std::vector<char> isDummy;  // of each capture group; empty when none is one
        bool isMultiLine = false;
    };
    struct Plan {
        std::vector<std::string> paragraphLines;  // which the paragraph above puts in front
        std::vector<PlanItem> items;
        std::vector<std::string> variables;  // all that have a type, in name order
    };
    static constexpr std::size_t NoSlot = static_cast<std::size_t>(-1);

    struct Definition {
        std::map<std::string, std::string> variableTypes;
        std::vector<std::string> kvps;
        std::vector<std::string> statements;
        std::map<std::string, Spans> mlineDefine;
        std::map<std::string, Kvp> resolved;  // by the KVP's text
        std::map<std::string, std::string> enumVariableValues;
        std::map<std::string, std::string> statementExpressions;
        std::shared_ptr<const Plan> plan;  // of `kvps`, made when the definition is loaded
    };

    // What one run over a range needs.
    struct Run {
        const Plan* plan;
        const std::set<std::string>* usePre;
        int start;
        int end;
        const CAppSampleLines* lines;  // null without a sample
    };

    // A value that a match over several lines gave to a name.
    struct MultiLineHit {
        std::size_t nameIndex;
        CAppTextLet value;
    };

    virtual void AppendKeywordVariables(std::vector<std::string>& names);

    Definition& EditDefinition();
    void LoadVariableTypes(const std::vector<std::string>& entries);
    std::vector<std::string> VariableTypeEntries() const;
    bool ResolveKeywordLine(const std::string& kvp, std::vector<std::string>& names);
    const Kvp* FindResolved(const std::string& kvp) const;
    bool IsFirstChildOfParagraph() const;
    IParagraphScope* GetParagraphParent();
    const IParagraphScope* GetParagraphParent() const;
    void InsertParentStartExpression(std::vector<std::string>& kvps, bool withParentLine) const;
    const std::set<std::string>& UsePreVars() const;
    void FillAllVariables(std::set<std::string>& names) const;
    void AddDefinition(CAppVariableDef* parent, const std::string& name, AppDataType_e type) const;
    std::vector<std::vector<CAppParseRuleKeyWord*>> KeyWordsAbove(bool passesOthers) const;
    std::string OwnVariableType(const std::string& name) const;
    std::vector<std::string> OwnVariableNames();
    void AppendOuterVariableNames(std::vector<std::string>& names) const;
    std::string ReplaceByDummy(const std::string& statement, const std::string& name,
                               std::vector<std::string>& names);
    void DeleteVariableOfKvp(const std::string& name);
    void DeleteVariableOfStartLine(const std::string& name);

    std::shared_ptr<const Plan> MakePlan();
    const Plan* FindPlan() const;
    PlanItem MakePlanItem(const Kvp& known, const std::vector<std::string>& variables);
    Run BeginRun(int startLine, int endLine);
    void RunSingleLine(Run& run, const PlanItem& item, CAppRegexMatch& match);
    void AssignGroups(Run& run, const PlanItem& item, const CAppRegexMatch& match, int line);
    void RunMultiLine(Run& run, const PlanItem& item, CAppRegexMatch& match);
    static std::vector<char> MarkDummies(const Kvp& kvp);
    std::vector<char> DummiesOfRegex(const std::string& regexText) const;
    std::vector<MultiLineHit> MatchOverLines(int startLine, int endLine, const CAppRegex& regex,
                                             std::size_t nameCount,
                                             const std::vector<char>& isDummy,
                                             CAppRegexMatch& match);
    const CLetColumn* LastValue(const std::set<std::string>& usePre, const std::string& name) const;
    void CarryOver(const std::set<std::string>& usePre, const std::string& name,
                   CAppTextLet& value) const;
    void StoreStandBys(const Run& run);
    void Store(const std::string& name, int line, const CAppTextLet& value);
    void NoteSpan(int line, const CAppTextLet& value);

    void ParseMlineVariables(int startLine, int endLine);
    void ParseMlineVariable(int startLine, int endLine, const std::string& name);
    void MarkSpan(const std::pair<std::string, std::string>& span, int startLine, int endLine,
                  std::vector<char>& marked) const;

    std::vector<int> ParagraphLines() const;
    void AppendOuterValues(const std::string& name, CLetList& values) const;
    std::set<int> OriTextLines() const;

    CCopyOnWrite<Definition> m_definition;
    bool m_isSingle;

    // What runs made.
    CLetColumns m_values;
    std::vector<int>
        m_contextLines;  // lines whose surroundings are shown; it only grows over the rule's life
    // How many rows behind its line a value ends, at most.
    int m_longestSpan = 0;
    std::shared_ptr<const Plan>
        m_runPlan;  // of the KVPs of the last run that the definition had no plan for
    const Plan* m_slotPlan = nullptr;  // by whose variables the values know their columns

    // Of the run going on; kept for the memory alone.
    std::vector<char> m_missing;  // by slot: no value found yet
    std::optional<CAppRegexMatch> m_match;
};

// The lines of a built-in form, made once and shared by all rules that take them over, on any
// thread. Immutable.
class CAppParseRuleKeyWord::CBuiltInLines {
public:
    using Texts = std::vector<std::string>;

    // Lines that a definition shows until a parse installs others; nothing is compiled.
    CBuiltInLines(Texts kvps, std::string statement, std::map<std::string, std::string> types);
    // Lines for a parse, compiled. `result` is the variable that the form computes of them.
    CBuiltInLines(const Texts& kvps, const std::string& statement, std::string result);

private:
    friend class CAppParseRuleKeyWord;

    CCopyOnWrite<Definition> m_definition;
    CCopyOnWrite<Definition> m_withResult;  // the same, and the type of the result
    std::string m_result;
};
