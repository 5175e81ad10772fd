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
#include "tzparser/rule/paragraphscope.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <string_view>

bool CAppParseRuleKeyWord::Parse(const std::string&, int startLine, int endLine,
                                 IAppVariableCallback*) {
    if (!OnBeginParse(startLine, endLine)) return false;
    ParseRange();
    return true;
}

void CAppParseRuleKeyWord::ParseRange() {
    const auto* parent = GetParentRule();
    if (parent != nullptr && parent->GetRuleType() != RuleType_Paragraph) m_values.Clear();
    if (const auto* lines = GetSampleLines()) m_values.ReadFrom(lines->Text());
    ExecuteSearchReplace(GetNIStartLine(), GetNIEndLine());
    ParseKeywordVariable(GetNIStartLine(), GetNIEndLine());
    ParseMlineVariables(GetNIStartLine(), GetNIEndLine());
}

bool CAppParseRuleKeyWord::ParseKeywordVariable(int startLine, int endLine) {
    auto run = BeginRun(startLine, endLine);
    if (m_slotPlan != run.plan) m_values.ForgetSlots();
    m_slotPlan = run.plan;
    if (!m_match) m_match.emplace();
    for (const auto& item : run.plan->items) {
        if (item.isMultiLine)
            RunMultiLine(run, item, *m_match);
        else
            RunSingleLine(run, item, *m_match);
    }
    StoreStandBys(run);
    return true;
}

// Variables of KVPs that are compiled only now aren't among the missing ones: their stand-by values
// begin with the next parse of the rule.
CAppParseRuleKeyWord::Run CAppParseRuleKeyWord::BeginRun(int startLine, int endLine) {
    Run run{FindPlan(), &UsePreVars(), startLine, endLine, GetSampleLines()};
    if (run.plan != nullptr) {
        m_missing.assign(run.plan->variables.size(), 1);
        return run;
    }
    std::set<std::string> known;
    FillAllVariables(known);
    m_runPlan = MakePlan();
    m_slotPlan = nullptr;
    run.plan = m_runPlan.get();
    m_missing.clear();
    for (const auto& name : run.plan->variables)
        m_missing.push_back(known.count(name) != 0 ? 1 : 0);
    return run;
}

std::vector<std::string> CAppParseRuleKeyWord::GetRunKVPs() const {
    std::vector<std::string> kvps = m_definition->kvps;
    InsertParentStartExpression(kvps, false);
    return kvps;
}

// The plan at hand that was made for the lines which the paragraph above has now; null when there
// is none.
const CAppParseRuleKeyWord::Plan* CAppParseRuleKeyWord::FindPlan() const {
    const auto* paragraph = IsFirstChildOfParagraph() ? GetParagraphParent() : nullptr;
    for (const auto* plan : {m_definition->plan.get(), m_runPlan.get()}) {
        if (plan == nullptr) continue;
        const auto& lines = plan->paragraphLines;
        if (paragraph != nullptr ? paragraph->AreIDLines(lines) : lines.empty()) return plan;
    }
    return nullptr;
}

// The texts of expressions that compiled are those that the expressions hold.
void CAppParseRuleKeyWord::PreparePlan() {
    auto plan = MakePlan();
    auto& definition = EditDefinition();
    definition.kvps.shrink_to_fit();
    std::map<std::string_view, const PlanItem*> items;
    for (const auto& item : plan->items)
        if (item.regex) items.emplace(item.regex->GetText(), &item);
    for (auto& entry : definition.resolved) {
        auto& kvp = entry.second;
        const auto item = items.find(kvp.regexText);
        if (kvp.regex || item == items.end()) continue;
        kvp.regex = item->second->regex;
        std::string().swap(kvp.regexText);
    }
    definition.plan = std::move(plan);
}

std::shared_ptr<const CAppParseRuleKeyWord::Plan> CAppParseRuleKeyWord::MakePlan() {
    auto plan = std::make_shared<Plan>();
    InsertParentStartExpression(plan->paragraphLines, false);
    const auto kvps = GetRunKVPs();
    std::vector<std::string> names;
    for (const auto& kvp : kvps) ExtractVariableNames(kvp, names);
    plan->variables.reserve(m_definition->variableTypes.size());
    for (const auto& entry : m_definition->variableTypes) plan->variables.push_back(entry.first);
    plan->items.reserve(kvps.size());
    for (const auto& kvp : kvps) {
        const auto* known = FindResolved(kvp);
        if (known != nullptr && !known->RegexText().empty())
            plan->items.push_back(MakePlanItem(*known, plan->variables));
    }
    return plan;
}

