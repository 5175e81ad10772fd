#include "tzparser/engine/tzparser.h"
#include "tzparser/rule/appparserulesample.h"

#include "support/letdump.h"

#include <locale>
#include <thread>

#include <gtest/gtest.h>

namespace {

hxJson::Value ParseJson(const std::string& text) {
    hxJson::Value value;
    hxJson::Reader reader;
    EXPECT_TRUE(reader.parse(text, value, true)) << reader.getErrorMessage();
    return value;
}

// A definition with one sample for each text of keyword rule nodes.
hxJson::Value Definition(const std::vector<std::string>& samples, const std::string& more = "") {
    std::string text;
    int index = 0;
    for (const auto& rules : samples) {
        const auto document = hxJson::Value("{\"ParseRule\":[" + rules + "]}").toString();
        text += (text.empty() ? "" : ",") + ("{\"index\":" + std::to_string(index++)) +
                ",\"parserRules\":" + document + "}";
    }
    return ParseJson("{" + more + "\"samples\":[" + text + "]}");
}

std::string KeyWords(const std::string& kvps) {
    return "{\"Keywords\":{\"KEYWORD\":[" + kvps + "]}}";
}

std::string DumpValues(const std::shared_ptr<CAppVariableValue>& root) {
    std::string dump;
    if (!root) return "null";
    for (auto* child : root->GetChildValues())
        dump += child->GetName() + " " + DumpLets(child->GetValues()) + "\n";
    return dump;
}

TEST(TzParser, ReportsWhyThereAreNoValues) {
    struct Row {
        const char* name;
        hxJson::Value definition;
        bool set;
        const char* error;
    };
    const Row rows[] = {
        {"no definition", hxJson::Value(), false, "cannot find matched parser."},
        {"samples are no list", ParseJson("{\"samples\":{\"a\":1}}"), false,
         "cannot find matched parser."},
        {"no rules", Definition({""}), true, "parse failed when using parser rules. reseason:"},
        {"rules are no JSON", ParseJson("{\"samples\":[{\"parserRules\":\"{\"}]}"), true,
         "parse failed when using parser rules. reseason:"},
        {"a rule with words", Definition({"{\"nistart\":{\"type\":1}}"}), true,
         "parse failed when using parser rules. reseason:variable is empty."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CTzParser parser;
        EXPECT_EQ(parser.SetParser(row.definition), row.set);
        std::string error = "before";
        EXPECT_EQ(parser.Parse("a", error), nullptr);
        EXPECT_EQ(error, row.error);
    }
}

TEST(TzParser, AnExceptionThatLeavesARuleIsAFailureWithItsText) {
    CTzParser parser;
    parser.SetParser(Definition({"{\"operations\":[{\"originalstr\":\"(\",\"isregex\":true}]}"}));
    std::string error;
    EXPECT_EQ(parser.Parse("a", error), nullptr);
    EXPECT_EQ(error.substr(0, 47), "parse failed when using parser rules. reseason:");
    EXPECT_GT(error.size(), 47U);
}

TEST(TzParser, SuccessLeavesTheErrorAsItWas) {
    CTzParser parser;
    ASSERT_TRUE(
        parser.SetParser(Definition({KeyWords("\"x $a\"") + ",{\"nistart\":{\"type\":9}}"})));
    std::string error = "before";
    EXPECT_EQ(DumpValues(parser.Parse("x 1", error)), "a 0:2-3 \"1\"\n")
        << "a rule that failed is absorbed";
    EXPECT_EQ(error, "before");
    EXPECT_EQ(DumpValues(parser.Parse("", error)), "a 0:0-0 \"\"\n");
}

TEST(TzParser, SamplesShareOneTree) {
    CTzParser parser;
    ASSERT_TRUE(parser.SetParser(
        Definition({KeyWords("\"x $ip $int:n\""), KeyWords("\"y $n $double:d\"")})));
    std::string dump;
    for (const auto& child : parser.GetVariableTree()->GetChildren())
        dump += child->GetName() + ":" + std::to_string(child->GetDataType()) + " ";
    EXPECT_EQ(dump, "ip:4 n:1 d:2 ") << "the first sample decides the type of n";
    std::string error;
    EXPECT_EQ(DumpValues(parser.Parse("x 1 2\ny 3 4", error)),
              "ip \nn 1:2-3 \"3\"\nd 1:4-5 \"4\"\n")
        << "the last sample is used";
}

// A sample whose rule finds its own name in the text "I am", on condition of the words.
std::string NamedSample(int index, const std::string& identify) {
    const auto number = std::to_string(index);
    return "{\"index\":" + number + (identify.empty() ? "" : ",\"identify\":" + identify) +
           ",\"parserRules\":{\"parserule\":{\"keywords\":{\"keyword\":[\"$s" + number +
           "(I am|_)\"]}}}}";
}

std::string OnWords(const std::string& words) {
    return R"({"ConfigKey":{"MustConditions":{"Item":[{"@Index":1,"@Type":1,"@Value":")" + words +
           R"("}]}}})";
}

