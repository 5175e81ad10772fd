#pragma once

#include "tzparser/rule/appparserule.h"

#include <string>
#include <utility>
#include <vector>

// A line that a text rule looks for: its bytes without a line end, and the number that its author
// gave it, which says nothing about where it stands.
struct TextRecord {
    int m_row = 0;
    std::string m_text;
};

// CAppParseRuleText finds literal lines in the text, in the order in which the definition lists
// them, and yields as a variable the lines it found.
//
//     sample.Load(document);        // "lines": [{"row":1,"text":"aaa"},{"row":2,"text":"bbb"}]
//     sample.Parse("bbb\naaa\nbbb", 0, -1, nullptr);
//     sample.GetVariableValue("policy")[0].text;    // "aaa\nbbb", lines 1 and 2
//
// A line is found by all its bytes, blanks at its ends with them. Each record is searched behind
// the line of the one found before it; one that isn't there is passed over. The rule's bounds limit
// the search, but not the line status: lines that a filter above closed are found too. Rules below
// are kept with it and never run; replacements play no part.
//
// One thread at a time uses a rule; clones share the records.
class TZPARSER_API CAppParseRuleText : public CAppParseRule {
public:
    explicit CAppParseRuleText(CAppParseRule* parent);
    ~CAppParseRuleText() override;

    // The definition, which only documents write. The records stand in the order of the document.
    const std::string& GetName() const { return m_definition->name; }
    const std::vector<TextRecord>& GetRecords() const { return m_definition->records; }

    // What the last parse found: line and row of each record found, by ascending line. A clone
    // starts without.
    const std::vector<std::pair<int, int>>& GetLineMapping() const { return m_lineMapping; }

    // False only when a bound isn't found; what an earlier parse found then stays.
    bool Parse(const std::string& text, int startLine, int endLine,
               IAppVariableCallback* callback) override;
    // Adds records to those there are. Saving as XML writes nothing of the rule.
    bool LoadFromXml(CMarkup& xml) override;
    // The variable, a string, with those of the rules below in it.
    bool AddToVariableTree(CAppVariableDef* def) override;
    // For the rule's name, with or without "$": the found lines parted by line feeds as one let
    // without a position, nothing when none was found.
    std::vector<CAppTextLet> GetVariableValue(const std::string& name) override;
    CAppParseRule* CreateObject(CAppParseRule* parent) override;
    // Adds the found lines to `varLines`.
    void GetAllVarLineNums(std::set<int>& varLines, std::set<int>& extendLines) const override;
    bool SaveResultAsJson(hxJson::Value& node) override;
    // Writes nothing.
    void SaveResultAsXML(CMarkup& xml) override;

protected:
    // Replaces the records; elements that aren't objects are passed over. Always true.
    bool LoadParseRule(const hxJson::Value& node) override;
    bool SaveParseRule(hxJson::Value& node) override;
    bool OnCopyTo(CAppParseRule* target) override;

private:
    struct Definition {
        std::string name;
        std::vector<TextRecord> records;
    };

    CCopyOnWrite<Definition> m_definition;
    std::vector<std::pair<int, int>> m_lineMapping;  // of the last parse
};
