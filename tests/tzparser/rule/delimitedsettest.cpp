#include "tzparser/rule/delimitedset.h"

#include <gtest/gtest.h>

TEST(DelimitedSet, SplitsAsTheRowsSay) {
    using Set = std::set<std::string>;
    struct Row {
        const char* text;
        char escape;
        Set wanted;
    };
    const Row rows[] = {
        {"b, a ,b,", '\0', {"a", "b"}},  {"", '\0', {}},       {" , ,", '\0', {}},
        {"a\\,b,c", '\\', {"a,b", "c"}}, {"\\,", '\\', {","}}, {",\\,", '\\', {","}},
        {"a\\,b", '\0', {"a\\", "b"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(SplitDelimitedSet(row.text, ',', row.escape), row.wanted) << row.text;
}
