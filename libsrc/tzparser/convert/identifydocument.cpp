#include "tzparser/convert/identifydocument.h"

#include "tzparser/identify/canvasnodecmdsampleidentify.h"
#include "tzparser/identify/identifykeys.h"

namespace {

hxJson::Value Items(const CCanvasNodeCmdSampleIdentify::ConditionMap& conditions) {
    hxJson::Value items(hxJson::arrayValue);
    for (const auto& [index, condition] : conditions) {
        auto& item = items.append(hxJson::Value());
        item[IdentifyKey::Index] = index;
        item[IdentifyKey::Type] = condition->GetType();
        item[IdentifyKey::Value] = condition->GetValue();
    }
    return items;
}

}  // namespace

hxJson::Value IdentifyDocument(const CCanvasNodeCmdSampleIdentify& identify) {
    hxJson::Value document;
    auto& config = document[IdentifyKey::ConfigKey];
    config[IdentifyKey::MustConditions][IdentifyKey::Item] = Items(identify.GetMustConditions());
    config[IdentifyKey::OptionalConditions][IdentifyKey::Item] =
        Items(identify.GetOptionalConditions());
    return document;
}
