#include "tzparser/identify/canvasnodecmdsampleidentifyconditionstr.h"

#include "tzparser/rule/delimitedset.h"

#include <cstring>

bool CCanvasNodeCmdSampleIdentifyConditionStr::CopyTo(
    CCanvasNodeCmdSampleIdentifyConditionBase* target) {
    auto* other = dynamic_cast<CCanvasNodeCmdSampleIdentifyConditionStr*>(target);
    if (other == nullptr || !CCanvasNodeCmdSampleIdentifyConditionBase::CopyTo(other)) return false;
    other->m_strings = m_strings;
    return true;
}

bool CCanvasNodeCmdSampleIdentifyConditionStr::IsMatch(
    const std::vector<std::string>& texts) const {
    for (const auto& text : texts)
        if (IsMatch(text) == (GetNeed() == StringNeed_Any)) return GetNeed() == StringNeed_Any;
    return GetNeed() != StringNeed_Any;
}

bool CCanvasNodeCmdSampleIdentifyConditionStr::IsMatch(const std::string& text) const {
    return IsNeedMet(GetNeed(), m_strings,
                     [&text](const std::string& string) { return IsFound(text, string); });
}

// Takes time in proportion to the text whatever the string, which std::string's own search doesn't.
bool CCanvasNodeCmdSampleIdentifyConditionStr::IsFound(std::string_view text,
                                                       std::string_view string) {
    return ::memmem(text.data(), text.size(), string.data(), string.size()) != nullptr;
}

void CCanvasNodeCmdSampleIdentifyConditionStr::OnSetValue() {
    m_strings = SplitDelimitedSet(m_value, ';', '\\');
}

CCanvasNodeCmdSampleIdentifyConditionBase*
CCanvasNodeCmdSampleIdentifyConditionContainAnyStr::CreateObj() {
    return new CCanvasNodeCmdSampleIdentifyConditionContainAnyStr;
}

CCanvasNodeCmdSampleIdentifyConditionBase*
CCanvasNodeCmdSampleIdentifyConditionContainAllStr::CreateObj() {
    return new CCanvasNodeCmdSampleIdentifyConditionContainAllStr;
}

CCanvasNodeCmdSampleIdentifyConditionBase*
CCanvasNodeCmdSampleIdentifyConditionContainNoneStr::CreateObj() {
    return new CCanvasNodeCmdSampleIdentifyConditionContainNoneStr;
}