std::string DumpChoice(const SampleChoice& choice) {
    const char* const reasons[] = {"none", "matched", "catch-all", "only"};
    std::string dump = reasons[choice.reason] + (" " + std::to_string(choice.index));
    for (const auto& trial : choice.trials) {
        dump += ", " + std::to_string(trial.index) + " ";
        dump += trial.failed ? "lacks " + trial.failed->value : "fits";
    }
    return dump;
}

TEST(TzParser, ChoosesSamplesInTheOrderOfSequences) {
    const auto broken = hxJson::Value("{").toString();
    struct Row {
        const char* name;
        const char* sequences;
        std::vector<std::pair<int, std::string>> samples;
        const char* choice;
    };
    const Row rows[] = {
        {"the first that fits",
         "[3,1,2]",
         {{1, OnWords("I")}, {2, ""}, {3, OnWords("it")}},
         "matched 1, 3 lacks it, 1 fits"},
        {"no sequences, no trial", "[]", {{1, ""}, {2, ""}, {3, OnWords("it")}}, "catch-all 3"},
        {"sequences are no array", "{\"a\":1}", {{1, ""}, {2, OnWords("it")}}, "catch-all 2"},
        {"a missing sample is skipped",
         "[5,2]",
         {{2, OnWords("it")}, {7, OnWords("he")}},
         "catch-all 7, 2 lacks it"},
        {"the catch-all isn't tested",
         "[7]",
         {{7, OnWords("it")}, {2, OnWords("he")}},
         "catch-all 2, 7 lacks it"},
        {"the catch-all may have failed before",
         "[2,1]",
         {{1, OnWords("it")}, {2, OnWords("he")}},
         "catch-all 2, 2 lacks he, 1 lacks it"},
        {"a single sample that doesn't fit", "[1]", {{1, OnWords("it")}}, "only 1, 1 lacks it"},
        {"a broken identify text drops its sample",
         "[1,2]",
         {{1, broken}, {2, ""}},
         "matched 2, 2 fits"},
        {"of one index the first counts",
         "[1]",
         {{1, OnWords("it")}, {1, ""}, {2, ""}},
         "catch-all 2, 1 lacks it"},
        {"duplicates and texts",
         "[1,\"1\",2]",
         {{1, OnWords("it")}, {2, ""}},
         "matched 2, 1 lacks it, 2 fits"},
        {"nothing loads", "[1]", {{1, broken}}, "none -1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string samples;
        for (const auto& [index, identify] : row.samples)
            samples += (samples.empty() ? "" : ",") + NamedSample(index, identify);
        CTzParser parser;
        parser.SetParser(ParseJson("{\"sequences\":" + std::string(row.sequences) +
                                   ",\"samples\":[" + samples + "]}"));
        const auto choice = parser.Identify("I am");
        EXPECT_EQ(DumpChoice(choice), row.choice);
        std::string error;
        const auto values = parser.Parse("I am", error);
        ASSERT_EQ(values == nullptr, choice.reason == SampleChoice_None);
        if (!values) continue;
        auto* mine = values->GetChildValueByName("s" + std::to_string(choice.index));
        EXPECT_EQ(DumpLets(mine->GetValues()), "0:0-4 \"I am\"");
    }
}

TEST(TzParser, TellsTheConditionThatFails) {
    CTzParser parser;
    parser.SetParser(ParseJson("{\"sequences\":[4],\"samples\":[" +
                               NamedSample(4, R"({"ConfigKey":{"MustConditions":{"Item":[
            {"@Index":2,"@Type":2,"@Value":"a"}]},"OptionalConditions":{"Item":[
            {"@Index":-5,"@Type":3,"@Value":"b+"}]}}})") +
                               "]}"));
    const auto failedOf = [&parser](const char* text) {
        const auto failed = parser.Identify(text).trials.at(0).failed.value();
        return (failed.isOptional ? "optional " : "must ") + std::to_string(failed.index) + " " +
               std::to_string(failed.type) + " " + failed.typeName + ": " + failed.value;
    };
    EXPECT_EQ(failedOf("ab"), "must 2 2 Contain none of the strings: a");
    EXPECT_EQ(failedOf("x"), "optional -5 3 Match the regular expression: b+");
}

