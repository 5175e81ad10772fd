#pragma once

#include "host/json/hxjson.h"
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/rule/appparserulesample.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

inline hxJson::Value ParseJson(const std::string& text) {
    hxJson::Value value;
    hxJson::Reader reader;
    EXPECT_TRUE(reader.parse(text, value, true)) << text << "\n" << reader.getErrorMessage();
    return value;
}

// A sample loaded from its object, "parserules" and other keys, as a text.
inline std::unique_ptr<CAppParseRuleSample> LoadSample(const std::string& json) {
    auto sample = std::make_unique<CAppParseRuleSample>("test");
    EXPECT_TRUE(sample->Load(ParseJson(json)));
    return sample;
}

// A sample of keyword rules, each given by the text of its rule node.
inline std::unique_ptr<CAppParseRuleSample> LoadRules(const std::string& nodes) {
    return LoadSample("{\"parserules\":{\"parserule\":[" + nodes + "]}}");
}

inline CAppParseRuleKeyWord& KeyWordAt(CAppParseRule& parent, std::size_t index) {
    return dynamic_cast<CAppParseRuleKeyWord&>(*parent.Children().at(index));
}
