// Comparing results.
#include "tablevalue.h"

#include <random>

namespace {

// The comparison of two tables as it is defined, by the one of cells, without any index.
int CompareLiterally(CAppVariableValue& table, CAppVariableValue& other) {
    const auto mine = table.GetChildValues();
    const auto theirs = other.GetChildValues();
    if (mine.size() != theirs.size()) return -1;
    if (mine.empty()) return 0;
    const int rows = mine[0]->GetValueCount();
    if (rows != theirs[0]->GetValueCount()) return 1;
    for (int row = 0; row < rows; ++row)
        for (std::size_t column = 0; column < mine.size(); ++column)
            if (const int answer = mine[column]->GetCompareValue(theirs[column], row))
                return answer;
    return 0;
}

struct Row {
    const char* name;
    std::vector<std::string> keys;
    std::vector<Cells> mine;
    std::vector<Cells> theirs;
    int wanted;
};

TEST(CompareValue, TablesOfTheRows) {
    const Row rows[] = {
        {"equal", {}, {{"1", "2"}, {"a", "b"}}, {{"1", "2"}, {"a", "b"}}, 0},
        {"no rows", {}, {}, {}, 0},
        {"another number of rows", {"k"}, {{"1"}, {"a"}}, {{"1", "2"}, {"a", "b"}}, 1},
        {"rows in another order", {"k"}, {{"1", "2"}, {"a", "b"}}, {{"2", "1"}, {"b", "a"}}, 0},
        {"the same without keys", {}, {{"1", "2"}, {"a", "b"}}, {{"2", "1"}, {"b", "a"}}, 0},
        {"a changed cell", {"k"}, {{"1", "2"}, {"a", "b"}}, {{"2", "1"}, {"x", "a"}}, 1},
        {"without keys no partner for it",
         {},
         {{"1", "2"}, {"a", "b"}},
         {{"1", "2"}, {"a", "x"}},
         1},
        {"a changed key", {"k"}, {{"1"}, {"a"}}, {{"3"}, {"a"}}, 1},
        {"the first of rows with one key",
         {"k"},
         {{"1", "1"}, {"a", "a"}},
         {{"1", "1"}, {"a", "b"}},
         0},
        {"the second of rows with one key",
         {"k"},
         {{"1", "1"}, {"a", "b"}},
         {{"1", "1"}, {"a", "b"}},
         1},
        {"rows only theirs go unseen",
         {"k"},
         {{"1", "1"}, {"a", "a"}},
         {{"1", "2"}, {"a", "b"}},
         0},
        {"both cells missing", {"k"}, {{"1", "2"}, {"a"}}, {{"1", "2"}, {"a"}}, 0},
        {"one cell missing", {"k"}, {{"1", "2"}, {"a", ""}}, {{"1", "2"}, {"a"}}, 1},
        {"a short key column of theirs", {"v"}, {{"1", "2"}, {"a", "b"}}, {{"1", "2"}, {"a"}}, 1},
        {"a short key column of ours is an empty text",
         {"v"},
         {{"1", "2"}, {"a"}},
         {{"1", "2"}, {"a", ""}},
         1},
        {"the first columns count", {"k"}, {{}, {"a"}}, {{}, {"b"}}, 0},
        {"a key named with a dollar is no column of theirs",
         {"$k"},
         {{"1"}, {"a"}},
         {{"1"}, {"a"}},
         1},
        {"no key is a column", {"other"}, {{"1", "2"}, {"a", "a"}}, {{"1", "1"}, {"a", "a"}}, 1},
        {"bytes", {"k"}, {{std::string("a\0b", 3)}, {"a"}}, {{std::string("a\0c", 3)}, {"a"}}, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TableTree tree({"k", "v"});
        for (const auto& key : row.keys) tree.table->AddKey(key);
        const auto mine = tree.Value(row.mine);
        const auto theirs = tree.Value(row.theirs);
        auto& table = TableTree::Table(*mine);
        auto& other = TableTree::Table(*theirs);
        EXPECT_EQ(table.GetCompareValue(&other, 0), row.wanted);
        EXPECT_EQ(CompareLiterally(table, other), row.wanted);
    }
}

TEST(CompareValue, TheIndexAnswersAsTheSearchDoes) {
    std::mt19937 random(7);
    const auto cells = [&random](std::size_t most) {
        Cells column(random() % (most + 1));
        for (auto& cell : column) cell = std::string(1, static_cast<char>('a' + random() % 2));
        return column;
    };
    int counts[3] = {};
    for (int round = 0; round < 3000; ++round) {
        TableTree tree({"a", "b", "c"});
        for (const char* key : {"a", "$b", "c", "c"})
            if (random() % 3 == 0) tree.table->AddKey(key);
        const std::vector<Cells> columns = {cells(4), cells(4), cells(4)};
        auto changed = columns;
        if (random() % 2 == 0) changed[random() % 3] = cells(4);
        const auto mine = tree.Value(columns);
        const auto theirs = tree.Value(changed);
        auto& table = TableTree::Table(*mine);
        auto& other = TableTree::Table(*theirs);
        const int wanted = CompareLiterally(table, other);
        ASSERT_EQ(table.GetCompareValue(&other, 0), wanted) << round;
        ++counts[wanted + 1];
    }
    EXPECT_GT(counts[1], 100);
    EXPECT_GT(counts[2], 100);
}

TEST(CompareValue, WhatCannotBeCompared) {
    TableTree tree({"k", "v"});
    const auto root = tree.Value({{"1"}, {"a"}});
    auto& table = TableTree::Table(*root);
    EXPECT_EQ(table.GetCompareValue(nullptr, 0), -1);
    EXPECT_EQ(table.GetCompareValue(root.get(), 0), -1) << "a table and a root";
    const auto wider = TableTree({"k", "v", "w"}).Value({{"1"}, {"a"}, {"x"}});
    EXPECT_EQ(table.GetCompareValue(&TableTree::Table(*wider), 0), -1);
    EXPECT_EQ(TableTree::Table(*wider).GetCompareValue(&table, 0), -1);
    const auto swapped = TableTree({"v", "k"}).Value({{"a"}, {"1"}});
    EXPECT_EQ(table.GetCompareValue(&TableTree::Table(*swapped), 0), -1)
        << "columns are compared by position";
    const auto noted = tree.Value({{"1"}, {"a"}});
    TableTree::Table(*noted).AddTableHashAndRowCountToProperty();
    EXPECT_EQ(table.GetCompareValue(&TableTree::Table(*noted), 0), -1)
        << "the row count is part of the definition";
    const auto empty = TableTree({}).Value({});
    EXPECT_EQ(TableTree::Table(*empty).GetCompareValue(&TableTree::Table(*empty), 0), 0);
}

TEST(CompareValue, PlainVariablesByTheirFirstValue) {
    CAppVariableDef def(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "");
    AddDef(def, new CAppVariableDef(nullptr, "x", AppDataType_Int, AppVariableType_Parser, ""));
    const auto value = [&def](const Cells& cells) {
        auto root = std::make_unique<CAppVariableValue>(&def, true, nullptr, nullptr, 10);
        for (const auto& cell : cells)
            root->GetChildValueByName("x")->GetValues().emplace_back(cell);
        return root;
    };
    struct Pair {
        const char* name;
        Cells mine;
        Cells theirs;
        int wanted;
    };
    const Pair pairs[] = {{"none", {}, {}, 0},
                          {"one", {"1"}, {}, 1},
                          {"equal", {"1", "2"}, {"1", "3"}, 0},
                          {"equal numbers, other texts", {"1"}, {"01"}, 1}};
    for (const auto& pair : pairs) {
        const auto mine = value(pair.mine);
        const auto theirs = value(pair.theirs);
        for (const int row : {0, 5, -1})
            EXPECT_EQ(mine->GetChildValueByName("x")->GetCompareValue(
                          theirs->GetChildValueByName("x"), row),
                      pair.wanted)
                << pair.name << row;
    }
}

TEST(CompareValue, LargeTablesTakeNoSquareOfTheirRows) {
    TableTree tree({"k", "v"});
    tree.table->AddKey("k");
    std::vector<Cells> cells(2);
    for (int row = 0; row < 100000; ++row) {
        cells[0].push_back(std::to_string(row));
        cells[1].push_back("value");
    }
    const auto mine = tree.Value(cells);
    std::reverse(cells[0].begin(), cells[0].end());
    const auto theirs = tree.Value(cells);
    EXPECT_EQ(TableTree::Table(*mine).GetCompareValue(&TableTree::Table(*theirs), 0), 0);
}

// A copied definition has no tables in tables: what is added to a table becomes a column.
TEST(CompareValue, TablesInTables) {
    CAppVariableTableDef def(nullptr, "t", AppVariableType_Parser, "", false);
    auto* node = &def;
    for (int depth = 0; depth < 500; ++depth) {
        AddColumnDef(*node, "c", AppDataType_String);
        node->AddKey("c");
        auto* table = new CAppVariableTableDef(node, "t", AppVariableType_Parser, "", false);
        ASSERT_TRUE(node->AddChildFront(table));
        node = table;
    }
    AddColumnDef(*node, "c", AppDataType_String);
    const auto make = [&def](const char* last) {
        auto value = std::make_unique<CAppVariableValue>(&def, false, nullptr, nullptr, 10);
        for (auto* at = value.get();; at = at->GetChildValues().front()) {
            const bool isLast = at->GetChildValues().size() == 1;
            at->GetChildValues().back()->GetValues().emplace_back(isLast ? last : "x");
            if (isLast) return value;
        }
    };
    const auto mine = make("x");
    EXPECT_EQ(mine->GetCompareValue(make("x").get(), 0), 0);
    EXPECT_EQ(mine->GetCompareValue(make("y").get(), 0), 1);
}

}  // namespace
