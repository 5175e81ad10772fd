#pragma once

#include "tzparser/select/appparserulelineselector.h"

#include <memory>
#include <string>
#include <vector>

class CAppRegexMatch;

// The range that a run of a filter found: the children run from `begin` to `end`, exclusive. The
// lines of begin and end pattern are -1 when the pattern is empty or wasn't found.
struct FilterRange {
    int begin = 0;
    int end = 0;
    int beginLine = -1;
    int endLine = -1;
};

// CAppParseRuleFilter narrows the lines that its children see: to a range between two patterns, and
// in it to the lines that further patterns keep or don't drop. Under its name it yields a variable,
// the text of the lines it kept.
//
//     auto* rule = new CAppParseRuleFilter(&sample);    // comes with an empty keyword rule below
//     sample.AddChildRule(rule);
//     rule->SetName("eth0");
//     rule->SetBeginLine("regex:^interface eth0");
//     rule->AddKVP("mtu $int:mtu");                     // read in the filter's lines only
//
// Patterns are statements; a text that is none is searched for as it stands. Lines are searched as
// the text has them. A filter's bounds and operations have no effect: its own patterns take their
// place. Finding nothing is no failure: Parse is always true, the filter then has no open line and
// its children run over none.
//
// Patterns are compiled when the definition is loaded, otherwise by the first parse; clones share
// them. One thread at a time uses a rule.
class TZPARSER_API CAppParseRuleFilter : public CAppParseRuleLineSelector {
public:
    explicit CAppParseRuleFilter(CAppParseRule* parent);
    ~CAppParseRuleFilter() override;

    // Definition. Setters tell the root that the definition has changed, those of flags only when
    // the value is another one.
    const std::string& GetName() const override { return m_definition->name; }
    void SetName(const std::string& name) override;
    const std::string& GetBeginLine() const { return m_definition->beginLine; }
    void SetBeginLine(const std::string& pattern);
    const std::string& GetEndLine() const { return m_definition->endLine; }
    void SetEndLine(const std::string& pattern);
    // Whether include and exclude patterns count for all lines they fit, or each for its first
    // alone.
    bool IsFilterLoop() const { return m_definition->isFilterLoop; }
    void SetIsFilterLoop(bool loop);
    // True in a rule made in code; a document without the key gives false.
    bool IsExcludeEndLine() const { return m_definition->isExcludeEndLine; }
    void SetIsExcludeEndLine(bool exclude);
    bool IsExcludeBeginLine() const { return m_definition->isExcludeBeginLine; }
    void SetIsExcludeBeginLine(bool exclude);
    // Whether result documents call the lines a configlet; matching doesn't change.
    bool AsConfiglet() const { return m_definition->asConfiglet; }
    void SetAsConfiglet(bool configlet);
    // "1" and "true" in any case are true, all else is false.
    void SetAsConfiglet(const std::string& configlet);

    // The lists of patterns. Del takes out all equal ones, Set replaces the list. Skip lines are
    // kept with the rule and play no part in a parse.
    void AddSkipLine(const std::string& pattern);
    void DelSkipLine(const std::string& pattern);
    void SetSkipLine(const std::vector<std::string>& patterns);
    const std::vector<std::string>& GetSkipLine() const { return m_definition->skipLines; }
    void AddIncludeLine(const std::string& pattern);
    void DelIncludeLine(const std::string& pattern);
    void SetIncludeLine(const std::vector<std::string>& patterns);
    const std::vector<std::string>& GetIncludeLine() const { return m_definition->includeLines; }
    void AddExcludeLine(const std::string& pattern);
    void DelExcludeLine(const std::string& pattern);
    void SetExcludeLine(const std::vector<std::string>& patterns);
    const std::vector<std::string>& GetExcludeLine() const { return m_definition->excludeLines; }

    // Empties patterns and the first child; name, exclude lines and the other flags stay.
    void Reset();

    // Whether a paragraph stands above, so that there is one status for each of its runs.
    bool IsUseMultiLineStatus() const;
    // Whether the name is a variable: not below a table.
    bool IsVisualVariable() const;

    // Run. Always true.
    bool Parse(const std::string& text, int startLine, int endLine,
               IAppVariableCallback* callback) override;
    // Closes open lines of a range by patterns: all that fit none (`include`), or those that fit
    // one. Lines outside the range close too; the line at endLine doesn't when the end line belongs
    // to the range. Nothing happens without patterns.
    void FilterContainLine(const std::vector<std::string>& patterns, int beginLine, int endLine,
                           bool include);
    // The expression of a pattern that holds global variables ("$$name"), each word in it replaced
    // by the value that the callback gives for "$$name", as a piece of the expression; by nothing
    // without a callback. Empty when the pattern is no statement.
    std::string FilterByGlobalVariable(const std::string& line, IAppVariableCallback* callback);

