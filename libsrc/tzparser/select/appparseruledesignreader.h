#pragma once

#include "tzparser/select/appparserulelineselector.h"

#include <string>
#include <vector>

struct SelectedLine;

// CAppParseRuleDesignReader hands the open lines of its range to the design reader of the host and
// keeps open for the rules below it the lines that the reader selected. Under its name it yields a
// variable, the text that was selected.
//
//     SetDesignReader(reader);                      // once a process, see designreader.h
//     auto* rule = new CAppParseRuleDesignReader(&sample);   // comes with an empty keyword rule
//     sample.AddChildRule(rule);
//     rule->SetName("uplinks");
//     rule->SetDRName("topology");                  // which reader, and what it is to do:
//     rule->SetDRCode("uplinks of $hostname");      // a language of the host's own
//     rule->AddKVP("^interface $name");             // read in the selected lines only
//
// Where no reader is set, nothing is selected: no line stays open, and the rules below run over
// none. A selected line that the text doesn't have is passed over. Bounds and operations have no
// effect. Parse is always true.
//
// One thread at a time uses a rule; clones share the definition.
class TZPARSER_API CAppParseRuleDesignReader : public CAppParseRuleLineSelector {
public:
    explicit CAppParseRuleDesignReader(CAppParseRule* parent);
    ~CAppParseRuleDesignReader() override;

    // The definition; setters tell the root that it has changed.
    const std::string& GetName() const override { return m_definition->name; }
    void SetName(const std::string& name) override;
    const std::string& GetDRName() const { return m_definition->readerName; }
    void SetDRName(const std::string& name);
    const std::string& GetDRCode() const { return m_definition->readerCode; }
    void SetDRCode(const std::string& code);
    // Empties the definition and the first child.
    void Reset();

    // Always true. A reader that fails or throws selects nothing, and a note of it goes to the
    // diagnostic output.
    bool Parse(const std::string& text, int startLine, int endLine,
               IAppVariableCallback* callback) override;
    // The lines that the last run's reader selected, in its order, with the open lines of `above`
    // that they are. Views live until the next run.
    std::vector<SelectedLine> FindLines(const CAppLineStatus& above, int startLine,
                                        int endLine) const;

    bool LoadFromXml(CMarkup& xml) override;
    bool SaveToXml(CMarkup& xml) override;
    // The name, with the variables of the rules below beside it.
    bool AddToVariableTree(CAppVariableDef* def) override;
    // For the rule's name, one character in front allowed: the text that the reader selected, as it
    // gave it, as one let without a position.
    std::vector<CAppTextLet> GetVariableValue(const std::string& name) override;
    // True also when nothing was selected.
    bool IsNoneExist() override;
    CAppParseRule* CreateObject(CAppParseRule* parent) override;
    void SaveResultAsXML(CMarkup& xml) override;
    bool SaveResultAsJson(hxJson::Value& node) override;

protected:
    // Asks the design reader of the process. True, with `selected` as it was, when there is none;
    // false when it failed.
    bool FilterByDR(const std::string& text, std::string& selected);

    bool LoadParseRule(const hxJson::Value& node) override;
    bool SaveParseRule(hxJson::Value& node) override;
    bool OnCopyTo(CAppParseRule* target) override;

private:
    struct Definition {
        std::string name;
        std::string readerName;
        std::string readerCode;
    };

    void KeepLines(int startLine, int endLine);

    CCopyOnWrite<Definition> m_definition;
    std::string m_drText;  // what the last run's reader selected
};
