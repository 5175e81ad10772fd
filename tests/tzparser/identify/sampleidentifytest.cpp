#include "host/xml/markup.h"
#include "tzparser/identify/canvasnodecmdsampleidentify.h"
#include "tzparser/identify/sampleidentifyfactory.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Condition = CCanvasNodeCmdSampleIdentifyConditionBase;
using Identify = CCanvasNodeCmdSampleIdentify;

enum Kind_e { Any, All, None, Match, NoMatch };

std::unique_ptr<Condition> Make(int type, const std::string& value) {
    auto condition = SampleIdentifyConditionFactory().Create(type);
    EXPECT_TRUE(condition->SetValue(value)) << value;
    return condition;
}

bool LoadText(Identify& identify, const std::string& document) {
    hxJson::Value sample;
    sample["identify"] = document;
    return identify.Load(sample);
}

std::string Item(int index, int type, const std::string& value) {
    return "{\"@Index\":" + std::to_string(index) + ",\"@Type\":" + std::to_string(type) +
           ",\"@Value\":" + hxJson::Value(value).toString() + "}";
}

std::string Document(const std::string& must, const std::string& optional = "") {
    return "{\"ConfigKey\":{\"MustConditions\":{\"Item\":[" + must +
           "]},\"OptionalConditions\":{\"Item\":[" + optional + "]}}}";
}

// "must 1:0 a;b|optional 2:3 x": list, index, type and value of each condition.
std::string Dump(const Identify& identify) {
    std::string dump;
    const auto add = [&dump](const char* list, const Identify::ConditionMap& conditions) {
        for (const auto& [index, condition] : conditions)
            dump += (dump.empty() ? "" : "|") + std::string(list) + " " + std::to_string(index) +
                    ":" + std::to_string(condition->GetType()) + " " + condition->GetValue();
    };
    add("must", identify.GetMustConditions());
    add("optional", identify.GetOptionalConditions());
    return dump;
}

TEST(SampleIdentifyCondition, TextsOfTheRows) {
    struct Row {
        Kind_e kind;
        const char* value;
        std::vector<std::string> texts;
        bool wanted;
    };
    const std::string withNul("a\0b", 3);
    const Row rows[] = {
        {Any, "a;b", {"xbx"}, true},
        {Any, "a;b", {"x", "a"}, true},
        {Any, "a;b", {"x", "y"}, false},
        {Any, "a", {}, false},
        {Any, " ; ; ", {"x"}, false},
        {Any, "", {""}, false},
        {All, "a;b", {"ab"}, true},
        {All, "a;b", {"ab", "a"}, false},
        {All, "a;b", {"a", "b"}, false},
        {All, "a", {}, true},
        {All, " ; ; ", {"x"}, true},
        {All, "a\\;b;c", {"c a;b"}, true},
        {All, "a\\;b;c", {"c a b"}, false},
        {All, "a\\;b;c", {"c a\\;b"}, false},
        {All, " a  b ;", {"a  b"}, true},
        {All, " a  b ;", {"a b"}, false},
        {All, "a\nb", {"xa\nbx"}, true},
        {None, "error", {"ERROR"}, true},
        {None, "error;bad", {"x", "no bad"}, false},
        {None, "error", {}, true},
        {None, " ;", {"x"}, true},
        {None, "b", {withNul}, false},
        {Match, "Version", {"version 1"}, false},
        {Match, "Version \\d", {"x", "Version 1"}, true},
        {Match, "^Version", {"IOS\nVersion 1"}, true},
        {Match, "IOS.Version", {"IOS\nVersion"}, true},
        {Match, "a", {}, false},
        {Match, "", {""}, true},
        {Match, "b$", {withNul}, true},
        {NoMatch, "a", {"x", "A"}, true},
        {NoMatch, "a", {"x", "a"}, false},
        {NoMatch, "a", {}, true},
        {NoMatch, "", {"x"}, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.kind) + " " + row.value);
        const auto condition = Make(row.kind, row.value);
        EXPECT_EQ(condition->IsMatch(row.texts), row.wanted);
        if (row.texts.size() != 1) continue;
        EXPECT_EQ(condition->IsMatch(row.texts[0]), row.wanted);
    }
}

TEST(SampleIdentifyCondition, ASearchThatGivesUpIsNoMatch) {
    const std::string text(3000, 'a');
    EXPECT_FALSE(Make(Match, "(?:(?:a+a*)+)+_")->IsMatch(text));
    EXPECT_TRUE(Make(NoMatch, "(?:(?:a+a*)+)+_")->IsMatch(text));
}

