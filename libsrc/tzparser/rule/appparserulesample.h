#pragma once

#include "tzparser/rule/appparserulehashed.h"
#include "tzparser/rule/appsamplelines.h"

#include <map>
#include <set>
#include <string>
#include <vector>

// CAppParseRuleSample is the root of every rule tree: it takes in a text, holds its lines, starts
// the children and gathers their errors.
//
//     CAppParseRuleSample sample("version");
//     sample.Load(document);                              // "parserules" holds the rule document
//     sample.Parse("Uptime 3 days\n", 0, -1, nullptr);    // true when at least one child ran
//     sample.GetOriginalLine(0);                          // "Uptime 3 days"
//
// There is one numbering of lines, and every table of lines below the sample goes by it: a
// replacement never adds or removes a line. The original line of a number is the text's; the
// wrapped line is a rule's replacement of it, when it has one that isn't empty, else the original.
//
// A sample that defines a parser is never parsed itself; its clones are. One thread at a time uses
// a tree.
//
// A sample is also what an editor of definitions works on: load it, edit it or its rules, save it,
// and give the definition with the saved document to the parser again (docs/editing.md).
//
//     sample.RenameVariable("uptime", "days");            // by full name, whichever rule owns it
//     sample.Children().front()->...                      // each kind has operations of its own
//     sample.Save(document);                              // document["parserules"] has the rules
//
// Editing a sample never changes its clones, nor editing a clone the sample.
class TZPARSER_API CAppParseRuleSample : public CAppParseRuleHashed {
public:
    explicit CAppParseRuleSample(const std::string& name);
    ~CAppParseRuleSample() override;

    void SetName(const std::string& name) { m_name = name; }
    std::string GetName() const { return m_name; }
    bool IsRuleModify() const { return m_ruleModify; }
    // Does nothing; the flag follows the rules' own setters.
    void SetModify(bool modify);

    // Splits the text and runs the children over the lines from startLine to endLine, exclusive; -1
    // is the number of lines. True when at least one child returned true, so false without
    // children. GetLastError is the last error of any child, also when the result is true. A text
    // too long to hold fails with words.
    bool Parse(const std::string& text, int startLine, int endLine,
               IAppVariableCallback* callback) override;

    // How long a script below may run in a parse, in milliseconds; 0 is no limit. Not copied.
    int GetScriptTimeLimit() const { return m_scriptTimeLimit; }
    void SetScriptTimeLimit(int milliseconds) { m_scriptTimeLimit = milliseconds; }

    const std::string& GetOriginalLine(int line) const override;
    std::string GetLine(int line) const { return GetOriginalLine(line); }
    const CAppSampleLines& GetLines() const { return m_originalLines; }

    // Joins the lines of a range by line feeds, closed lines standing as empty ones; `lineNumbers`
    // gets the numbers of the open lines. Lines are this sample's wrapped lines: `replaced`, the
    // asking rule's own, isn't read.
    std::string GroupMultiLine(int startLine, int endLine, const CAppLineStatus& status,
                               std::vector<int>& lineNumbers,
                               const std::map<int, std::string>& replaced) const;
    // The original text of all lines that variables or their surroundings touch, each with a line
    // feed; the sets get the numbers of all these lines, and of the surrounding ones.
    std::string GetOriTextInfo(std::set<int>& oriLines, std::set<int>& extendLines) const;

    // Editing by the full name of a variable or rule, with or without "$"; both always return true,
    // tell IsRuleModify, and do nothing else for a name that no rule owns.
    //
    // Takes a variable out of its statement or column. A keyword rule without variables goes too,
    // but for the default child of a filter or paragraph; the name of a table, filter or paragraph
    // takes the rule out. A statement that had other variables too finds them again when it was
    // saved and loaded.
    bool DeleteVariable(const std::string& name);
    // Of `to` only what is behind the last "." counts. In statements the first "$from" is replaced,
    // be it the front part of a longer name; one written with a type word isn't found.
    bool RenameVariable(const std::string& from, const std::string& to);

    // A definition tree of this sample alone, which the caller owns.
    CAppVariableDef* GetVariableTree();

    // Reads a sample object: operations, rule document, table keys. Always true; broken parts are
    // dropped.
    bool Load(const hxJson::Value& json) override;
    // Writes the rule document. Interface keys go inside it, while Load takes them from beside it,
    // so a document saved and loaded again loses them unless the caller moves them.
    bool Save(hxJson::Value& json) override;
    // Reads the "parserules" element on the level of the cursor, in place of the children there
    // are; false, with nothing changed, when there is none. Interface keys are taken from inside it
    // and kept with the sample, not handed to the tables; keys from earlier loads stay.
    bool LoadFromXml(CMarkup& xml) override;
    // Adds "parserules" and, beside it, the interface keys.
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

    CAppParseRuleSample* AsSample() override { return this; }
    const CAppParseRuleSample* AsSample() const override { return this; }

protected:
    bool OnCopyTo(CAppParseRule* target) override;
    void SetRuleModify() override;

private:
    void SetChildTableKey(const std::set<std::string>& keys, bool interfaceKeys);
    void LoadKeys(const hxJson::Value& json);
    std::string JoinedInterfaceKeys() const;
    bool RunChildren(const std::string& text, int startLine, int endLine,
                     IAppVariableCallback* callback);

    CAppSampleLines m_originalLines;
    std::string m_name;
    bool m_ruleModify = false;
    int m_scriptTimeLimit = 0;
    std::set<std::string> m_interfaceKeys;
    std::set<std::string> m_tableKeys;
};
