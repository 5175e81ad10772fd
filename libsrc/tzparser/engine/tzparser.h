#pragma once

#include "host/json/hxjson.h"
#include "tzparser/identify/samplechoice.h"
#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appvariabledef.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

class CAppParseRule;
class CAppParseRuleKeyWord;
class CAppVariableTableDef;
class CSampleChooser;
class CTzParserSample;

// CTzParser is the one object that a host makes for a parser definition: it picks the sample for a
// text, runs a clone of the sample's rules over the text and hands back a tree of typed values.
//
//     CTzParser parser;
//     if (!parser.SetParser(definition)) ...           // no sample could be loaded
//     std::string error;
//     if (auto values = parser.Parse(text, error))
//         use(values->GetChildValueByName("hostname")->GetVariableValue(0)->text);
//
// The sample for a text is the first in the order of "sequences" whose identify conditions all
// hold. When there is none, the last one in "samples" serves, whether or not its conditions hold.
//
// Any number of threads may call Parse, Identify, GetSampleParseRuleClone and GetVariableTree at
// once on one object, as long as none is in SetParser or a setter; two parses can't see each
// other. A value tree needs neither the parser nor the definition any more. No
// operation throws, but for want of memory.
//
// A parser isn't edited itself. To change what it reads, load an element of "samples" into a
// CTzParserSample, edit its rules, put what they save into the element, and set the definition
// again; docs/editing.md has the code:
//
//     CTzParserSample sample;
//     sample.LoadSample(element);
//     sample.GetRule().RenameVariable("hostname", "name");
//     sample.GetRule().Save(saved);
//     element["parserRules"] = saved["parserules"].toString();
//     parser.SetParser(definition);
//
// All values share one frozen copy of the variable tree. A host that took the tree itself by
// GetVariableTree may change it, so from then on each value gets a copy of the tree as it is at
// that parse.
class TZPARSER_API CTzParser {
public:
    CTzParser();
    ~CTzParser();
    CTzParser(const CTzParser&) = delete;
    CTzParser& operator=(const CTzParser&) = delete;

    // Replaces the whole definition. Loading is lenient: what can't be read is skipped without
    // words, and a sample that can't be loaded is dropped. True when at least one sample stands;
    // what did load stays on false too.
    bool SetParser(const hxJson::Value& definition);

    // Parses a text. Null on failure, with the reason in `error`: "cannot find matched parser."
    // without any sample, "parse failed when parser clone.", or "parse failed when using parser
    // rules. reseason:" with the rules' own words or those of an exception that left a rule. On
    // success `error` stays as it was. Lines and texts are bytes.
    std::shared_ptr<CAppVariableValue> Parse(const std::string& text, std::string& error);

    // The rules that Parse would run on the text, not yet run: for a host that gives them a
    // callback or reads their own results. Null on failure, with the first two reasons of Parse.
    // The tree is the caller's alone.
    std::shared_ptr<CAppParseRule> GetSampleParseRuleClone(const std::string& text,
                                                           std::string& error);

    // Which sample Parse would use for the text, and why: for each sample that "sequences" names,
    // the condition that the text fails. A sample that "sequences" names twice is tried once. It
    // asks condition by condition, so it takes longer than the choice that Parse makes.
    SampleChoice Identify(const std::string& text) const;

    // The variables that the samples' rules yield; null before SetParser.
    std::shared_ptr<CAppVariableDef> GetVariableTree() const;

    // The limit handed to the root of each value tree; 5000 until it is set.
    int GetTableRowCountLimitForHash() const { return m_tableRowCountLimitForHash; }
    void SetTableRowCountLimitForHash(int limit) { m_tableRowCountLimitForHash = limit; }

    // How long each script rule of a parse may run, in milliseconds; 0, which it is until it is
    // set, and negative numbers are no limit. A script that runs longer is interrupted in the
    // parsing thread, and its rule fails with Python's words for a TimeoutError. Time inside an
    // operation that isn't Python's, and time that other scripts take, counts, but such an
    // operation is interrupted only when it is over.
    int GetScriptTimeLimit() const { return m_scriptTimeLimit; }
    void SetScriptTimeLimit(int milliseconds) { m_scriptTimeLimit = milliseconds; }

private:
    static constexpr int DefaultRowCountLimit = 5000;

