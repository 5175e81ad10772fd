#pragma once

// Rows on the editing of a definition: what each operation leaves in the saved document, what the
// edited rules find in a text, and what the rules loaded from the saved document find in it, in
// JSON and in XML. They find the same but for what saving loses and what editing leaves behind on
// purpose: those rows have two wanted texts.

#include "host/xml/markup.h"

#include "support/ruledump.h"
#include "support/ruletree.h"

enum Note_e {
    Note_None,
    Note_Unmarked,   // the root isn't told
    Note_KeptInXml,  // the XML form keeps what the JSON form loses
};

struct EditRow {
    const char* name;
    const char* rules;  // nodes
    void (*edit)(CAppParseRuleSample&);
    std::string saved;  // nodes, without members that hold nothing
    const char* text;
    const char* found;
    const char* foundAgain = nullptr;  // by the rules loaded from what was saved, when it differs
    Note_e note = Note_None;
};

template <class Rule>
Rule& At(CAppParseRule& parent, std::size_t index) {
    return dynamic_cast<Rule&>(*parent.Children().at(index));
}

inline std::string SavedNodes(CAppParseRule& rules) {
    const auto saved = WithoutEmpty(SavedRules(rules))["parserules"]["parserule"];
    return saved.isNull() ? "[]" : saved.toString();
}

inline std::string FoundAgain(CAppParseRule& rules, const std::string& text) {
    CAppParseRuleSample again("");
    EXPECT_TRUE(again.Load(SavedRules(rules)));
    return DumpParse(again, text);
}

inline std::string FoundFromXml(CAppParseRule& rules, const std::string& text) {
    CMarkup saved;
    EXPECT_TRUE(rules.SaveToXml(saved));
    CMarkup xml;
    EXPECT_TRUE(xml.SetDoc(saved.GetDoc())) << xml.GetError();
    CAppParseRuleSample again("");
    EXPECT_TRUE(again.LoadFromXml(xml));
    return DumpParse(again, text);
}

// The clone made before an edit and the definition whose clone is edited stay as they were.
inline void CheckClones(const EditRow& row) {
    const auto definition = LoadRules(row.rules);
    const auto saved = SavedRules(*definition);
    const auto found = DumpParse(*definition, row.text);
    const std::unique_ptr<CAppParseRule> earlier(definition->Clone(nullptr));
    const std::unique_ptr<CAppParseRule> edited(definition->Clone(nullptr));
    row.edit(dynamic_cast<CAppParseRuleSample&>(*edited));
    EXPECT_EQ(DumpParse(*edited, row.text), row.found);
    EXPECT_EQ(SavedRules(*definition), saved);
    EXPECT_EQ(DumpParse(*definition, row.text), found);
    row.edit(*definition);
    EXPECT_EQ(SavedRules(*earlier), saved);
    EXPECT_EQ(DumpParse(*earlier, row.text), found);
}

template <std::size_t Count>
void CheckXml(const EditRow (&rows)[Count]) {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto sample = LoadRules(row.rules);
        row.edit(*sample);
        const bool isOther = row.foundAgain != nullptr && row.note != Note_KeptInXml;
        EXPECT_EQ(FoundFromXml(*sample, row.text), isOther ? row.foundAgain : row.found);
    }
}

template <std::size_t Count>
void CheckEdits(const EditRow (&rows)[Count]) {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto sample = LoadRules(row.rules);
        row.edit(*sample);
        EXPECT_EQ(SavedNodes(*sample), ParseJson("[" + row.saved + "]").toString());
        const char* const again = row.foundAgain != nullptr ? row.foundAgain : row.found;
        EXPECT_EQ(FoundAgain(*sample, row.text), again);
        EXPECT_EQ(DumpParse(*sample, row.text), row.found);
        CheckClones(row);
        const auto parsed = LoadRules(row.rules);
        parsed->Parse("", 0, -1, nullptr);
        row.edit(*parsed);
        EXPECT_EQ(parsed->IsRuleModify(), row.note != Note_Unmarked);
    }
}
