#pragma once

#include "tzparser/paragraph/tablefilling.h"
#include "tzparser/rule/appparserulekeyed.h"
#include "tzparser/rule/paragraphscope.h"

#include <climits>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

class CAppParseRuleKeyWord;
class CAppParseRuleTable;

// CAppParseRuleParagraph cuts a range of lines into blocks that repeat, the interfaces of a
// configuration or the neighbours of a routing protocol, and runs its children once a block. The
// blocks are the rows of a table, the variables of the keyword rules below are its columns.
//
//     auto* rule = new CAppParseRuleParagraph(&sample);  // comes with an empty keyword rule below
//     sample.AddChildRule(rule);
//     rule->SetName("ports");
//     rule->SetStartExpr("^interface $port");
//     rule->AddKVP("mtu $int:mtu");
//     rule->GetFirstKeywordRule()->GetVariableNames();   // "$port", "$mtu"
//     sample.Parse("interface a\n mtu 9\ninterface b\n", 0, -1, nullptr);
//     rule->GetBeginLines();                             // 0, 2
//     rule->GetVariableValue("ports.mtu");               // "9", and an empty one for "b"
//
// A paragraph begins at each line that fits the start pattern, or in line mode at each group of so
// many open lines, and ends before the next one, unless a line between fits the end pattern. Its
// first child also reads what the start line, the id lines and the parent line declare. So that
// rows line up, a block in which a table or a nested paragraph below found nothing gets empty
// values at its first line. Finding no block is no failure.
//
// Below another paragraph the rule runs once for each of its blocks and holds the ranges of all
// runs; elsewhere those of the last run. Lines are absolute, 0-based rows of the text; a paragraph
// excludes its end.
//
// Filling costs what is new in a run, however many runs there were. Two things cost more: ranges
// that don't come in the order of the text are looked at as a whole in each run, and for tables
// three levels further down each run copies the lines of gaps that begin at a line below the number
// of paragraphs, since these lines are taken for indexes.
//
// Patterns are compiled when the definition is loaded, otherwise by the first parse; clones share
// them. One thread at a time uses a rule.
class TZPARSER_API CAppParseRuleParagraph : public CAppParseRuleKeyed, public IParagraphScope {
public:
    explicit CAppParseRuleParagraph(CAppParseRule* parent);
    ~CAppParseRuleParagraph() override;

    // Definition. Setters tell the root that the definition has changed, also without a change;
    // only SetName doesn't.
    const std::string& GetName() const { return m_definition->name; }
    void SetName(const std::string& name);
    const std::string& GetStartExpr() const { return m_definition->startExpr; }
    void SetStartExpr(const std::string& pattern);
    const std::string& GetEndExpr() const { return m_definition->endExpr; }
    void SetEndExpr(const std::string& pattern);
    // How many open lines make a paragraph in line mode, which needs an empty start pattern. A
    // document holds 1 or 0 only; below 1 there are no paragraphs.
    int GetLineAsParagraph() const { return m_definition->lineAsParagraph; }
    void SetLineAsParagraph(int count);
    bool IsLineAsParagraph() const { return m_definition->isLineAsParagraph; }
    void SetIsLineAsParagraph(bool isLineMode);
    // True in a rule made in code; a document without the key gives false.
    bool IsExcludeEndLine() const { return m_definition->isExcludeEndLine; }
    void SetIsExcludeEndLine(bool exclude);
    bool IsUsePreVars() const override { return m_definition->isUsePreVars; }
    void SetIsUsePreVars(bool use);
    const std::set<std::string>& GetKeyVars() const { return m_definition->keyVars; }
    void AddKeyVar(const std::string& name);
    void DelKeyVar(const std::string& name);
    // The variables that keep their text in a paragraph whose lines don't have them.
    const std::set<std::string>& GetUsePreVars() const override { return m_definition->followVars; }
    void AddFollowVar(const std::string& name);
    void DelFollowVar(const std::string& name);
    // The start pattern, when there is one, then the id lines.
    std::vector<std::string> GetIDLines() const override;
    bool AreIDLines(const std::vector<std::string>& lines) const override;
    const std::string& GetParentLine() const override { return m_definition->parentLine; }
    const std::string& GetStartLine() const override { return m_definition->startExpr; }
    void SetStartLine(const std::string& statement) override { SetStartExpr(statement); }

