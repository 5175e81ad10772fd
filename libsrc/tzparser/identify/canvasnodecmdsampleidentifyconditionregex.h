#pragma once

#include "tzparser/identify/canvasnodecmdsampleidentifyconditionbase.h"
#include "tzparser/pattern/appregex.h"

#include <memory>
#include <string>
#include <vector>

// CCanvasNodeCmdSampleIdentifyConditionRegex is a condition on an expression that fits somewhere in
// a text. Its value is one regular expression in Perl syntax, with case (unlike those of rules);
// one that doesn't compile isn't taken.
//
//     condition.SetValue("Version \\d+");       // true
//     condition.IsMatch("version 1");           // false for "Match ...": case counts
//
// The whole text is searched at once, so "^" and "$" fit at the ends of every line and "." takes
// line feeds. A search that gives up counts as no match. A condition without a value holds always.
class TZPARSER_API CCanvasNodeCmdSampleIdentifyConditionRegex
    : public CCanvasNodeCmdSampleIdentifyConditionBase {
public:
    // Makes the target compile the value that it has; the value of this one isn't copied. So a
    // clone has an empty value, whose expression fits every text. Intended, unlike the kinds with
    // strings; no parse clones conditions.
    bool CopyTo(CCanvasNodeCmdSampleIdentifyConditionBase* target) override;
    bool IsMatch(const std::vector<std::string>& texts) const override;
    bool IsMatch(const std::string& text) const override;
    bool IsOptional() const override { return true; }
    bool CheckValue(const std::string& value) const override;

protected:
    void OnSetValue() override;
    // Whether the condition is one for a match, or against it.
    virtual bool WantsMatch() const = 0;

private:
    bool IsFound(const std::string& text) const;

    std::unique_ptr<const CAppRegex> m_regex;  // null when m_value doesn't compile or was never set
};

class TZPARSER_API CCanvasNodeCmdSampleIdentifyConditionContainRegex
    : public CCanvasNodeCmdSampleIdentifyConditionRegex {
public:
    int GetType() const override { return 3; }
    const char* GetTypeName() override { return "Match the regular expression"; }
    CCanvasNodeCmdSampleIdentifyConditionBase* CreateObj() override;

protected:
    bool WantsMatch() const override { return true; }
};

class TZPARSER_API CCanvasNodeCmdSampleIdentifyConditionDonotContainRegex
    : public CCanvasNodeCmdSampleIdentifyConditionRegex {
public:
    int GetType() const override { return 4; }
    const char* GetTypeName() override { return "Doesn't match the regular expression"; }
    CCanvasNodeCmdSampleIdentifyConditionBase* CreateObj() override;

protected:
    bool WantsMatch() const override { return false; }
};
