#pragma once

#include "host/runtime/tzexport.h"
#include "tzparser/identify/dyncreateclass.h"

#include <string>
#include <vector>

// CCanvasNodeCmdSampleIdentifyConditionBase is one condition on a text: that it holds some words,
// or that an expression fits somewhere. A sample of a parser definition fits a text when all its
// conditions hold.
//
//     auto condition = SampleIdentifyConditionFactory().Create(1);   // "Contain all of strings"
//     condition->SetValue("Cisco IOS;Version");
//     condition->IsMatch("Cisco IOS Software, Version 15.2");        // true
//
// A condition is set once and then asked by any number of threads. Its kinds are listed in
// sampleidentifyfactory.cpp.
class TZPARSER_API CCanvasNodeCmdSampleIdentifyConditionBase
    : public IDynCreateClass<CCanvasNodeCmdSampleIdentifyConditionBase> {
public:
    // Copies the value; false for null and for a target of another kind.
    bool CopyTo(CCanvasNodeCmdSampleIdentifyConditionBase* target) override;

    // Whether the condition holds for the texts as a whole; what it says of no texts at all is the
    // kind's matter.
    virtual bool IsMatch(const std::vector<std::string>& texts) const = 0;
    // The same for one text, which is never cut into lines.
    virtual bool IsMatch(const std::string& text) const;
    // Whether forms offer the kind among the optional conditions. It has no bearing on matching.
    virtual bool IsOptional() const = 0;
    // Whether SetValue would take the value.
    virtual bool CheckValue(const std::string& value) const = 0;

    // Replaces the value. False, with the old value kept, for one that the kind can't use.
    bool SetValue(const std::string& value);
    const std::string& GetValue() const { return m_value; }

    // "Contain any of the strings: a;b".
    std::string GenerateSummaryStr();

protected:
    // Takes in m_value, which has just changed.
    virtual void OnSetValue() = 0;

    std::string m_value;
};
