#include "tzparser/identify/canvasnodecmdsampleidentify.h"

namespace {

using Condition = CCanvasNodeCmdSampleIdentifyConditionBase;
using ConditionMap = CCanvasNodeCmdSampleIdentify::ConditionMap;

constexpr const char* SummaryOfSeveral = "(Advance:)...";

ConditionMap CloneAll(const ConditionMap& conditions) {
    ConditionMap clones;
    for (const auto& [index, condition] : conditions)
        if (std::unique_ptr<Condition> clone{condition->Clone()})
            clones.emplace(index, std::move(clone));
    return clones;
}

}  // namespace

CCanvasNodeCmdSampleIdentify::CCanvasNodeCmdSampleIdentify(
    const CCanvasNodeCmdSampleIdentify& other)
    : LumoSerializable(other),
      m_mustConditions(CloneAll(other.m_mustConditions)),
      m_optionalConditions(CloneAll(other.m_optionalConditions)) {}

CCanvasNodeCmdSampleIdentify& CCanvasNodeCmdSampleIdentify::operator=(
    const CCanvasNodeCmdSampleIdentify& other) {
    if (this == &other) return *this;
    m_mustConditions = CloneAll(other.m_mustConditions);
    m_optionalConditions = CloneAll(other.m_optionalConditions);
    return *this;
}

CCanvasNodeCmdSampleIdentify::~CCanvasNodeCmdSampleIdentify() = default;

bool CCanvasNodeCmdSampleIdentify::IsMatch(const std::string& text) const {
    return FindFailure(text).condition == nullptr;
}

CCanvasNodeCmdSampleIdentify::Failure CCanvasNodeCmdSampleIdentify::FindFailure(
    const std::string& text) const {
    for (const auto* conditions : {&m_mustConditions, &m_optionalConditions})
        for (const auto& [index, condition] : *conditions)
            if (!condition->IsMatch(text))
                return {condition.get(), index, conditions == &m_optionalConditions};
    return {};
}

Condition* CCanvasNodeCmdSampleIdentify::SetMustCondition(int index, Condition* condition,
                                                          bool clone) {
    return SetCondition(m_mustConditions, index, condition, clone);
}

Condition* CCanvasNodeCmdSampleIdentify::SetOptionalCondition(int index, Condition* condition,
                                                              bool clone) {
    return SetCondition(m_optionalConditions, index, condition, clone);
}

Condition* CCanvasNodeCmdSampleIdentify::GetMustCondition(int index) const {
    return GetCondition(m_mustConditions, index);
}

Condition* CCanvasNodeCmdSampleIdentify::GetOptionalCondition(int index) const {
    return GetCondition(m_optionalConditions, index);
}

Condition* CCanvasNodeCmdSampleIdentify::SetCondition(ConditionMap& conditions, int index,
                                                      Condition* condition, bool clone) {
    if (condition == nullptr) {
        const auto at = conditions.find(index);
        if (at == conditions.end()) return nullptr;
        // Whoever took it out by null has the pointer and owns the condition from here on.
        static_cast<void>(at->second.release());
        conditions.erase(at);
        return nullptr;
    }
    if (clone) condition = condition->Clone();
    if (condition == nullptr) return nullptr;
    auto& stored = conditions[index];
    if (stored.get() != condition) stored.reset(condition);
    return condition;
}

Condition* CCanvasNodeCmdSampleIdentify::GetCondition(const ConditionMap& conditions, int index) {
    const auto at = conditions.find(index);
    return at != conditions.end() ? at->second.get() : nullptr;
}

std::string CCanvasNodeCmdSampleIdentify::GenerateSummaryStr() {
    if (m_mustConditions.size() + m_optionalConditions.size() > 1) return SummaryOfSeveral;
    for (const auto* conditions : {&m_mustConditions, &m_optionalConditions})
        if (!conditions->empty()) return conditions->begin()->second->GenerateSummaryStr();
    return {};
}