    void LoadSamples(const hxJson::Value& definition);
    void MakeTrialOrder();
    std::shared_ptr<CTzParserSample> GetMatchedSample(const std::string& text) const;
    std::shared_ptr<CTzParserSample> GetSampleByIndex(int index) const;
    std::unique_ptr<CAppParseRule> MakeClone(const std::string& text, std::string& error) const;
    std::shared_ptr<CAppVariableValue> RunRules(const std::string& text, std::string& error) const;
    std::shared_ptr<CAppVariableValue> MakeValue(CAppParseRule& rule) const;

    // The variable tree: one walk over the rules of all samples, each kind by its own function.
    std::shared_ptr<CAppVariableDef> CreateVarTree() const;
    void CreateVarTree(CAppParseRule* rule, CAppVariableDef* def, bool inTable) const;
    void AddSampleVariables(CAppParseRule& rule, CAppVariableDef& def, bool inTable) const;
    void AddKeyWordVariables(CAppParseRule& rule, CAppVariableDef& def, bool inTable) const;
    template <class Filter>
    void AddFilterVariables(CAppParseRule& rule, CAppVariableDef& def, bool inTable) const;
    void AddTableVariables(CAppParseRule& rule, CAppVariableDef& def, bool inTable) const;
    void AddParagraphVariables(CAppParseRule& rule, CAppVariableDef& def, bool inTable) const;
    void AddOwnVariables(CAppParseRule& rule, CAppVariableDef& def, bool inTable) const;
    static std::string GeneratePythonName(const std::string& name);
    static std::string WithoutDollars(const std::string& name);
    // A node that its parent doesn't have yet: inside a table a column of elements of the type,
    // elsewhere a plain node.
    static std::unique_ptr<CAppVariableDef> MakeVariable(CAppVariableDef& parent,
                                                         const std::string& name,
                                                         AppDataType_e type, bool inTable);

    // What a table or paragraph rule says about its table.
    struct TableSource {
        const std::string& name;
        const std::set<std::string>& keyVars;
        const CAppParseRule& rule;
        bool hasPythonName;
    };
    // The table of a rule's name at the parsing root above `def`, or at `def` when there is none
    // above: the one that is there already, whatever node it is, else a new one.
    static CAppVariableDef& AddTable(CAppVariableDef& def, const TableSource& source);
    // Keys go into a definition without the "$" characters in front, empty ones not at all.
    static std::set<std::string> CleanKeys(const std::set<std::string>& keys);
    static void SetTableKeys(CAppVariableTableDef* table, const std::set<std::string>& keys);
    static void SetTableKeys2(CAppVariableTableDef* table, const std::set<std::string>& tableKeys,
                              const std::set<std::string>& interfaceKeys);
    static void SetTableCmpProperty(CAppVariableTableDef* table,
                                    const std::set<std::string>& columns, bool sort);

    std::vector<std::int32_t> m_sequences;  // in the order of trying, duplicates kept
    std::vector<std::shared_ptr<CTzParserSample>>
        m_samples;  // those that loaded, in document order
    std::unordered_map<int, std::shared_ptr<CTzParserSample>> m_sampleByIndex;  // the first of each
    std::vector<std::shared_ptr<CTzParserSample>> m_trialOrder;                 // each once
    std::unique_ptr<const CSampleChooser> m_chooser;                            // over these
    std::shared_ptr<CAppVariableDef> m_varTree;
    std::shared_ptr<const CAppVariableDef> m_frozenTree;  // the same, which nobody can write
    mutable std::atomic<bool> m_isTreeHandedOut{false};
    int m_tableRowCountLimitForHash = DefaultRowCountLimit;
    int m_scriptTimeLimit = 0;
    bool m_extendedAccess = false;
};
