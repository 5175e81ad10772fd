#include "tzparser/select/appparserulelineselector.h"

#include "tzparser/keyword/appparserulekeyword.h"

namespace {

const std::vector<std::string>& NoTexts() {
    static const std::vector<std::string> none;
    return none;
}

}  // namespace

CAppParseRuleLineSelector::CAppParseRuleLineSelector(RuleType type, CAppParseRule* parent)
    : CAppParseRule(type, parent) {
    CAppParseRule::AddChildRule(new CAppParseRuleKeyWord(this));
}

CAppParseRuleLineSelector::~CAppParseRuleLineSelector() = default;

CAppParseRuleKeyWord* CAppParseRuleLineSelector::FirstKeyWord() const {
    return IsLeaf() ? nullptr : dynamic_cast<CAppParseRuleKeyWord*>(Children().front().get());
}

void CAppParseRuleLineSelector::AddKVP(const std::string& kvp) {
    if (auto* keyword = FirstKeyWord()) keyword->AddKVP(kvp);
}

void CAppParseRuleLineSelector::AddStatement(const std::string& statement) {
    if (auto* keyword = FirstKeyWord()) keyword->AddStatement(statement);
}

const std::vector<std::string>& CAppParseRuleLineSelector::GetKVPs() const {
    const auto* keyword = FirstKeyWord();
    return keyword != nullptr ? keyword->GetKVPs() : NoTexts();
}

const std::vector<std::string>& CAppParseRuleLineSelector::GetStatements() const {
    const auto* keyword = FirstKeyWord();
    return keyword != nullptr ? keyword->GetStatements() : NoTexts();
}

void CAppParseRuleLineSelector::ResetKeyWord() {
    if (auto* keyword = FirstKeyWord()) keyword->Reset();
}

CAppParseRule* CAppParseRuleLineSelector::GetChildRuleByVariableName(const std::string& name) {
    const std::size_t begin = !name.empty() && name.front() == '$' ? 1 : 0;
    if (name.compare(begin, std::string::npos, GetName()) == 0) return this;
    return CAppParseRule::GetChildRuleByVariableName(name);
}

// The name's first place in the text asked for counts.
bool CAppParseRuleLineSelector::IsAskedForValue(const std::string& name) const {
    const auto position = name.find(GetName());
    return position <= 1 && position + GetName().size() == name.size();
}

std::string CAppParseRuleLineSelector::TextOf(const CAppLineStatus& status) const {
    std::string text;
    bool isFirst = true;
    ForEachOpenLine(status, [&](int line) {
        if (!isFirst) text += "\r\n";
        isFirst = false;
        text += OriginalLineView(line);
    });
    return text;
}

void WriteOpenLines(const CAppLineStatus& status, hxJson::Value& list) {
    list = hxJson::Value(hxJson::arrayValue, false);
    ForEachOpenLine(status, [&list](int line) { list.append(hxJson::Value(line)); });
}
