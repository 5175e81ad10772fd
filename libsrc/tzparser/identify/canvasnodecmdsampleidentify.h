#pragma once

#include "host/json/hxjson.h"
#include "tzparser/identify/canvasnodecmdsampleidentifyconditionbase.h"
#include "tzparser/text/lumoserializable.h"

#include <map>
#include <memory>
#include <string>

class CMarkup;

// CCanvasNodeCmdSampleIdentify says which texts a sample of a parser definition fits. It holds two
// lists of conditions, "must" and "optional", and a text fits when every condition of both holds;
// the lists only say in which part of a form a condition stands. Without conditions it fits every
// text.
//
//     CCanvasNodeCmdSampleIdentify identify;
//     identify.Load(sample);                      // sample["identify"] holds the document
//     identify.IsMatch("Cisco IOS Software, ...");
//
// The identify document, a JSON text or the object itself:
//
//     {"ConfigKey": {"MustConditions": {"Item": [{"@Index": 1, "@Type": 1, "@Value": "Cisco"}]},
//                    "OptionalConditions": {"Item": []}}}
//
// Conditions are asked by ascending index, not in the document's order. Any number of threads may
// call const operations at once.
class TZPARSER_API CCanvasNodeCmdSampleIdentify
    : public Lumo::serialization::LumoSerializable<hxJson::Value> {
public:
    using ConditionMap = std::map<int, std::unique_ptr<CCanvasNodeCmdSampleIdentifyConditionBase>>;

    // A condition that a text fails; `condition` is null when all hold. It lives as long as the
    // object it was asked of and isn't changed.
    struct Failure {
        CCanvasNodeCmdSampleIdentifyConditionBase* condition = nullptr;
        int index = 0;
        bool isOptional = false;
    };

    CCanvasNodeCmdSampleIdentify() = default;
    // Deep copies: each condition is cloned, as its kind does it.
    CCanvasNodeCmdSampleIdentify(const CCanvasNodeCmdSampleIdentify& other);
    CCanvasNodeCmdSampleIdentify& operator=(const CCanvasNodeCmdSampleIdentify& other);
    ~CCanvasNodeCmdSampleIdentify() override;

    bool IsMatch(const std::string& text) const;
    // The first condition, must before optional, that the text fails.
    Failure FindFailure(const std::string& text) const;

    // Replace all conditions by those of a document. An item of an unknown kind, or with a value
    // that its kind can't use, is skipped; of two items with one index in a list the first stays.
    // Load takes the sample that has the document under "identify"; a missing or empty one has no
    // conditions. False when its text is no JSON. LoadFromMarkup is false when no element
    // "ConfigKey" is left on the cursor's level; otherwise the cursor stands on that element.
    bool Load(const hxJson::Value& sample) override;
    bool LoadFromMarkup(CMarkup& markup);
    // Write all conditions. Save puts the JSON text under "identify" of the sample, with the
    // optional conditions in the place of their list instead of in its "Item": Load doesn't read
    // them back. SaveToMarkup adds an element "ConfigKey" to the cursor's level, which
    // LoadFromMarkup reads in full. Always true.
    bool Save(hxJson::Value& sample) override;
    bool SaveToMarkup(CMarkup& markup) const;

    // Store a condition under an index and return it as it is stored. The object takes over the
    // condition itself or, with `clone`, stores a clone of it; null when there can't be one, and
    // nothing has changed. What stood under the index is deleted. A null condition takes the entry
    // out without deleting the condition, which is then the caller's, and gives null.
    CCanvasNodeCmdSampleIdentifyConditionBase* SetMustCondition(
        int index, CCanvasNodeCmdSampleIdentifyConditionBase* condition, bool clone);
    CCanvasNodeCmdSampleIdentifyConditionBase* SetOptionalCondition(
        int index, CCanvasNodeCmdSampleIdentifyConditionBase* condition, bool clone);
    // The condition under an index, which stays the object's; null when there is none.
    CCanvasNodeCmdSampleIdentifyConditionBase* GetMustCondition(int index) const;
    CCanvasNodeCmdSampleIdentifyConditionBase* GetOptionalCondition(int index) const;
    const ConditionMap& GetMustConditions() const { return m_mustConditions; }
    const ConditionMap& GetOptionalConditions() const { return m_optionalConditions; }
    bool HasConditions() const {
        return !m_mustConditions.empty() || !m_optionalConditions.empty();
    }

    // The summary of the only condition, "(Advance:)..." for several, empty for none.
    std::string GenerateSummaryStr();

private:
    static CCanvasNodeCmdSampleIdentifyConditionBase* SetCondition(
        ConditionMap& conditions, int index, CCanvasNodeCmdSampleIdentifyConditionBase* condition,
        bool clone);
    static CCanvasNodeCmdSampleIdentifyConditionBase* GetCondition(const ConditionMap& conditions,
                                                                   int index);

    ConditionMap m_mustConditions;
    ConditionMap m_optionalConditions;
};
