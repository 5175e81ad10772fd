#include "tzparser/check/identifycheck.h"

#include "tzparser/check/checkshape.h"
#include "tzparser/identify/canvasnodecmdsampleidentifyconditionstr.h"
#include "tzparser/identify/identifykeys.h"
#include "tzparser/identify/sampleidentifyfactory.h"
#include "tzparser/pattern/appregex.h"

#include <set>

namespace {

// Only an expression has values that it can't use.
void ReportValue(const std::string& value, CCheckReport& report, const std::string& path) {
    std::string reason;
    std::size_t offset = 0;
    if (!CAppRegex::Diagnose(value, reason, offset)) reason = CheckText(CheckMessage_ReasonCase);
    report.Add(path, CheckMessage_ConditionBroken, {reason}, value, offset);
}

void CheckStrings(const CCanvasNodeCmdSampleIdentifyConditionBase& condition, CCheckReport& report,
                  const std::string& path) {
    const auto* onStrings =
        dynamic_cast<const CCanvasNodeCmdSampleIdentifyConditionStr*>(&condition);
    if (onStrings == nullptr || !onStrings->GetStrings().empty()) return;
    report.Add(path, onStrings->GetNeed() == StringNeed_Any ? CheckMessage_ConditionNeverHolds
                                                            : CheckMessage_ConditionAlwaysHolds);
}

void CheckItem(const hxJson::Value& item, std::set<int>& indexes, CCheckReport& report,
               const std::string& path) {
    const int type = item[IdentifyKey::Type].asInt();
    const auto condition = SampleIdentifyConditionFactory().Create(type);
    if (!condition) {
        report.Add(path, CheckMessage_ConditionUnknown, {std::to_string(type)});
        return;
    }
    const auto value = item[IdentifyKey::Value].asString();
    if (!condition->SetValue(value)) {
        ReportValue(value, report, path);
        return;
    }
    const int index = item[IdentifyKey::Index].asInt();
    if (indexes.insert(index).second)
        CheckStrings(*condition, report, path);
    else
        report.Add(path, CheckMessage_ConditionIndexTaken, {std::to_string(index)});
}

void CheckList(const hxJson::Value& config, const char* key, CCheckReport& report,
               const std::string& configPath) {
    const auto path = configPath + "." + key;
    const auto itemsPath = path + "." + IdentifyKey::Item;
    if (!HasShape(config[key], CheckShape_Object, report, path)) return;
    const auto& items = config[key][IdentifyKey::Item];
    if (!HasShape(items, CheckShape_Array, report, itemsPath)) return;
    std::set<int> indexes;
    for (std::size_t i = 0; i < items.size(); ++i)
        CheckItem(items[i], indexes, report, itemsPath + "[" + std::to_string(i) + "]");
}

}  // namespace

bool CheckIdentify(const hxJson::Value& sample, CCheckReport& report, const std::string& path) {
    const auto identifyPath = path + "." + IdentifyKey::Identify;
    const auto text = sample[IdentifyKey::Identify].asString();
    hxJson::Value document;
    hxJson::Reader reader;
    if (!reader.parse(text, document, true)) {
        report.AddJsonError(identifyPath, CheckMessage_IdentifyNotJson, reader, text);
        return false;
    }
    if (!HasShape(document, CheckShape_Object, report, identifyPath) || document.empty())
        return true;
    const hxJson::Value& config = document[IdentifyKey::ConfigKey];
    const auto configPath = identifyPath + "." + IdentifyKey::ConfigKey;
    if (config.isNull()) report.Add(identifyPath, CheckMessage_NoConfigKey);
    if (!HasShape(config, CheckShape_Object, report, configPath)) return true;
    CheckList(config, IdentifyKey::MustConditions, report, configPath);
    CheckList(config, IdentifyKey::OptionalConditions, report, configPath);
    return true;
}