TEST(SampleIdentifyCondition, ValuesThatAKindCannotUseLeaveTheOldOne) {
    for (const int type : {Match, NoMatch}) {
        const auto condition = Make(type, "a");
        EXPECT_FALSE(condition->CheckValue("(a"));
        EXPECT_FALSE(condition->SetValue("(a"));
        EXPECT_FALSE(condition->SetValue("[a-Z]")) << "case counts";
        EXPECT_EQ(condition->GetValue(), "a");
        EXPECT_EQ(condition->IsMatch("a"), type == Match);
    }
}

TEST(SampleIdentifyCondition, WithoutAnExpressionTheConditionHolds) {
    for (const int type : {Match, NoMatch}) {
        const auto prototype = Make(type, "a");
        const std::unique_ptr<Condition> created(prototype->CreateObj());
        EXPECT_TRUE(created->IsMatch("x"));
        EXPECT_TRUE(created->IsMatch(std::vector<std::string>()));
    }
}

TEST(SampleIdentifyCondition, ClonesOfExpressionsHaveAnEmptyValue) {
    const std::unique_ptr<Condition> strings(Make(All, "a;b")->Clone());
    EXPECT_EQ(strings->GetValue(), "a;b");
    EXPECT_FALSE(strings->IsMatch("a"));

    const std::unique_ptr<Condition> match(Make(Match, "a")->Clone());
    EXPECT_EQ(match->GetValue(), "");
    EXPECT_TRUE(match->IsMatch("x")) << "the empty expression fits everywhere";
    const std::unique_ptr<Condition> noMatch(Make(NoMatch, "a")->Clone());
    EXPECT_FALSE(noMatch->IsMatch("x")) << "and so this never holds";
}

TEST(SampleIdentifyCondition, CopiesGoToTheSameKindOnly) {
    for (int from = Any; from <= NoMatch; ++from) {
        const auto source = Make(from, "from");
        EXPECT_FALSE(source->CopyTo(nullptr));
        for (int to = Any; to <= NoMatch; ++to) {
            SCOPED_TRACE(std::to_string(from) + " to " + std::to_string(to));
            const auto target = Make(to, "to");
            EXPECT_EQ(source->CopyTo(target.get()), from == to);
            EXPECT_EQ(target->GetValue(), from == to && from <= None ? "from" : "to");
        }
    }
}

TEST(SampleIdentifyFactory, KnowsTheFiveKinds) {
    const char* const names[] = {"Contain any of the strings", "Contain all of strings",
                                 "Contain none of the strings", "Match the regular expression",
                                 "Doesn't match the regular expression"};
    auto& factory = SampleIdentifyConditionFactory();
    for (int type = Any; type <= NoMatch; ++type) {
        const auto condition = factory.Create(type);
        EXPECT_EQ(condition->GetType(), type);
        EXPECT_STREQ(condition->GetTypeName(), names[type]);
        EXPECT_EQ(condition->IsOptional(), type >= Match);
        EXPECT_FALSE(factory.Register(factory.Create(type))) << "the number is taken";
    }
    EXPECT_EQ(factory.Create(-1), nullptr);
    EXPECT_EQ(factory.Create(5), nullptr);
}

