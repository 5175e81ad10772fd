#pragma once

#include "tzparser/rule/appparserule.h"
#include "tzparser/select/diffbaseline.h"

#include <memory>
#include <string>
#include <vector>

// CAppParseRuleDiffFilter holds a stored baseline of lines and keeps open only those lines of a
// text that are common with it. Its children so see the part of a new output that an earlier output
// had too; the line mapping tells which stored row each line came from. Rows marked as added take
// part in the comparison, but the lines common with them close.
//
//     auto* rule = new CAppParseRuleDiffFilter(&sample);
//     sample.AddChildRule(rule);
//     rule->SetName("common");
//     rule->SetLines({{{0, "hostname sw-1"}, {1, "no ip http server"}}, {}});
//
// Row numbers count as positions when it comes to ranges: a run over the lines 20 to 30 compares
// the rows 20 to 29 alone, with the whole text. A run without a row in its range fails. Below
// another diff filter nothing is compared: the rule takes the mapping of the nearest one above it
// and closes the lines whose row it doesn't have itself. Its bounds and operations have no effect.
//
// The baseline is made ready for the comparison when the definition is loaded, and clones share it.
// One thread at a time uses a rule.
class TZPARSER_API CAppParseRuleDiffFilter : public CAppParseRule {
public:
    explicit CAppParseRuleDiffFilter(CAppParseRule* parent);
    ~CAppParseRuleDiffFilter() override;

    // Definition. Setters tell the root that the definition has changed.
    const std::string& GetName() const { return m_definition->name; }
    void SetName(const std::string& name);
    const AppDiffLines& GetLines() const { return m_definition->lines; }
    void SetLines(AppDiffLines lines);

    // Run. False, with words, when no row of the range has a text; children don't run then, and all
    // lines that the parent left in the range stay open.
    bool Parse(const std::string& text, int startLine, int endLine,
               IAppVariableCallback* callback) override;
    // The row of each line kept by the last run. Lines outside of its range that are common with
    // the baseline have an entry too.
    const AppLineMapping& GetLineMapping() const { return m_lineMapping; }
    // The nearest diff filter above, whose mapping a run takes over; null when there is none.
    const CAppParseRuleDiffFilter* GetOuterDiffFilter() const;

    // Adds rows to those there are. Saving as XML writes nothing of the rule.
    bool LoadFromXml(CMarkup& xml) override;
    bool AddToVariableTree(CAppVariableDef* def) override;
    // For the rule's name, one character in front allowed: a let with the text of the open lines,
    // parted by line feeds, without a position.
    std::vector<CAppTextLet> GetVariableValue(const std::string& name) override;
    CAppParseRule* CreateObject(CAppParseRule* parent) override;
    void GetAllVarLineNums(std::set<int>& varLines, std::set<int>& extendLines) const override;
    // Writes nothing, not even the children.
    void SaveResultAsXML(CMarkup& xml) override;
    bool SaveResultAsJson(hxJson::Value& node) override;

protected:
    // Reads the kind's keys; false when "lines" is no array.
    bool LoadParseRule(const hxJson::Value& node) override;
    bool SaveParseRule(hxJson::Value& node) override;
    bool OnCopyTo(CAppParseRule* target) override;

private:
    struct Definition {
        std::string name;
        AppDiffLines lines;
        std::shared_ptr<const CDiffBaseline> baseline;  // of all rows
    };

    bool HasRow(int row) const;
    void PrepareBaseline();
    std::shared_ptr<const CDiffBaseline> BaselineOf(int startLine, int endLine) const;
    bool MapLines(const std::string& text, int startLine, int endLine);
    void CloseUnmapped(int startLine, int endLine);

    CCopyOnWrite<Definition> m_definition;

    // What the last run made.
    AppLineMapping m_lineMapping;
};
