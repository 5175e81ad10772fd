// Matching KVPs against lines.
//
// A plan lists the KVPs ready to be run: expression, names, and where each name stands among all
// variables. It comes with the definition; only a rule whose KVPs were edited, or whose paragraph
// puts its own lines in front, makes its own.
//
// 1. Each KVP in order searches the open lines of the range from the first; the first line that
// matches gives the values.
// 2. The groups of the match go to the names in order. A "$_dummy" takes a group and throws it
// away. An empty group is
//    passed over when there are more groups than names: so "regex[$a]:(x)|(y)" gives $a whichever
//    branch matched.
// 3. A variable that no KVP gave a value gets a stand-by value at the first line of the range.
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/rule/appsamplelines.h"

#include <algorithm>
#include <cstdint>
#include <limits>

bool CAppParseRuleKeyWord::Parse(const std::string&, int startLine, int endLine,
                                 IAppVariableCallback*) {
    if (!OnBeginParse(startLine, endLine)) return false;
    const auto* parent = GetParentRule();
    if (parent != nullptr && parent->GetRuleType() != RuleType_Paragraph) m_variablePos.clear();
    ExecuteSearchReplace(GetNIStartLine(), GetNIEndLine());
    ParseKeywordVariable(GetNIStartLine(), GetNIEndLine());
    ParseMlineVariables(GetNIStartLine(), GetNIEndLine());
    return true;
}

bool CAppParseRuleKeyWord::ParseKeywordVariable(int startLine, int endLine) {
    auto run = BeginRun(startLine, endLine);
    CAppRegexMatch match;
    for (const auto& item : run.plan->items) {
        if (item.isMultiLine)
            RunMultiLine(run, item, match);
        else
            RunSingleLine(run, item, match);
    }
    StoreStandBys(run);
    return true;
}

// Variables of KVPs that are compiled only now aren't among the missing ones: their stand-by values
// begin with the next parse of the rule.
CAppParseRuleKeyWord::Run CAppParseRuleKeyWord::BeginRun(int startLine, int endLine) {
    Run run;
    run.start = startLine;
    run.end = endLine;
    FillUsePreVars(run.usePre);
    if (m_definition->plan && !IsFirstChildOfParagraph()) {
        run.plan = m_definition->plan;
        run.missing.assign(run.plan->variables.size(), 1);
        return run;
    }
    std::set<std::string> known;
    FillAllVariables(known);
    auto kvps = GetRunKVPs();
    if (!m_runPlan || m_runPlan->kvps != kvps) m_runPlan = MakePlan(std::move(kvps));
    run.plan = m_runPlan;
    for (const auto& name : run.plan->variables)
        run.missing.push_back(known.count(name) != 0 ? 1 : 0);
    return run;
}

std::vector<std::string> CAppParseRuleKeyWord::GetRunKVPs() const {
    std::vector<std::string> kvps = m_definition->kvps;
    InsertParentStartExpression(kvps, false);
    return kvps;
}

std::shared_ptr<const CAppParseRuleKeyWord::Plan> CAppParseRuleKeyWord::MakePlan(
    std::vector<std::string> kvps) {
    auto plan = std::make_shared<Plan>();
    std::vector<std::string> names;
    for (const auto& kvp : kvps) ExtractVariableNames(kvp, names);
    for (const auto& entry : m_definition->variableTypes) plan->variables.push_back(entry.first);
    for (const auto& kvp : kvps) {
        const auto* known = FindResolved(kvp);
        if (known != nullptr && !known->regexText.empty())
            plan->items.push_back(MakePlanItem(kvp, plan->variables));
    }
    plan->kvps = std::move(kvps);
    return plan;
}

CAppParseRuleKeyWord::PlanItem CAppParseRuleKeyWord::MakePlanItem(
    const std::string& kvp, const std::vector<std::string>& variables) {
    const auto& known = *FindResolved(kvp);
    PlanItem item;
    item.regexText = known.regexText;
    item.regex = GetCachedRegex(known.regexText, CAppRegex::RuleFlags);
    item.names = known.names;
    item.isMultiLine = known.isMultiLine;
    item.isDummy =
        item.isMultiLine ? DummiesOfRegex(known.regexText) : MarkDummies(known.namesWithDummy);
    for (const auto& name : item.names) {
        const auto at = std::lower_bound(variables.begin(), variables.end(), name);
        const bool found = at != variables.end() && *at == name;
        item.slots.push_back(found ? static_cast<std::size_t>(at - variables.begin()) : NoSlot);
    }
    return item;
}

void CAppParseRuleKeyWord::RunSingleLine(Run& run, const PlanItem& item, CAppRegexMatch& match) {
    const auto* lines = GetSampleLines();
    if (lines == nullptr || !item.regex) return;
    const bool replaced = !GetSearchReplaceResult().empty();
    const int end = std::min(run.end, lines->Count());
    for (int line = std::max(run.start, 0); line < end; ++line) {
        if (!IsLineOpen(line)) continue;
        const auto text = replaced ? WrappedLineView(line) : lines->View(line);
        if (text.empty() || item.regex->Search(text, match) != AppRegexSearch_Match) continue;
        AssignGroups(run, item, match, line);
        return;
    }
}

