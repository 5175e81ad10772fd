#include "tzparser/identify/samplechooser.h"
#include "tzparser/identify/sampleidentifyfactory.h"
#include "tzparser/identify/stringfinder.h"

#include <algorithm>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Identify = CCanvasNodeCmdSampleIdentify;

std::string Found(const std::vector<std::string_view>& strings, std::string_view text) {
    const auto found = CStringFinder(strings).Find(text);
    std::string dump;
    for (std::size_t i = 0; i < strings.size(); ++i) dump += found.Has(i) ? '1' : '0';
    return dump;
}

std::string FoundPlainly(const std::vector<std::string_view>& strings, std::string_view text) {
    std::string dump;
    for (const auto string : strings)
        dump += text.find(string) != std::string_view::npos ? '1' : '0';
    return dump;
}

TEST(StringFinder, StringsOfTheRows) {
    using namespace std::string_view_literals;
    struct Row {
        const char* name;
        std::vector<std::string_view> strings;
        std::string_view text;
    };
    const Row rows[] = {
        {"none", {}, "abc"},
        {"empty text", {"a"}, ""},
        {"ends of each other", {"abcd", "bcd", "cd", "d", "abc", "bc"}, "xabcx"},
        {"one inside another", {"abcd", "bc"}, "abce"},
        {"failure to a failure", {"aab", "abc", "bca", "cab"}, "aabcaab"},
        {"overlapping", {"aa", "aaa", "aaaa"}, "aaa"},
        {"all bytes", {"\0\xFF"sv, "\xFF\0"sv, "\x80"sv}, "x\xFF\0y"sv},
        {"the whole text", {"abc", "abcd"}, "abc"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Found(row.strings, row.text), FoundPlainly(row.strings, row.text));
    }
}

std::string RandomText(std::mt19937& random, std::size_t most, int letters) {
    std::string text(random() % (most + 1), ' ');
    for (char& c : text) c = static_cast<char>('a' + static_cast<int>(random() % letters));
    return text;
}

TEST(StringFinder, FindsWhatThePlainSearchFinds) {
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        std::set<std::string> made;
        for (int i = 0; i < 12; ++i) made.insert(RandomText(random, 7, 2 + round % 3));
        made.erase("");
        const std::vector<std::string_view> strings(made.begin(), made.end());
        const auto text = RandomText(random, 40, 2 + round % 3);
        ASSERT_EQ(Found(strings, text), FoundPlainly(strings, text)) << text;
    }
}

// More states than get complete rows: long strings over all bytes, with texts that lead deep into
// them and off again.
TEST(StringFinder, FindsWhatThePlainSearchFindsAmongVeryLongStrings) {
    std::mt19937 random(2);
    std::vector<std::string> made;
    for (int i = 0; i < 40; ++i) {
        auto& string = made.emplace_back(RandomText(random, 600, 2) + std::string(600, 'a'));
        for (int byte = 0; byte < 256; ++byte) string.push_back(static_cast<char>(byte));
        string += made[random() % made.size()].substr(random() % 300, 400);
    }
    std::sort(made.begin(), made.end());
    made.erase(std::unique(made.begin(), made.end()), made.end());
    const std::vector<std::string_view> strings(made.begin(), made.end());
    for (int round = 0; round < 50; ++round) {
        std::string text;
        for (int i = 0; i < 6; ++i) {
            const auto& string = made[random() % made.size()];
            const auto begin = random() % 2 == 0 ? 0 : random() % string.size();
            text += string.substr(begin, random() % 3 == 0 ? random() % 900 : string.npos);
        }
        ASSERT_EQ(Found(strings, text), FoundPlainly(strings, text)) << round;
    }
}

// A text that is read at several places in turn: a string may stand across any two parts of it.
TEST(StringFinder, FindsAStringWhereverItStands) {
    const std::string blank(1201, '.');
    for (const std::string_view string : {"a", "abc", "abcdefghijklmnop"}) {
        const CStringFinder finder({string, "none"});
        for (std::size_t at = 0; at + string.size() <= blank.size(); ++at) {
            auto text = blank;
            text.replace(at, string.size(), string);
            ASSERT_TRUE(finder.Find(text).Has(0)) << string << " at " << at;
            text.erase(at + string.size() - 1, 1);
            ASSERT_FALSE(finder.Find(text).Has(0)) << string << " cut at " << at;
        }
    }
}

// Strings that all end at every byte of a text must not be counted again at each.
TEST(StringFinder, TimeDoesNotGrowWithTheStrings) {
    std::vector<std::string> made;
    for (std::size_t i = 1; i <= 4000; ++i) made.emplace_back(i, 'a');
    const std::vector<std::string_view> strings(made.begin(), made.end());
    const auto found = CStringFinder(strings).Find(std::string(3999, 'a') + "b" +
                                                   std::string(3000000, 'a').replace(5, 1, "b"));
    EXPECT_TRUE(found.Has(3999));
}

TEST(SampleChooser, ChoosesTheFirstThatFits) {
    std::mt19937 random(3);
    const char* const expressions[] = {"a+b", "^c", "bb$", "[^c]{4}", "(a|b)c"};
    int chosen = 0;
    int searchedAtOnce = 0;
    for (int round = 0; round < 600; ++round) {
        std::vector<std::unique_ptr<Identify>> samples;
        std::vector<const Identify*> pointers;
        std::set<std::string> strings;
        for (std::size_t i = random() % 40; i-- > 0;) {
            auto& identify = *samples.emplace_back(std::make_unique<Identify>());
            for (int index = static_cast<int>(random() % 4); index-- > 0;) {
                auto condition =
                    SampleIdentifyConditionFactory().Create(static_cast<int>(random() % 5));
                std::string value;
                for (std::size_t count = random() % 4; count-- > 0;)
                    value += RandomText(random, 4, 3) + ";";
                condition->SetValue(condition->GetType() < 3 ? value : expressions[random() % 5]);
                const auto* onStrings =
                    dynamic_cast<const CCanvasNodeCmdSampleIdentifyConditionStr*>(condition.get());
                if (onStrings != nullptr)
                    strings.insert(onStrings->GetStrings().begin(), onStrings->GetStrings().end());
                if (random() % 2 == 0)
                    identify.SetMustCondition(index, condition.release(), false);
                else
                    identify.SetOptionalCondition(index, condition.release(), false);
            }
            pointers.push_back(&identify);
        }
        const CSampleChooser chooser(pointers);
        searchedAtOnce += strings.size() >= CSampleChooser::FewStrings ? 1 : 0;
        for (int i = 0; i < 5; ++i) {
            const auto text = RandomText(random, 12, 3);
            std::size_t wanted = CSampleChooser::None;
            for (std::size_t at = pointers.size(); at-- > 0;)
                if (pointers[at]->IsMatch(text)) wanted = at;
            chosen += wanted != CSampleChooser::None && wanted != 0 ? 1 : 0;
            ASSERT_EQ(chooser.Choose(text), wanted) << "round " << round << " text " << text;
        }
    }
    EXPECT_GT(chosen, 200) << "the rounds must not be trivial";
    EXPECT_GT(searchedAtOnce, 200);
    EXPECT_LT(searchedAtOnce, 400);
}

}  // namespace