    // The lists of the first child, a keyword rule. Without one, adding does nothing and the lists
    // are empty; they live until the child is edited.
    void AddKVP(const std::string& kvp);
    void AddStatement(const std::string& statement);
    const std::vector<std::string>& GetKVPs() const;
    const std::vector<std::string>& GetStatements() const;
    // Null when the first child is no keyword rule.
    CAppParseRuleKeyWord* GetFirstKeywordRule() const;
    // Appends the names that the keyword children read and `names` doesn't hold; whether `names`
    // isn't empty then.
    bool GetVariableNames(std::vector<std::string>& names) const;
    bool HasVariables() const;
    // Empties patterns, lists, ranges and the first child; name, id lines, parent line, interface
    // keys and the other children stay.
    void Reset();

    // Run. False only when a bound of the rule isn't found.
    bool Parse(const std::string& text, int startLine, int endLine,
               IAppVariableCallback* callback) override;
    // First lines and exclusive ends, index by index, each ascending.
    const std::vector<int>& GetBeginLines() const override { return m_ranges.begins; }
    const std::vector<int>& GetEndLines() const override { return m_ranges.ends; }
    void StoreAwaitedRows() override;
    // The paragraph that holds a line; `begin` and `end` stay when none does. Always true.
    bool GetPosAtParagraphRange(int line, int& begin, int& end) const;
    // Its index; 0 also when none holds the line.
    int GetParagraphIndexByPos(int line) const;
    // The index of the first paragraph that ends behind a line; -1 when none does.
    int GetVariableAtParagraphIndex(int line) const;
    // Searches an expression of several lines again and again over the lines of a range, adds each
    // match as a paragraph and the line behind it to `headEnds`. `values` are the texts of the
    // start pattern's variables, brought up to date. The first line of the last match; `last` when
    // there is none.
    int ParseMultipleLineMatchBeginLineWithVariableValue(int first, int last,
                                                         const std::string& regex,
                                                         std::vector<std::string>& values,
                                                         std::vector<int>& headEnds);
    // Searches such an expression once: the first line of the match, `last` when there is none.
    // `matchEnd` is the line where it ends; `changed` becomes true when one of `values` changed.
    int ParseMultipleLineMatchWithVariableValue(int first, int last, const std::string& regex,
                                                std::vector<std::string>& values, bool& changed,
                                                int& matchEnd);
    // Stores empty values for everything below a rule that stands two levels below this one, at
    // the lines given. Tables take the lines as indexes of this rule's paragraphs.
    void FillEmptyParagraphValue(CAppParseRuleParagraph* rule, const std::set<int>& lines);
    // Clears the values of all keyword rules below a rule. Rows of tables stay.
    void ClearChildParagraphVariablePos(CAppParseRule* rule);

    // The XML form keeps each field under its own name, groups of several lines too, but no id
    // lines and no parent line. Nothing is compiled.
    bool LoadFromXml(CMarkup& xml) override;
    bool SaveToXml(CMarkup& xml) override;
    bool AddToVariableTree(CAppVariableDef* def) override;
    std::vector<CAppTextLet> GetVariableValue(const std::string& name) override;
    CLetList FindValues(const std::string& name) override;
    CAppParseRule* GetChildRuleByVariableName(const std::string& name) override;
    bool IsNoneExist() override;
    CAppParseRule* CreateObject(CAppParseRule* parent) override;
    void ClearVariablePosition() override;
    void SaveResultAsXML(CMarkup& xml) override;
    bool SaveResultAsJson(hxJson::Value& node) override;
    bool GetVariableLine(const std::string& name, int& line) override;
    IParagraphScope* AsParagraphScope() override { return this; }
    const IParagraphScope* AsParagraphScope() const override { return this; }
    // The text of the index-th value of a variable of the first child, in line order; empty when
    // there is none.
    std::string GetKeyVariableValue(const std::string& name, int index) const;

protected:
    bool LoadParseRule(const hxJson::Value& node) override;
    // Writes a part of the fields only, and one flag under another's key.
    bool SaveParseRule(hxJson::Value& node) override;
    bool OnCopyTo(CAppParseRule* target) override;
    void SetRuleModify() override;

private:
    // A pattern made ready to be searched.
    struct Pattern {
        std::string regexText;
        std::shared_ptr<const CAppRegex> regex;  // null: it doesn't compile
        std::vector<std::string> names;          // without dummies
        std::vector<char> isDummy;               // of each capture group
        bool isMultiLine = false;
    };
    struct Plan {
        Pattern start;
        Pattern end;
        std::vector<Pattern> ids;
        Pattern parent;
        bool isKeyWordRead = false;  // the first child is a keyword rule and reads the variables
    };

