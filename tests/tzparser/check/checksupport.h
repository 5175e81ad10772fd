#pragma once

#include "tzparser/check/definitioncheck.h"

#include <gtest/gtest.h>

struct Row {
    const char* name;
    const char* definition;
    const char* wanted;  // "@" stands for the path of the first sample's rules, or as the rows say
};

inline std::string Found(const std::string& definition) {
    std::string text;
    for (const auto& finding : CTzDefinitionCheck::Check(definition))
        text += CTzDefinitionCheck::Format(finding);
    return text;
}

template <std::size_t Count>
void CheckAll(const Row (&rows)[Count], const std::string& before, const std::string& behind,
              const std::string& path = "samples[0].parserRules.parserule") {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string wanted = row.wanted;
        for (auto at = wanted.find('@'); at != std::string::npos; at = wanted.find('@'))
            wanted.replace(at, 1, path);
        EXPECT_EQ(Found(before + row.definition + behind), wanted);
    }
}
