#include "tzparser/engine/valuediff.h"
#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appvariablearraydef.h"
#include "tzparser/variable/appvariabletabledef.h"

#include <memory>

#include <gtest/gtest.h>

namespace {

void Add(CAppVariableDef& parent, CAppVariableDef* child) {
    child->SetParent(&parent);
    ASSERT_TRUE(parent.AddChild(child));
}

// parser: host, table t with the columns name, state, mtu; keyed as asked.
std::unique_ptr<CAppVariableDef> MakeDefinition(const std::set<std::string>& keys) {
    auto root = std::make_unique<CAppVariableDef>(nullptr, "parser", AppDataType_Parsing,
                                                  AppVariableType_Default, "");
    Add(*root,
        new CAppVariableDef(nullptr, "host", AppDataType_String, AppVariableType_Parser, ""));
    auto* table = new CAppVariableTableDef(nullptr, "t", AppVariableType_Parser, "", false);
    Add(*root, table);
    for (const char* name : {"name", "state", "mtu"})
        Add(*table, new CAppVariableArrayDef(nullptr, name, AppVariableType_Parser, ""));
    table->SetTableKeys(keys);
    return root;
}

using Rows = std::vector<std::vector<const char*>>;

// A cell given as null is left out, so that its column is shorter.
std::unique_ptr<CAppVariableValue> MakeValue(CAppVariableDef& def, const char* host,
                                             const Rows& rows) {
    auto root = std::make_unique<CAppVariableValue>(&def, true, nullptr, nullptr, 5000);
    if (host != nullptr)
        root->GetChildValueByName("host")->GetValues().emplace_back(7, 0, 7, 1, host);
    const char* const columns[] = {"t.name", "t.state", "t.mtu"};
    for (std::size_t row = 0; row < rows.size(); ++row)
        for (std::size_t i = 0; i < std::size(columns); ++i)
            if (rows[row][i] != nullptr)
                root->GetChildValueByName(columns[i])
                    ->GetValues()
                    .emplace_back(static_cast<int>(row), 0, static_cast<int>(row), 1, rows[row][i]);
    return root;
}

std::string Dump(const std::vector<ValueChange>& changes) {
    std::string dump;
    for (const auto& change : changes) {
        dump += std::string("~+-").substr(change.kind, 1) + change.variable;
        for (const auto& [name, text] : change.keys)
            dump.append(" ").append(name).append("=").append(text);
        for (const auto& cell : change.cells)
            dump.append(" ")
                .append(cell.column)
                .append(":")
                .append(cell.before.value_or("none"))
                .append(">")
                .append(cell.after.value_or("none"));
        dump += " @" + std::to_string(change.beforeLine) + ">" + std::to_string(change.afterLine) +
                "\n";
    }
    return dump;
}

struct DiffRow {
    const char* name;
    std::set<std::string> keys;
    const char* hostBefore;
    const char* hostAfter;
    Rows before;
    Rows after;
    const char* wanted;
};

const DiffRow DiffRows[] = {
    {"nothing", {"name"}, "a", "a", {{"e0", "up", "9"}}, {{"e0", "up", "9"}}, ""},
    {"a scalar", {}, "a", "b", {}, {}, "~host :a>b @7>7\n"},
    {"a scalar that is gone", {}, "a", nullptr, {}, {}, "~host :a>none @7>-1\n"},
    {"a cell",
     {"name"},
     "a",
     "a",
     {{"e0", "up", "9"}},
     {{"e0", "down", "9"}},
     "~t name=e0 state:up>down @0>0\n"},
    {"rows moved",
     {"name"},
     "a",
     "a",
     {{"e0", "up", "9"}, {"e1", "up", "9"}},
     {{"e1", "up", "9"}, {"e0", "up", "9"}},
     ""},
    {"rows gone and new",
     {"name"},
     "a",
     "a",
     {{"e0", "up", "9"}, {"e1", "up", "9"}},
     {{"e2", "up", "8"}, {"e1", "up", "9"}},
     "-t name=e0 state:up>none mtu:9>none @0>-1\n+t name=e2 state:none>up mtu:none>8 @-1>0\n"},
    {"rows of one key are paired in order",
     {"name"},
     "a",
     "a",
     {{"e0", "up", "1"}, {"e0", "up", "2"}},
     {{"e0", "up", "1"}, {"e0", "up", "3"}, {"e0", "up", "4"}},
     "~t name=e0 mtu:2>3 @1>1\n+t name=e0 state:none>up mtu:none>4 @-1>2\n"},
    {"no key: a changed cell is another row",
     {},
     "a",
     "a",
     {{"e0", "up", "9"}},
     {{"e0", "up", "8"}},
     "-t name=e0 state=up mtu=9 @0>-1\n+t name=e0 state=up mtu=8 @-1>0\n"},
    {"two keys",
     {"name", "mtu"},
     "a",
     "a",
     {{"e0", "up", "9"}},
     {{"e0", "down", "9"}},
     "~t name=e0 mtu=9 state:up>down @0>0\n"},
    {"a short column",
     {"name"},
     "a",
     "a",
     {{"e0", "up", "9"}},
     {{"e0", "up", nullptr}},
     "~t name=e0 mtu:9>none @0>0\n"},
    {"all rows gone",
     {"name"},
     "a",
     "a",
     {{"e0", "up", nullptr}},
     {},
     "-t name=e0 state:up>none @0>-1\n"},
};

TEST(ValueDiff, ChangesOfTheRows) {
    for (const auto& row : DiffRows) {
        SCOPED_TRACE(row.name);
        const auto def = MakeDefinition(row.keys);
        const auto before = MakeValue(*def, row.hostBefore, row.before);
        const auto after = MakeValue(*def, row.hostAfter, row.after);
        EXPECT_EQ(Dump(CValueDiff::Compare(*before, *after)), row.wanted);
    }
}

TEST(ValueDiff, StandByValuesAreNoValues) {
    const auto def = MakeDefinition({});
    const auto before = MakeValue(*def, nullptr, {});
    const auto after = MakeValue(*def, nullptr, {});
    after->GetChildValueByName("host")->GetValues().emplace_back(3, 0, 3, 0, "");
    EXPECT_EQ(Dump(CValueDiff::Compare(*before, *after)), "");
}

TEST(ValueDiff, ManyRowsOfFewKeys) {
    const auto def = MakeDefinition({"name"});
    const Rows rows(20000, {"e0", "up", "9"});
    auto changed = rows;
    changed.back()[1] = "down";
    const auto before = MakeValue(*def, "a", rows);
    const auto after = MakeValue(*def, "a", changed);
    EXPECT_EQ(Dump(CValueDiff::Compare(*before, *after)),
              "~t name=e0 state:up>down @19999>19999\n");
}

}  // namespace
