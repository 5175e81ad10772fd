#include "tzparser/identify/canvasnodecmdsampleidentifyconditionregex.h"

#include <algorithm>

namespace {

constexpr unsigned CaseSensitive = 0;

}  // namespace

bool CCanvasNodeCmdSampleIdentifyConditionRegex::CopyTo(
    CCanvasNodeCmdSampleIdentifyConditionBase* target) {
    auto* other = dynamic_cast<CCanvasNodeCmdSampleIdentifyConditionRegex*>(target);
    if (other == nullptr || other->GetType() != GetType()) return false;
    other->OnSetValue();
    return true;
}

bool CCanvasNodeCmdSampleIdentifyConditionRegex::IsMatch(
    const std::vector<std::string>& texts) const {
    if (!m_regex) return true;
    const bool found = std::any_of(texts.begin(), texts.end(),
                                   [this](const std::string& text) { return IsFound(text); });
    return found == WantsMatch();
}

bool CCanvasNodeCmdSampleIdentifyConditionRegex::IsMatch(const std::string& text) const {
    return !m_regex || IsFound(text) == WantsMatch();
}

bool CCanvasNodeCmdSampleIdentifyConditionRegex::CheckValue(const std::string& value) const {
    return CAppRegex(value, CaseSensitive).IsValid();
}

void CCanvasNodeCmdSampleIdentifyConditionRegex::OnSetValue() {
    m_regex = std::make_unique<const CAppRegex>(m_value, CaseSensitive);
    if (!m_regex->IsValid()) m_regex.reset();
}

bool CCanvasNodeCmdSampleIdentifyConditionRegex::IsFound(const std::string& text) const {
    CAppRegexMatch match;
    return m_regex->Search(text, match) == AppRegexSearch_Match;
}

CCanvasNodeCmdSampleIdentifyConditionBase*
CCanvasNodeCmdSampleIdentifyConditionContainRegex::CreateObj() {
    return new CCanvasNodeCmdSampleIdentifyConditionContainRegex;
}

CCanvasNodeCmdSampleIdentifyConditionBase*
CCanvasNodeCmdSampleIdentifyConditionDonotContainRegex::CreateObj() {
    return new CCanvasNodeCmdSampleIdentifyConditionDonotContainRegex;
}