CAppParseRuleKeyWord::PlanItem CAppParseRuleKeyWord::MakePlanItem(
    const Kvp& known, const std::vector<std::string>& variables) {
    PlanItem item;
    item.regex = GetCachedRegex(known.RegexText(), CAppRegex::RuleFlags);
    if (!item.regex) item.brokenRegex = std::make_unique<const std::string>(known.RegexText());
    item.isMultiLine = known.isMultiLine;
    item.isDummy = item.isMultiLine ? DummiesOfRegex(known.RegexText()) : MarkDummies(known);
    item.slots.reserve(known.names.size());
    for (const auto& name : known.names) {
        const auto at = std::lower_bound(variables.begin(), variables.end(), name);
        const bool found = at != variables.end() && *at == name;
        item.slots.push_back(found ? static_cast<std::size_t>(at - variables.begin()) : NoSlot);
    }
    return item;
}

void CAppParseRuleKeyWord::RunSingleLine(Run& run, const PlanItem& item, CAppRegexMatch& match) {
    const auto* lines = run.lines;
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
    const auto& slots = item.slots;
    const bool surplus = groups > slots.size();
    std::size_t nameIndex = 0;
    for (std::size_t group = 1; group <= groups && nameIndex < slots.size(); ++group) {
        const auto value = match.Text(static_cast<int>(group));
        if (value.empty() && surplus) continue;
        if (group - 1 < item.isDummy.size() && item.isDummy[group - 1] != 0) continue;
        const auto slot = slots[nameIndex++];
        if (slot == NoSlot) continue;
        const auto& name = run.plan->variables[slot];
        if (value.empty() && run.usePre->count(name) != 0) continue;
        m_missing[slot] = 0;
        const auto begin = static_cast<int>(match.Position(static_cast<int>(group)));
        m_values.ColumnAt(slot, name).Set(line, begin, value);
        AddLineAndOriTextInfo(line);
    }
}

void CAppParseRuleKeyWord::StoreStandBys(const Run& run) {
    for (std::size_t slot = 0; slot < m_missing.size(); ++slot) {
        if (m_missing[slot] == 0) continue;
        const auto& name = run.plan->variables[slot];
        const auto* carried = LastValue(*run.usePre, name);
        if (carried == nullptr) {
            m_values.ColumnAt(slot, name).Set(run.start, 0, {});
            AddLineAndOriTextInfo(run.start);
            continue;
        }
        CAppTextLet value(run.start, 0, run.start, 0, carried->Last().text);
        Store(name, run.start, value);
    }
}

// The values whose last one the paragraph before left for a variable that carries it over; null
// when there are none.
const CLetColumn* CAppParseRuleKeyWord::LastValue(const std::set<std::string>& usePre,
                                                  const std::string& name) const {
    if (usePre.empty() || usePre.count(name) == 0) return nullptr;
    const auto* values = m_values.Find(name);
    return values != nullptr && !values->IsEmpty() ? values : nullptr;
}

// Takes over the text that the paragraph before left for a variable.
void CAppParseRuleKeyWord::CarryOver(const std::set<std::string>& usePre, const std::string& name,
                                     CAppTextLet& value) const {
    if (const auto* values = LastValue(usePre, name)) value.text = values->Last().text;
}

void CAppParseRuleKeyWord::Store(const std::string& name, int line, const CAppTextLet& value) {
    NoteSpan(line, value);
    m_values.Column(name).Set(line, value);
    AddLineAndOriTextInfo(line);
}

void CAppParseRuleKeyWord::NoteSpan(int line, const CAppTextLet& value) {
    const auto span = std::int64_t{value.endRow} - line;
    if (span > m_longestSpan)
        m_longestSpan =
            static_cast<int>(std::min<std::int64_t>(span, std::numeric_limits<int>::max()));
}

void CAppParseRuleKeyWord::AddVariablePosInfo(const std::string& name, int line,
                                              const CAppTextLet& value) {
    if (m_definition->variableTypes.count(name) != 0) Store(name, line, value);
}

void CAppParseRuleKeyWord::StoreEmptyValues(const std::vector<int>& lines) {
    for (auto& [name, values] : m_values.All()) {
        if (m_definition->variableTypes.count(name) == 0) continue;
        for (const int line : lines) {
            values.Set(line, 0, {});
            AddLineAndOriTextInfo(line);
        }
    }
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
        if (m_values.Find(name) == nullptr) continue;
        auto& values = m_values.Column(name);
        std::vector<std::pair<int, const CAppTextLet*>> taken;
        auto line = values.LastLine();
        for (auto parent = parents.rbegin();
             parent != parents.rend() && line != CLetColumn::NoLineYet;) {
            if (line <= parent->beginRow) {
                ++parent;
            } else {
                taken.emplace_back(line, &*parent);
                line = values.LastLineBefore(line);
            }
        }
        for (const auto& [entry, parent] : taken) {
            values.Set(entry, *parent);
            NoteSpan(entry, *parent);
        }
    }
}