TEST(TzParser, ASecondDefinitionIsChosenFromByItself) {
    CTzParser parser;
    parser.SetParser(ParseJson("{\"sequences\":[1],\"samples\":[" + NamedSample(1, OnWords("I")) +
                               "," + NamedSample(2, "") + "]}"));
    EXPECT_EQ(DumpChoice(parser.Identify("I")), "matched 1, 1 fits");
    parser.SetParser(ParseJson("{\"sequences\":[2],\"samples\":[" + NamedSample(2, "") + "]}"));
    EXPECT_EQ(DumpChoice(parser.Identify("I")), "matched 2, 2 fits");
    parser.SetParser(hxJson::Value());
    EXPECT_EQ(DumpChoice(parser.Identify("I")), "none -1");
}

TEST(TzParser, KeysOfRuleDocumentsHaveAnyCaseAndTextsKeepTheirs) {
    CTzParser parser;
    ASSERT_TRUE(
        parser.SetParser(Definition({"{\"XXID\":\"Id\",\"KeyWords\":{\"Keyword\":[\"X "
                                     "$Name\"]},\"KEYWORDS\":{\"keyword\":[\"Y $b\"]}}"})));
    std::string error;
    EXPECT_EQ(DumpValues(parser.Parse("x 1 y 2", error)), "b 0:6-7 \"2\"\nName 0:2-3 \"1\"\n");
    EXPECT_NE(parser.GetSampleParseRuleClone("", error)->GetChildRuleByRuleId("Id"), nullptr);
}

TEST(TzParser, ExtendedAccessIsTheNumberSixteen) {
    const std::pair<const char*, bool> rows[] = {{"\"accessType\":16,", true},
                                                 {"\"accessType\":\"16\",", false},
                                                 {"\"accessType\":1,", false},
                                                 {"", false}};
    for (const auto& [access, extended] : rows) {
        SCOPED_TRACE(access);
        CTzParser parser;
        parser.SetParser(Definition({KeyWords("\"x $a\"")}, access));
        std::string error;
        const auto root = parser.Parse("x 1\n\nb", error);
        std::string dump;
        for (auto* property : root->GetBuiltInProperties())
            dump += property->GetName() + "=" + property->GetVariableValue(0)->text + "\n";
        const char* const wanted =
            "__allPosInfo={\"_original_result\":[{\"parseResult\":{\"parserType\":0,\"variables\":["
            "{\"details\":"
            "[{\"beginCol\":2,\"beginRow\":0,\"endCol\":3,\"endRow\":0}],\"name\":\"$a\","
            "\"valueType\":\"string\"}]}}],"
            "\"error\":[\"\"]}\n"
            "__allOriInfo={\"0\":\"x 1\",\"2\":\"b\"}\n"
            "__allOriText=x 1\n\nb\n\n"
            "__allOriTextLineNums=0,1,2\n"
            "__allExtendLineNums=1,2\n";
        EXPECT_EQ(dump, extended ? wanted : "");
        EXPECT_EQ(parser.GetSampleParseRuleClone("", error)->GetSaveExBuiltInInfo(), extended);
    }
}

