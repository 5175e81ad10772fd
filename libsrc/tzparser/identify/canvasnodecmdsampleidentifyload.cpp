// The identify document in its two forms, JSON and markup.
#include "host/xml/markup.h"
#include "tzparser/identify/canvasnodecmdsampleidentify.h"
#include "tzparser/identify/identifykeys.h"
#include "tzparser/identify/sampleidentifyfactory.h"

namespace {

using ConditionMap = CCanvasNodeCmdSampleIdentify::ConditionMap;

void LoadItem(int index, int type, const std::string& value, ConditionMap& conditions) {
    auto condition = SampleIdentifyConditionFactory().Create(type);
    if (condition && condition->SetValue(value)) conditions.emplace(index, std::move(condition));
}

void LoadItems(const hxJson::Value& list, ConditionMap& conditions) {
    const auto& items = list[IdentifyKey::Item];
    if (!items.isArray()) return;
    for (const auto& item : items)
        LoadItem(item[IdentifyKey::Index].asInt(), item[IdentifyKey::Type].asInt(),
                 item[IdentifyKey::Value].asString(), conditions);
}

void SaveItems(const ConditionMap& conditions, hxJson::Value& items) {
    for (const auto& [index, condition] : conditions) {
        hxJson::Value item;
        item[IdentifyKey::Index] = index;
        item[IdentifyKey::Type] = condition->GetType();
        item[IdentifyKey::Value] = condition->GetValue();
        items.append(std::move(item));
    }
}

void LoadItems(CMarkup& markup, const char* list, ConditionMap& conditions) {
    markup.x_SetPos(markup.GetParentPos(), nullptr, nullptr);
    if (!markup.FindElem(list)) return;
    markup.IntoElem();
    while (markup.FindElem(IdentifyKey::Item)) {
        int index = 0;
        int type = 0;
        std::string value;
        if (markup.GetAttrib(IdentifyKey::IndexAttribute, index) &&
            markup.GetAttrib(IdentifyKey::TypeAttribute, type) &&
            markup.GetAttrib(IdentifyKey::ValueAttribute, value))
            LoadItem(index, type, value, conditions);
    }
    markup.OutOfElem();
}

void SaveItems(const ConditionMap& conditions, CMarkup& markup, const char* list) {
    markup.AddElem(list);
    markup.IntoElem();
    for (const auto& [index, condition] : conditions) {
        markup.AddElem(IdentifyKey::Item);
        markup.SetAttrib(IdentifyKey::IndexAttribute, index);
        markup.SetAttrib(IdentifyKey::TypeAttribute, condition->GetType());
        markup.SetAttrib(IdentifyKey::ValueAttribute, condition->GetValue());
    }
    markup.OutOfElem();
}

}  // namespace

bool CCanvasNodeCmdSampleIdentify::Load(const hxJson::Value& sample) {
    m_mustConditions.clear();
    m_optionalConditions.clear();
    hxJson::Value document;
    hxJson::Reader reader;
    if (!reader.parse(sample[IdentifyKey::Identify].asString(), document, true)) return false;
    const hxJson::Value& config = document[IdentifyKey::ConfigKey];
    LoadItems(config[IdentifyKey::MustConditions], m_mustConditions);
    LoadItems(config[IdentifyKey::OptionalConditions], m_optionalConditions);
    return true;
}

// The two lists differ on purpose: readers of stored definitions know the optional conditions as
// elements of the list's own value. Appended to it they leave no place for an "Item" beside them.
bool CCanvasNodeCmdSampleIdentify::Save(hxJson::Value& sample) {
    hxJson::Value document;
    auto& config = document[IdentifyKey::ConfigKey];
    auto& must = config[IdentifyKey::MustConditions];
    if (!m_mustConditions.empty()) SaveItems(m_mustConditions, must[IdentifyKey::Item]);
    SaveItems(m_optionalConditions, config[IdentifyKey::OptionalConditions]);
    sample[IdentifyKey::Identify] = document.toStyledString();
    return true;
}

bool CCanvasNodeCmdSampleIdentify::LoadFromMarkup(CMarkup& markup) {
    m_mustConditions.clear();
    m_optionalConditions.clear();
    if (!markup.FindElem(IdentifyKey::ConfigKey)) return false;
    markup.IntoElem();
    LoadItems(markup, IdentifyKey::MustConditions, m_mustConditions);
    LoadItems(markup, IdentifyKey::OptionalConditions, m_optionalConditions);
    markup.OutOfElem();
    return true;
}

bool CCanvasNodeCmdSampleIdentify::SaveToMarkup(CMarkup& markup) const {
    markup.AddElem(IdentifyKey::ConfigKey);
    markup.IntoElem();
    SaveItems(m_mustConditions, markup, IdentifyKey::MustConditions);
    SaveItems(m_optionalConditions, markup, IdentifyKey::OptionalConditions);
    markup.OutOfElem();
    return true;
}