    struct Definition {
        std::string name;
        std::string startExpr;
        std::string endExpr;
        std::set<std::string> keyVars;
        std::set<std::string> followVars;
        int lineAsParagraph = 1;
        bool isLineAsParagraph = false;
        bool isExcludeEndLine = true;
        bool isUsePreVars = false;
        std::vector<std::string> idLines;
        std::string parentLine;
        std::shared_ptr<const Plan> plan;  // made when the definition is loaded
    };

    // The lines of a run, its end excluded.
    struct Range {
        int first;
        int last;
    };

    // Paragraphs: first lines and exclusive ends. Both ascend; they may differ in number.
    struct Ranges {
        std::vector<int> begins;
        std::vector<int> ends;

        std::size_t Count() const {
            return begins.size() < ends.size() ? begins.size() : ends.size();
        }
        void Clear() {
            begins.clear();
            ends.clear();
        }
    };

    // What the filling knows of a child from the runs before.
    struct FillState {
        CTableFilling rows;       // of a table
        bool hasOutside = false;  // a line of a paragraph lies between two of this rule's
        std::size_t names = 0;    // how many variables it had
        // The rows of its gaps for tables further down, but for the first paragraph, and the first
        // paragraph that wasn't asked for them yet.
        std::vector<int> rowsOfGaps;
        std::size_t rowsUpTo = 0;
    };

    // What one run needs beside the plan; kept for the memory alone.
    struct Scratch {
        CAppRegexMatch match;
        std::vector<std::string> values;  // of the start pattern's variables
        std::vector<int> headEnds;        // the first line behind each paragraph's head
    };

    class PatternMaker;
    class RunLines;
    using ParentValues = std::map<std::string, std::vector<CAppTextLet>>;

    Definition& EditDefinition();
    template <class T>
    void Assign(T Definition::*field, const T& value);
    std::shared_ptr<const Plan> MakePlan();
    std::shared_ptr<const Plan> PlanOfRun();
    bool IsBelowParagraph() const;
    int LineCount() const { return m_lineStatus.Count(); }

    // Splitting.
    void FindParagraphs(const Plan& plan, Range range);
    void CutIntoGroups(Range range);
    void FindStarts(const Pattern& start, Range range);
    void FindStartsOverLines(const Pattern& start, Range range);
    int FindChangesOverLines(const Pattern& start, Range range, std::vector<std::string>& values,
                             std::vector<int>& headEnds);
    bool JoinLines(const Pattern& pattern, Range range, std::string& joined) const;
    Pattern StartPatternOf(const std::string& regex);
    static bool TakeCaptures(const Pattern& pattern, const CAppRegexMatch& match,
                             std::vector<std::string>& values);
    void FindEnds(const Pattern& end, Range range);
    bool FindEnd(const Pattern& pattern, Range range, int& end);
    int EndOfLast(int last) const;
    void CheckIDLines(const std::vector<Pattern>& ids);
    bool HasIDLine(const Pattern& pattern, Range paragraph);
    void CloseBetween();

    // Children and runs.
    void RunChildren(const std::string& text, IAppVariableCallback* callback);
    void AddEarlierRuns();

    // Parent lines.
    void ParseParentLine(const Pattern& pattern, Range range);
    void ParseParentLineUseSingleLineMode(const Pattern& pattern, Range range,
                                          ParentValues& values);
    void ParseParentLineUseMultiLineMode(const Pattern& pattern, Range range, ParentValues& values);

    // Filling.
    bool NeedsFilling();
    void FillGaps();
    void FillParagraphChild(CAppParseRuleParagraph& child, FillState& state) const;
    void FillTablesBelow(CAppParseRuleParagraph& child, FillState& state, bool isFirstGap) const;
    CTableFilling::GivenRows RowsOfGaps(const std::vector<int>& lines, FillState& state,
                                        bool isFirstGap) const;
    std::vector<int> RowsAtIndexes(const std::vector<int>& indexes) const;
    void StoreRowsBelow(CAppParseRuleTable& table, const CTableFilling::GivenRows& rows);
    void StoreAwaitedRowsBelow();
    int TakeLowestBegin();

    CCopyOnWrite<Definition> m_definition;

    // What runs made.
    Ranges m_ranges;
    std::shared_ptr<const Plan> m_runPlan;  // when the definition has none

    // Of the run going on: the ranges of the runs before it, and where its own begin.
    Ranges m_earlier;
    std::size_t m_firstNew = 0;  // the first paragraph that earlier runs didn't settle
    bool m_isRunning = false;
    bool m_isApart = false;       // the ranges of the runs before are still put aside
    int m_lowestBegin = INT_MAX;  // of the runs since the paragraph above last asked
    std::optional<bool> m_needsFilling;
    std::vector<FillState> m_fillStates;  // by child
    std::unique_ptr<Scratch> m_scratch;
};
