// The editing operations of a rule designer.
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/rule/paragraphscope.h"

#include <algorithm>

void CAppParseRuleKeyWord::AddKVP(const std::string& kvp) {
    EditDefinition().kvps.push_back(kvp);
    SetRuleModify();
}

void CAppParseRuleKeyWord::AddStatement(const std::string& statement) {
    EditDefinition().statements.push_back(statement);
    SetRuleModify();
}

bool CAppParseRuleKeyWord::UpdateKVP(const std::string& oldKvp, const std::string& newKvp) {
    auto& kvps = EditDefinition().kvps;
    const auto at = std::find(kvps.begin(), kvps.end(), oldKvp);
    if (at != kvps.end()) {
        if (newKvp.empty())
            DelKVP(oldKvp);
        else
            *at = newKvp;
    } else if (!newKvp.empty()) {
        kvps.push_back(newKvp);
    }
    SetRuleModify();
    return true;
}

void CAppParseRuleKeyWord::DelKVP(const std::string& kvp) {
    const std::string text = kvp;  // the caller's may be the entry itself
    const auto& kvps = m_definition->kvps;
    if (std::find(kvps.begin(), kvps.end(), text) != kvps.end()) {
        std::vector<std::string> names;
        ExtractVariableNames(text, names);
        auto& definition = EditDefinition();
        for (const auto& name : names) definition.variableTypes.erase(name);
        definition.kvps.erase(std::find(definition.kvps.begin(), definition.kvps.end(), text));
    }
    auto& definition = EditDefinition();
    const auto known = definition.resolved.find(text);
    if (known != definition.resolved.end()) {
        known->second.names.clear();
        known->second.groupNames.clear();
    }
    SetRuleModify();
}

void CAppParseRuleKeyWord::DelStatement(const std::string& statement) {
    auto& statements = EditDefinition().statements;
    const auto at = std::find(statements.begin(), statements.end(), statement);
    if (at == statements.end()) return;
    statements.erase(at);
    SetRuleModify();
}

void CAppParseRuleKeyWord::Reset() {
    auto& definition = EditDefinition();
    auto mlines = std::move(definition.mlineDefine);
    definition = Definition();
    definition.mlineDefine = std::move(mlines);
    m_values.Clear();
    SetRuleModify();
}

// It is the first occurrence that goes, also when it is only the front part of a longer name.
void CAppParseRuleKeyWord::ReplaceDummyVariable(std::string& text, const std::string& variable,
                                                const std::string& replacement) {
    const auto at = text.find(variable);
    if (at != std::string::npos)
        text.replace(at, variable.size(), replacement.empty() ? DummyVariableName : replacement);
    SetRuleModify();
}

void CAppParseRuleKeyWord::ReplaceInKVPs(const std::string& variable,
                                         const std::string& replacement) {
    for (auto& kvp : EditDefinition().kvps) ReplaceDummyVariable(kvp, variable, replacement);
}

void CAppParseRuleKeyWord::DeleteVariable(const std::string& name) {
    DeleteVariableOfKvp(name);
    DeleteVariableOfStartLine(name);
    SetRuleModify();
}

void CAppParseRuleKeyWord::DeleteVariableOfKvp(const std::string& name) {
    const auto kvps = m_definition->kvps;
    std::vector<std::string> names;
    const auto declares = [&](const std::string& kvp) {
        names.clear();
        return ExtractVariableNames(kvp, names) &&
               std::find(names.begin(), names.end(), name) != names.end();
    };
    const auto at = std::find_if(kvps.begin(), kvps.end(), declares);
    if (at == kvps.end()) return;
    if (names.size() < 2) {
        DelKVP(*at);
        return;
    }
    const auto edited = ReplaceByDummy(*at, name, names);
    auto& definition = EditDefinition();
    definition.kvps[static_cast<std::size_t>(at - kvps.begin())] = edited;
    definition.resolved[edited].SetNames(std::move(names));
}

// A paragraph's start line is edited in the same way as a KVP.
void CAppParseRuleKeyWord::DeleteVariableOfStartLine(const std::string& name) {
    auto* paragraph = GetParagraphParent();
    if (paragraph == nullptr) return;
    std::vector<std::string> names;
    if (!ExtractVariableNames(paragraph->GetStartLine(), names) ||
        std::find(names.begin(), names.end(), name) == names.end())
        return;
    const auto edited = ReplaceByDummy(paragraph->GetStartLine(), name, names);
    paragraph->SetStartLine(edited);
    EditDefinition().resolved[edited].SetNames(std::move(names));
}

// The statement with "$_dummy" in the variable's place, and the name taken out of its names and of
// the types. A variable written with a type word is looked for with it, in the small letters in
// which types are kept; a statement in which neither form stands comes back as it is, with all its
// names.
std::string CAppParseRuleKeyWord::ReplaceByDummy(const std::string& statement,
                                                 const std::string& name,
                                                 std::vector<std::string>& names) {
    std::string edited = statement;
    std::string written = name;
    if (edited.find(written) == std::string::npos && !name.empty()) {
        const auto type = m_definition->variableTypes.find(name);
        if (type != m_definition->variableTypes.end())
            written = "$" + type->second + ":" + name.substr(1);
    }
    if (edited.find(written) == std::string::npos) return edited;
    ReplaceDummyVariable(edited, written, "");
    names.erase(std::remove(names.begin(), names.end(), name), names.end());
    EditDefinition().variableTypes.erase(name);
    return edited;
}
