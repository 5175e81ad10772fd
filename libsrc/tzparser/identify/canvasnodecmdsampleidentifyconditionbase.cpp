#include "tzparser/identify/canvasnodecmdsampleidentifyconditionbase.h"

bool CCanvasNodeCmdSampleIdentifyConditionBase::CopyTo(
    CCanvasNodeCmdSampleIdentifyConditionBase* target) {
    if (target == nullptr || target->GetType() != GetType()) return false;
    target->m_value = m_value;
    return true;
}

bool CCanvasNodeCmdSampleIdentifyConditionBase::IsMatch(const std::string& text) const {
    return IsMatch(std::vector<std::string>{text});
}

bool CCanvasNodeCmdSampleIdentifyConditionBase::SetValue(const std::string& value) {
    if (!CheckValue(value)) return false;
    m_value = value;
    OnSetValue();
    return true;
}

std::string CCanvasNodeCmdSampleIdentifyConditionBase::GenerateSummaryStr() {
    return std::string(GetTypeName()) + ": " + m_value;
}