void CAppParseRuleKeyWord::AssignGroups(Run& run, const PlanItem& item, const CAppRegexMatch& match,
                                        int line) {
    const auto groups = static_cast<std::size_t>(match.GroupCount());
    const bool surplus = groups > item.names.size();
    std::size_t nameIndex = 0;
    for (std::size_t group = 1; group <= groups && nameIndex < item.names.size(); ++group) {
        const auto value = match.Text(static_cast<int>(group));
        if (value.empty() && surplus) continue;
        if (group - 1 < item.isDummy.size() && item.isDummy[group - 1] != 0) continue;
        const auto& name = item.names[nameIndex];
        const auto slot = item.slots[nameIndex];
        ++nameIndex;
        if (value.empty() && run.usePre.count(name) != 0) continue;
        if (slot == NoSlot) continue;
        run.missing[slot] = 0;
        const auto begin = static_cast<int>(match.Position(static_cast<int>(group)));
        Store(name, line,
              CAppTextLet(line, begin, line, begin + static_cast<int>(value.size()),
                          std::string(value)));
    }
}

void CAppParseRuleKeyWord::StoreStandBys(const Run& run) {
    for (std::size_t slot = 0; slot < run.missing.size(); ++slot) {
        if (run.missing[slot] == 0) continue;
        const auto& name = run.plan->variables[slot];
        CAppTextLet value(run.start, 0, run.start, 0, std::string());
        CarryOver(run.usePre, name, value);
        Store(name, run.start, std::move(value));
    }
}

// Takes over the text that the paragraph before left for a variable.
void CAppParseRuleKeyWord::CarryOver(const std::set<std::string>& usePre, const std::string& name,
                                     CAppTextLet& value) const {
    if (usePre.count(name) == 0) return;
    const auto at = m_variablePos.find(name);
    if (at != m_variablePos.end() && !at->second.empty())
        value.text = at->second.rbegin()->second.text;
}

// Lines mostly come in ascending order, so the end is the place to begin looking from.
void CAppParseRuleKeyWord::Store(const std::string& name, int line, CAppTextLet&& value) {
    auto& values = m_variablePos[name];
    values.insert_or_assign(values.end(), line, std::move(value));
    AddLineAndOriTextInfo(line);
}

void CAppParseRuleKeyWord::AddVariablePosInfo(const std::string& name, int line,
                                              const CAppTextLet& value) {
    if (m_definition->variableTypes.count(name) != 0) Store(name, line, CAppTextLet(value));
}

// Kept as the lines alone; when the vector is full it is first freed of repetitions, so it stays as
// small as the number of different lines.
void CAppParseRuleKeyWord::AddLineAndOriTextInfo(int line) {
    constexpr int structureKind13 = 13;
    constexpr int structureKind14 = 14;
    if (const auto* parent = GetParentRule()) {
        const int kind = parent->GetRuleType();
        if (kind == RuleType_Table || kind == RuleType_Paragraph || kind == structureKind13 ||
            kind == structureKind14)
            return;
    }
    if (!m_contextLines.empty() && m_contextLines.back() == line) return;
    if (m_contextLines.size() == m_contextLines.capacity()) {
        std::sort(m_contextLines.begin(), m_contextLines.end());
        m_contextLines.erase(std::unique(m_contextLines.begin(), m_contextLines.end()),
                             m_contextLines.end());
    }
    m_contextLines.push_back(line);
}

std::set<int> CAppParseRuleKeyWord::OriTextLines() const {
    constexpr std::int64_t around = 3;
    std::set<int> lines;
    for (const std::int64_t line : m_contextLines) {
        const auto last = std::min<std::int64_t>(line + around, std::numeric_limits<int>::max());
        for (auto shown = std::max<std::int64_t>(line - around, 0); shown <= last; ++shown)
            lines.insert(static_cast<int>(shown));
    }
    return lines;
}

// Both lists are walked from their ends: each value takes the latest parent value that begins above
// its line.
void CAppParseRuleKeyWord::SetVariableValueOfParentLine(
    const std::map<std::string, std::vector<CAppTextLet>>& parentValues) {
    for (const auto& [name, parents] : parentValues) {
        const auto at = m_variablePos.find(name);
        if (at == m_variablePos.end()) continue;
        auto entry = at->second.rbegin();
        for (auto parent = parents.rbegin();
             parent != parents.rend() && entry != at->second.rend();) {
            if (entry->first <= parent->beginRow) {
                ++parent;
            } else {
                entry->second = *parent;
                ++entry;
            }
        }
    }
}
