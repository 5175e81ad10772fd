#pragma once

#include "tzparser/identify/canvasnodecmdsampleidentifyconditionbase.h"

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

// How many of a condition's strings a text must hold.
enum StringNeed_e {
    StringNeed_Any,
    StringNeed_All,
    StringNeed_None,
};

// Whether the need is met, asking `holds` string by string and only until the answer is sure.
// Without strings "any" isn't met, the other two are.
template <class Strings, class Holds>
bool IsNeedMet(StringNeed_e need, const Strings& strings, const Holds& holds) {
    for (const auto& string : strings)
        if (holds(string) != (need == StringNeed_All)) return need == StringNeed_Any;
    return need != StringNeed_Any;
}

// CCanvasNodeCmdSampleIdentifyConditionStr is a condition on strings that stand in a text. Its
// value is a list separated by ";", where "\;" is a ";" that belongs to the string; surrounding
// blanks are cut off and empty strings dropped. Any value will do.
//
//     condition.SetValue(R"(a\;b; c)");     // the strings "a;b" and "c"
//
// Strings are searched byte by byte, with case. Over several texts "any" is met by one string in
// one text, "all" asks for every string in every text, "none" forbids every string in every text.
class TZPARSER_API CCanvasNodeCmdSampleIdentifyConditionStr
    : public CCanvasNodeCmdSampleIdentifyConditionBase {
public:
    // Copies the value and the strings.
    bool CopyTo(CCanvasNodeCmdSampleIdentifyConditionBase* target) override;
    bool IsMatch(const std::vector<std::string>& texts) const override;
    bool IsMatch(const std::string& text) const override;
    bool IsOptional() const override { return false; }
    bool CheckValue(const std::string&) const override { return true; }

    virtual StringNeed_e GetNeed() const = 0;
    // None of them is empty.
    const std::set<std::string>& GetStrings() const { return m_strings; }

    // The plain search of one string in one text.
    static bool IsFound(std::string_view text, std::string_view string);

protected:
    void OnSetValue() override;

private:
    std::set<std::string> m_strings;
};

class TZPARSER_API CCanvasNodeCmdSampleIdentifyConditionContainAnyStr
    : public CCanvasNodeCmdSampleIdentifyConditionStr {
public:
    int GetType() const override { return 0; }
    const char* GetTypeName() override { return "Contain any of the strings"; }
    CCanvasNodeCmdSampleIdentifyConditionBase* CreateObj() override;
    StringNeed_e GetNeed() const override { return StringNeed_Any; }
};

class TZPARSER_API CCanvasNodeCmdSampleIdentifyConditionContainAllStr
    : public CCanvasNodeCmdSampleIdentifyConditionStr {
public:
    int GetType() const override { return 1; }
    const char* GetTypeName() override { return "Contain all of strings"; }
    CCanvasNodeCmdSampleIdentifyConditionBase* CreateObj() override;
    StringNeed_e GetNeed() const override { return StringNeed_All; }
};

class TZPARSER_API CCanvasNodeCmdSampleIdentifyConditionContainNoneStr
    : public CCanvasNodeCmdSampleIdentifyConditionStr {
public:
    int GetType() const override { return 2; }
    const char* GetTypeName() override { return "Contain none of the strings"; }
    CCanvasNodeCmdSampleIdentifyConditionBase* CreateObj() override;
    StringNeed_e GetNeed() const override { return StringNeed_None; }
};
