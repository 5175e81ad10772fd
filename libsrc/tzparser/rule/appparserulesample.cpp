// The root of a parse: lines, line status, children.
#include "tzparser/rule/appparserulesample.h"

#include "tzparser/rule/ruleediting.h"
#include "tzparser/rule/rulekeys.h"
#include "tzparser/variable/appvariablearraydef.h"

#include <algorithm>

namespace {

// "_original_result" in front of a name, or behind one "$", means the text itself and not a
// variable.
bool NamesOriginalResult(const std::string& name) {
    const std::string_view result = ResultKey::OriginalResult;
    const std::string_view view = name;
    return view.substr(0, result.size()) == result ||
           (!view.empty() && view.front() == '$' && view.substr(1, result.size()) == result);
}

}  // namespace

CAppParseRuleSample::CAppParseRuleSample(const std::string& name)
    : CAppParseRuleHashed(RuleType_Sample, nullptr), m_name(name) {}

CAppParseRuleSample::~CAppParseRuleSample() = default;

void CAppParseRuleSample::SetModify(bool) {}

void CAppParseRuleSample::SetRuleModify() {
    m_ruleModify = true;
}

// The shortcut for the same text again never fires, since the flag has just been raised: every
// parse runs in full, and what rules hold of an earlier text never stays.
bool CAppParseRuleSample::Parse(const std::string& text, int startLine, int endLine,
                                IAppVariableCallback* callback) {
    ClearVariablePosition();
    SetRuleModify();
    CAppSampleLines lines;
    if (!lines.Assign(text)) {
        SetLastError("the text is too long.");
        return false;
    }
    if (!m_ruleModify && lines == m_originalLines) return true;
    m_originalLines.Swap(lines);
    m_lineStatus = CAppLineStatus::AllOpen(m_originalLines.Count());
    if (endLine == -1) endLine = m_originalLines.Count();
    ExecuteSearchReplace(startLine, endLine);
    const bool anyRan = RunChildren(text, startLine, endLine, callback);
    m_ruleModify = false;
    return anyRan;
}

bool CAppParseRuleSample::RunChildren(const std::string& text, int startLine, int endLine,
                                      IAppVariableCallback* callback) {
    bool anyRan = false;
    for (const auto& child : Children()) {
        anyRan |= child->Parse(text, startLine, endLine, callback);
        if (!child->GetLastError().empty()) SetLastError(child->GetLastError());
    }
    return anyRan;
}

void CAppParseRuleSample::ClearVariablePosition() {
    for (const auto& child : Children()) child->ClearVariablePosition();
}

const std::string& CAppParseRuleSample::GetOriginalLine(int line) const {
    return m_originalLines.String(line);
}

std::string CAppParseRuleSample::GroupMultiLine(int startLine, int endLine,
                                                const CAppLineStatus& status,
                                                std::vector<int>& lineNumbers,
                                                const std::map<int, std::string>&) const {
    lineNumbers.clear();
    std::string joined;
    const int start = std::max(startLine, 0);
    const int end = std::min(endLine, m_originalLines.Count());
    const bool isReplaced = !GetSearchReplaceResult().empty();
    if (start < end) lineNumbers.reserve(static_cast<std::size_t>(end - start));
    for (int line = start; line < end; ++line) {
        if (status.IsOpen(line)) {
            joined.append(isReplaced ? WrappedLineView(line) : m_originalLines.View(line));
            lineNumbers.push_back(line);
        }
        joined.push_back('\n');
    }
    if (!joined.empty()) joined.pop_back();
    return joined;
}

bool CAppParseRuleSample::AddToVariableTree(CAppVariableDef* def) {
    for (const auto& child : Children()) child->AddToVariableTree(def);
    return true;
}

CAppVariableDef* CAppParseRuleSample::GetVariableTree() {
    auto root =
        std::make_unique<CAppVariableArrayDef>(nullptr, "$" + m_name, AppVariableType_Default, "");
    auto original =
        std::make_unique<CAppVariableDef>(root.get(), "$_original_result", AppDataType_String,
                                          AppVariableType_BuiltIn, "Original Result");
    if (root->AddChild(original.get())) original.release();
    AddToVariableTree(root.get());
    return root.release();
}

std::vector<CAppTextLet> CAppParseRuleSample::GetVariableValue(const std::string& name) {
    return FindValues(name).TakeLets();
}

CLetList CAppParseRuleSample::FindValues(const std::string& name) {
    if (NamesOriginalResult(name)) return CLetList(std::vector<CAppTextLet>(1));
    return FindValuesBelow(name);
}

CAppParseRule* CAppParseRuleSample::GetChildRuleByVariableName(const std::string& name) {
    if (name == "_original_result" || name == "$_original_result") return this;
    return CAppParseRule::GetChildRuleByVariableName(name);
}

bool CAppParseRuleSample::IsNoneExist() {
    return std::any_of(Children().begin(), Children().end(),
                       [](const auto& child) { return child->IsNoneExist(); });
}

CAppParseRule* CAppParseRuleSample::CreateObject(CAppParseRule*) {
    return new CAppParseRuleSample("");
}

// Keys and what a caller keeps for comparing aren't copied: the table rules below hold their keys
// already, and a clone needs nothing else.
bool CAppParseRuleSample::OnCopyTo(CAppParseRule* target) {
    auto* sample = dynamic_cast<CAppParseRuleSample*>(target);
    if (sample == nullptr) return false;
    sample->m_name = m_name;
    sample->m_originalLines = m_originalLines;
    return true;
}

bool CAppParseRuleSample::DeleteVariable(const std::string& name) {
    if (auto* owner = GetChildRuleByVariableName(name)) DeleteRuleVariable(owner, name);
    SetRuleModify();
    return true;
}

bool CAppParseRuleSample::RenameVariable(const std::string& from, const std::string& to) {
    if (auto* owner = GetChildRuleByVariableName(from)) RenameRuleVariable(owner, from, to);
    SetRuleModify();
    return true;
}