TEST(TzParser, ValuesOutliveTheParserAndItsTree) {
    auto parser = std::make_unique<CTzParser>();
    parser->SetParser(Definition({KeyWords("\"x $a\"")}));
    std::string error;
    const auto before = parser->Parse("x 1", error);
    const auto tree = parser->GetVariableTree();
    tree->GetChildAt(0)->SetName("changed");
    const auto after = parser->Parse("x 2", error);
    parser.reset();
    EXPECT_EQ(DumpValues(before), "a 0:2-3 \"1\"\n");
    EXPECT_EQ(after->GetChildValues()[0]->GetName(), "changed")
        << "the host's change of the tree is seen";
}

TEST(TzParser, SetParserReplacesEverything) {
    CTzParser parser;
    ASSERT_TRUE(parser.SetParser(Definition({KeyWords("\"x $a\"")})));
    EXPECT_FALSE(parser.SetParser(hxJson::Value()));
    std::string error;
    EXPECT_EQ(parser.Parse("x 1", error), nullptr);
    EXPECT_NE(parser.GetVariableTree(), nullptr);
    EXPECT_EQ(parser.GetVariableTree()->GetChildCount(), 0U);
}

TEST(TzParser, ACloneRunsByItself) {
    CTzParser parser;
    std::string error;
    EXPECT_EQ(parser.GetSampleParseRuleClone("x", error), nullptr);
    EXPECT_EQ(error, "cannot find matched parser.");
    parser.SetParser(Definition({KeyWords("\"x $a\"")}));
    const auto clone = parser.GetSampleParseRuleClone("x 1", error);
    EXPECT_TRUE(clone->GetVariableValue("a").empty()) << "not yet run";
    ASSERT_TRUE(clone->Parse("x 1", 0, -1, nullptr));
    EXPECT_EQ(DumpLets(clone->GetVariableValue("a")), "0:2-3 \"1\"");
}

TEST(TzParser, ManyThreadsOnOneParser) {
    CTzParser parser;
    ASSERT_TRUE(
        parser.SetParser(Definition({KeyWords("\"x $int:a\",\"mregex[$m]:x (\\\\d+\\\\ny)\"") +
                                     ",{\"nistart\":{\"type\":2,\"pattern\":\"y\"}}"})));
    const auto run = [&parser](int from) {
        for (int i = from; i < from + 200; ++i) {
            std::string error;
            const auto number = std::to_string(i);
            const auto root = parser.Parse("x " + number + "\ny", error);
            ASSERT_NE(root, nullptr) << error;
            EXPECT_EQ(root->GetChildValueByName("a")->GetVariableValue(0)->text, number);
            EXPECT_EQ(root->GetChildValueByName("m")->GetVariableValue(0)->text, number + "\ny");
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) threads.emplace_back(run, i * 1000);
    for (auto& thread : threads) thread.join();
}

// In this locale no byte is a letter, a digit or a blank.
class BareCtype : public std::ctype<char> {
public:
    BareCtype() : std::ctype<char>(MakeTable()) {}

private:
    static const mask* MakeTable() {
        static mask table[table_size] = {};
        return table;
    }
};

TEST(TzParser, TheLocaleOfTheProcessChangesNothing) {
    const auto parse = [] {
        CTzParser parser;
        parser.SetParser(Definition({KeyWords("\"UP $int:a days\",\"regex[$b]:(\\\\w+)$\"")},
                                    "\"accessType\":16,"));
        std::string error;
        return DumpValues(parser.Parse("up 12 days \xc4", error)) + error;
    };
    const auto classic = parse();
    const std::locale before =
        std::locale::global(std::locale(std::locale::classic(), new BareCtype));
    const auto odd = parse();
    std::locale::global(before);
    EXPECT_EQ(odd, classic);
    EXPECT_EQ(classic, "a 0:3-5 \"12\"\nb 0:0-0 \"\"\n");
}

}  // namespace