TEST(SampleIdentify, LoadsTheDocumentsOfTheRows) {
    struct Row {
        const char* name;
        std::string document;
        bool loads;
        const char* wanted;
    };
    const Row rows[] = {
        {"missing or empty", "", true, ""},
        {"no ConfigKey", "{}", true, ""},
        {"null ConfigKey", R"({"ConfigKey":null,"MustConditions":{}})", true, ""},
        {"no object", "[1]", true, ""},
        {"no JSON", "{", false, ""},
        {"both lists", Document(Item(2, 0, "b") + "," + Item(-1, 1, "a"), Item(2, 3, "c")), true,
         "must -1:1 a|must 2:0 b|optional 2:3 c"},
        {"the first of an index stays", Document(Item(1, 0, "a") + "," + Item(1, 2, "b")), true,
         "must 1:0 a"},
        {"a skipped item holds no index", Document(Item(1, 3, "(") + "," + Item(1, 0, "b")), true,
         "must 1:0 b"},
        {"unknown kinds", Document(Item(1, 5, "a") + "," + Item(2, -1, "b"), Item(3, 9, "c")), true,
         ""},
        {"numbers as texts", Document(R"({"@Index":"4","@Type":"3","@Value":7})"), true,
         "must 4:3 7"},
        {"empty and odd items", Document("{},5"), true, "must 0:0 "},
        {"Item is an object",
         R"({"ConfigKey":{"MustConditions":{"Item":{"@Index":1,"@Type":0,"@Value":"a"}}}})", true,
         ""},
        {"the list is an array", R"({"ConfigKey":{"OptionalConditions":[{"@Index":1}]}})", true,
         ""},
        {"comments", "// x\n" + Document(Item(1, 0, "a")), true, "must 1:0 a"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Identify identify;
        LoadText(identify, Document(Item(9, 0, "earlier")));
        EXPECT_EQ(LoadText(identify, row.document), row.loads);
        EXPECT_EQ(Dump(identify), row.wanted);
        EXPECT_EQ(identify.IsMatch("x"), identify.GetMustConditions().empty());
    }
}

TEST(SampleIdentify, TheDocumentMayBeAnObjectOrAbsent) {
    hxJson::Value sample;
    Identify identify;
    EXPECT_TRUE(identify.Load(sample));
    EXPECT_TRUE(identify.IsMatch("x"));
    hxJson::Reader().parse(Document(Item(1, 0, "a\"")), sample["identify"]);
    EXPECT_TRUE(identify.Load(sample));
    EXPECT_EQ(Dump(identify), "must 1:0 a\"");
}

TEST(SampleIdentify, EveryConditionOfBothListsHasToHold) {
    Identify identify;
    LoadText(identify, Document(Item(7, 2, "x") + "," + Item(3, 1, "a"), Item(5, 4, "z")));
    const std::pair<const char*, const char*> rows[] = {
        {"a", ""}, {"ax", "must 7"}, {"x", "must 3"}, {"az", "optional 5"}, {"axz", "must 7"}};
    for (const auto& [text, wanted] : rows) {
        SCOPED_TRACE(text);
        const auto failure = identify.FindFailure(text);
        std::string found;
        if (failure.condition != nullptr)
            found = (failure.isOptional ? "optional " : "must ") + std::to_string(failure.index);
        EXPECT_EQ(found, wanted);
        EXPECT_EQ(identify.IsMatch(text), found.empty());
    }
}

TEST(SampleIdentify, SavesOptionalConditionsInThePlaceOfTheirList) {
    struct Row {
        const char* name;
        std::string document;
        const char* saved;
        const char* loadedAgain;
    };
    const Row rows[] = {
        {"none", "", R"({"ConfigKey":{"MustConditions":null,"OptionalConditions":null}})", ""},
        {"must", Document(Item(2, 3, "b") + "," + Item(1, 0, "a;b")),
         R"({"ConfigKey":{"MustConditions":{"Item":[{"@Index":1,"@Type":0,"@Value":"a;b"},)"
         R"({"@Index":2,"@Type":3,"@Value":"b"}]},"OptionalConditions":null}})",
         "must 1:0 a;b|must 2:3 b"},
        {"both", Document(Item(1, 0, "a"), Item(2, 4, "b")),
         R"({"ConfigKey":{"MustConditions":{"Item":[{"@Index":1,"@Type":0,"@Value":"a"}]},)"
         R"("OptionalConditions":[{"@Index":2,"@Type":4,"@Value":"b"}]}})",
         "must 1:0 a"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Identify identify;
        LoadText(identify, row.document);
        hxJson::Value sample;
        EXPECT_TRUE(identify.Save(sample));
        ASSERT_TRUE(sample["identify"].isString());
        hxJson::Value saved;
        ASSERT_TRUE(hxJson::Reader().parse(sample["identify"].asString(), saved));
        EXPECT_EQ(sample["identify"].asString(), saved.toStyledString());
        EXPECT_EQ(saved.toString(), row.saved);
        EXPECT_TRUE(identify.Load(sample));
        EXPECT_EQ(Dump(identify), row.loadedAgain);
    }
}

TEST(SampleIdentify, MarkupHoldsBothLists) {
    Identify identify;
    LoadText(identify, Document(Item(2, 3, "b<") + "," + Item(-1, 0, "a;b"), Item(2, 4, "c\n")));
    CMarkup markup;
    markup.AddElem("sample");
    markup.IntoElem();
    EXPECT_TRUE(identify.SaveToMarkup(markup));
    markup.AddElem("behind");

    CMarkup copy;
    ASSERT_TRUE(copy.SetDoc(markup.GetDoc())) << markup.GetDoc();
    copy.FindElem("sample");
    copy.IntoElem();
    Identify loaded;
    EXPECT_TRUE(loaded.LoadFromMarkup(copy));
    EXPECT_EQ(Dump(loaded), "must -1:0 a;b|must 2:3 b<|optional 2:4 c\n");
    EXPECT_TRUE(copy.FindElem("behind"));
}

TEST(SampleIdentify, MarkupOfTheRows) {
    struct Row {
        const char* name;
        const char* markup;
        bool loads;
        const char* wanted;
    };
    const Row rows[] = {
        {"no ConfigKey", "<x/>", false, ""},
        {"empty", "<ConfigKey/>", true, ""},
        {"lists in the other order, and what isn't sound",
         "<ConfigKey><OptionalConditions><Item Index='1' Type='0' Value='o'/>"
         "</OptionalConditions><MustConditions><Item Index='1' Type='0'/>"
         "<Item Index='1' Type='7' Value='u'/><Item Index='1' Type='3' Value='('/>"
         "<Other/><Item Index='1' Type='1' Value='a'/><Item Index='1' Type='0' Value='b'/>"
         "</MustConditions></ConfigKey>",
         true, "must 1:1 a|optional 1:0 o"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CMarkup markup;
        ASSERT_TRUE(markup.SetDoc(row.markup));
        Identify identify;
        LoadText(identify, Document(Item(9, 0, "earlier")));
        EXPECT_EQ(identify.LoadFromMarkup(markup), row.loads);
        EXPECT_EQ(Dump(identify), row.wanted);
    }
}

TEST(SampleIdentify, SetsAndGetsConditions) {
    Identify identify;
    auto* first = Make(Any, "a").release();
    EXPECT_EQ(identify.SetMustCondition(1, first, false), first);
    EXPECT_EQ(identify.SetMustCondition(1, first, false), first) << "the same one stays";
    EXPECT_EQ(identify.GetMustCondition(1), first);
    EXPECT_EQ(identify.GetOptionalCondition(1), nullptr);

    const auto second = Make(All, "b");
    auto* stored = identify.SetMustCondition(1, second.get(), true);
    EXPECT_NE(stored, second.get());
    EXPECT_EQ(identify.GetMustCondition(1), stored);
    EXPECT_EQ(Dump(identify), "must 1:1 b");

    EXPECT_EQ(identify.SetMustCondition(1, nullptr, false), nullptr);
    const std::unique_ptr<Condition> takenOut(stored);
    EXPECT_EQ(takenOut->GetValue(), "b") << "taken out and not deleted";
    EXPECT_EQ(identify.SetMustCondition(1, nullptr, true), nullptr);
    EXPECT_EQ(Dump(identify), "");
    identify.SetOptionalCondition(-3, Make(None, "c").release(), false);
    EXPECT_EQ(identify.GetOptionalCondition(-3)->GetValue(), "c");
}

// A kind of a host that can't be made anew.
class CSingleCondition : public Condition {
public:
    int GetType() const override { return 77; }
    const char* GetTypeName() override { return "single"; }
    Condition* CreateObj() override { return nullptr; }
    bool IsMatch(const std::vector<std::string>& texts) const override {
        return texts == std::vector<std::string>{"one"};
    }
    bool IsOptional() const override { return false; }
    bool CheckValue(const std::string&) const override { return true; }

protected:
    void OnSetValue() override {}
};

TEST(SampleIdentify, AConditionThatCannotBeClonedLeavesNoTrace) {
    Identify identify;
    CSingleCondition single;
    identify.SetMustCondition(1, Make(Any, "one").release(), false);
    EXPECT_EQ(identify.SetMustCondition(1, &single, true), nullptr);
    EXPECT_EQ(Dump(identify), "must 1:0 one");
    identify.SetOptionalCondition(2, new CSingleCondition, false);
    EXPECT_TRUE(identify.IsMatch("one"));
    EXPECT_FALSE(identify.IsMatch("one more")) << "asked with the whole text as the one element";
    EXPECT_EQ(Dump(Identify(identify)), "must 1:0 one");
}

TEST(SampleIdentify, CopiesAreDeep) {
    Identify identify;
    LoadText(identify, Document(Item(1, 0, "a") + "," + Item(2, 3, "b")));
    Identify copy(identify);
    Identify assigned;
    LoadText(assigned, Document("", Item(5, 0, "c")));
    assigned = identify;
    const auto& itself = assigned;
    assigned = itself;
    identify.GetMustCondition(1)->SetValue("changed");
    EXPECT_EQ(Dump(copy), "must 1:0 a|must 2:3 ") << "an expression's clone has an empty value";
    EXPECT_EQ(Dump(assigned), Dump(copy));
}

TEST(SampleIdentify, SummaryOfTheRows) {
    const std::pair<std::string, const char*> rows[] = {
        {"", ""},
        {Document(Item(4, 1, "a;b")), "Contain all of strings: a;b"},
        {Document("", Item(4, 4, "x")), "Doesn't match the regular expression: x"},
        {Document(Item(1, 0, "a"), Item(1, 0, "b")), "(Advance:)..."},
        {Document(Item(1, 0, "a") + "," + Item(2, 0, "b")), "(Advance:)..."},
    };
    for (const auto& [document, wanted] : rows) {
        Identify identify;
        LoadText(identify, document);
        EXPECT_EQ(identify.GenerateSummaryStr(), wanted);
    }
}

}  // namespace