    // Below a paragraph that has run, the status of its first run, for every run; otherwise that of
    // the last run.
    AppLineStatus& GetLineStatus() override;
    const CAppLineStatus& LineStatus() override;
    // Copies of the statuses of all runs, below a paragraph, or of the last one; returns their
    // number.
    int GetLineStatus(std::vector<AppLineStatus>& statuses) const;
    // The ranges of all runs, below a paragraph, or of the last one; and the status that the run at
    // an index of them left. A run over no lines doesn't count.
    const std::vector<FilterRange>& GetRunRanges() const { return m_runRanges; }
    const CAppLineStatus& RunStatus(std::size_t run) const {
        return run < m_multiLineStatus.size() ? m_multiLineStatus[run] : m_lineStatus;
    }
    // Below a paragraph, notes the status of a run over a range; otherwise does nothing.
    void SetLineStatus(const AppLineStatus& status, int startLine, int endLine);

    // Lists are added to those there are; nothing is compiled. The XML form keeps all fields.
    bool LoadFromXml(CMarkup& xml) override;
    bool SaveToXml(CMarkup& xml) override;
    bool AddToVariableTree(CAppVariableDef* def) override;
    // For the rule's name, one character in front allowed: one let a status with the text of its
    // open lines, parted by "\r\n", without a position.
    std::vector<CAppTextLet> GetVariableValue(const std::string& name) override;
    CLetList FindValues(const std::string& name) override;
    // True also when no line is open.
    bool IsNoneExist() override;
    CAppParseRule* CreateObject(CAppParseRule* parent) override;
    // Closes all lines and forgets the runs of the paragraph; children are left alone.
    void ClearVariablePosition() override;
    void SaveResultAsXML(CMarkup& xml) override;
    bool SaveResultAsJson(hxJson::Value& node) override;

protected:
    bool LoadParseRule(const hxJson::Value& node) override;
    // Lists are saved as plain arrays, a form that isn't loaded.
    bool SaveParseRule(hxJson::Value& node) override;
    bool OnCopyTo(CAppParseRule* target) override;

private:
    // A pattern made ready to be searched.
    struct Pattern {
        std::string line;                        // as the definition has it
        std::string regexText;                   // empty for one with global variables
        std::shared_ptr<const CAppRegex> regex;  // null: it doesn't compile
        bool isMultiLine = false;
    };
    struct Plan {
        Pattern begin;
        Pattern end;
        std::vector<Pattern> includes;
        std::vector<Pattern> excludes;
    };

    struct Definition {
        std::string name;
        std::string beginLine;
        std::string endLine;
        bool isFilterLoop = false;
        bool isExcludeEndLine = true;
        bool isExcludeBeginLine = false;
        bool asConfiglet = false;
        std::vector<std::string> skipLines;
        std::vector<std::string> includeLines;
        std::vector<std::string> excludeLines;
        std::shared_ptr<const Plan> plan;  // made when the definition is loaded
    };

    // The range of a run as it is being found.
    struct Range : FilterRange {
        int scanFrom = 0;  // where the search for the end line begins

        bool IsBeginFound() const { return beginLine >= 0; }
    };

    // The lines of a range over which multi-line matches stretch.
    struct MarkedLines {
        int begin;
        std::vector<char> lines;  // empty when there is no multi-line pattern

        void Mark(int line) { lines[static_cast<std::size_t>(line - begin)] = 1; }
        bool Has(int line) const { return lines[static_cast<std::size_t>(line - begin)] != 0; }
    };

    class PatternMaker;

    Definition& EditDefinition();
    void SetFlag(bool Definition::*flag, bool value);
    void AddLine(std::vector<std::string> Definition::*list, const std::string& pattern);
    void DelLine(std::vector<std::string> Definition::*list, const std::string& pattern);
    void SetLines(std::vector<std::string> Definition::*list,
                  const std::vector<std::string>& patterns);
    std::shared_ptr<const Plan> MakePlan();
    std::shared_ptr<const Plan> PlanOfRun();

    int LineCount() const { return m_lineStatus.Count(); }
    std::vector<CAppLineStatus> RunStatuses() const;
    void AddRunStatus(CAppLineStatus status, int startLine, int endLine);
    void FindBegin(const Pattern& pattern, int endLine, IAppVariableCallback* callback,
                   Range& range);
    void FindEnd(const Pattern& pattern, int endLine, Range& range);
    int FindLine(const Pattern& pattern, int startLine, int endLine, bool tellsBroken);
    void CloseOutside(const Range& range, int startLine, int endLine);
    void ContainLines(const std::vector<Pattern>& patterns, int beginLine, int endLine,
                      bool include);
    MarkedLines MarkMultiLines(const std::vector<Pattern>& patterns, int beginLine, int endLine);
    void MarkMultiLines(const Pattern& pattern, int endLine, int& scanFrom, MarkedLines& marked);
    bool FitsPending(const std::vector<Pattern>& patterns, int line, const MarkedLines& marked,
                     std::vector<char>& pending, CAppRegexMatch& match) const;

    CCopyOnWrite<Definition> m_definition;

    // What runs made.
    std::vector<CAppLineStatus> m_multiLineStatus;
    std::vector<FilterRange> m_runRanges;
    std::shared_ptr<const Plan> m_runPlan;  // when the definition has none
};
