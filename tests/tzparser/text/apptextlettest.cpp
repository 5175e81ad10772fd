#include "host/json/hxjson.h"
#include "tzparser/text/apptextlet.h"

#include <utility>

#include <gtest/gtest.h>

namespace {

std::string Dump(const CAppTextLet& let) {
    std::string dump = std::to_string(let.beginRow) + ":" + std::to_string(let.beginCol) + "-" +
                       std::to_string(let.endRow) + ":" + std::to_string(let.endCol) + " \"" +
                       let.text + "\"";
    for (const int line : let.lines) dump += " " + std::to_string(line);
    return dump;
}

CAppTextLet Parse(const std::string& json) {
    hxJson::Value value;
    EXPECT_TRUE(hxJson::Reader().parse(json, value, true));
    CAppTextLet let(9, 9, 9, 9, "old");
    let.lines = {1, 2};
    EXPECT_TRUE(let.Load(value));
    return let;
}

TEST(CAppTextLet, ConstructorsSetThePositions) {
    EXPECT_EQ(Dump(CAppTextLet()), "0:0-0:0 \"\"");
    EXPECT_EQ(Dump(CAppTextLet("ab")), "0:0-0:0 \"ab\"");
    EXPECT_EQ(Dump(CAppTextLet(1, 2, 3, 4, "ab")), "1:2-3:4 \"ab\"");
}

TEST(CAppTextLet, EmptinessIsThatOfTheSpan) {
    EXPECT_TRUE(CAppTextLet(3, 5, 3, 5, "x").IsEmpty());
    EXPECT_FALSE(CAppTextLet(3, 5, 3, 9, "").IsEmpty());
    EXPECT_FALSE(CAppTextLet(3, 5, 4, 5, "").IsEmpty());
}

TEST(CAppTextLet, AdjustPutsTheSpanInReadingOrder) {
    const struct {
        const char* name;
        CAppTextLet let;
        const char* wanted;
        bool changed;
    } rows[] = {
        {"rows", {4, 2, 2, 9, "t"}, "2:9-4:2 \"t\"", true},
        {"columns of one row", {4, 9, 4, 2, "t"}, "4:2-4:9 \"t\"", true},
        {"columns of two rows stay", {2, 9, 4, 2, "t"}, "2:9-4:2 \"t\"", false},
        {"empty", {4, 2, 4, 2, "t"}, "4:2-4:2 \"t\"", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CAppTextLet let = row.let;
        EXPECT_EQ(let.Adjust(), row.changed);
        EXPECT_EQ(Dump(let), row.wanted);
        EXPECT_FALSE(let.Adjust());
    }
}

TEST(CAppTextLet, CopiesAndMovesCarryEveryFieldAndLeaveAnEmptySource) {
    CAppTextLet let(1, 2, 3, 4, std::string(100, 'x'));
    let.lines = {7};
    let.SetModifyByOutSide();
    CAppTextLet copy = let;
    CAppTextLet moved = std::move(let);
    EXPECT_TRUE(let.text.empty() && let.lines.empty());
    EXPECT_TRUE(copy.IsModifyByOutSide() && moved.IsModifyByOutSide());
    EXPECT_EQ(Dump(copy), Dump(moved));
    copy = CAppTextLet();
    EXPECT_FALSE(copy.IsModifyByOutSide());
}

TEST(CAppTextLet, SavesItsMembersAndTheLinesOnlyWhenThereAreAny) {
    CAppTextLet let(1, -1, 1, -1, "a\"b");
    hxJson::Value value;
    EXPECT_TRUE(let.Save(value));
    EXPECT_EQ(value.toString(false),
              R"({"beginCol":-1,"beginRow":1,"endCol":-1,"endRow":1,"text":"a\"b"})");
    let.lines = {3, 4};
    EXPECT_EQ(let.SaveToJson(false).toString(false),
              R"({"beginCol":-1,"beginRow":1,"endCol":-1,"endRow":1,"lines":[3,4]})");
    CAppTextLet loaded;
    loaded.Load(let.SaveToJson(true));
    EXPECT_EQ(Dump(loaded), "1:-1-1:-1 \"a\"b\" 3 4");
}

TEST(CAppTextLet, LoadReplacesEverythingAndTakesWhatItFinds) {
    const struct {
        const char* name;
        const char* json;
        const char* wanted;
    } rows[] = {
        {"nothing", "{}", "0:0-0:0 \"\""},
        {"not an object", "[1,2]", "0:0-0:0 \"\""},
        {"lines absent", R"({"text":"t","endCol":1})", "0:0-0:1 \"t\""},
        {"wrong types", R"({"text":5,"endCol":"7","lines":[1,"2",null]})", "0:0-0:7 \"5\" 1 2 0"},
        {"lines that are no list", R"({"lines":"12"})", "0:0-0:0 \"\""},
        {"out of range", R"({"beginRow":99999999999})", "2147483647:0-0:0 \"\""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Dump(Parse(row.json)), row.wanted);
    }
}

}  // namespace
