// The fingerprint of a table and its properties.
#include "host/runtime/tznoncryptographicchecksum.h"

#include "tablevalue.h"

#include <set>
#include <thread>

namespace {

std::string DigestOf(const std::string& bytes) {
    return CTzNonCryptographicChecksum::GetChecksum(bytes.data(), bytes.size());
}

TEST(TableHash, BytesOfTheRows) {
    struct Row {
        const char* name;
        std::set<std::string> hashColumns;
        bool sort;
        std::vector<Cells> cells;
        const char* bytes;  // null: no hash
    };
    const std::vector<Cells> twoRows = {{"2", "1"}, {"a", "b"}};
    const Row rows[] = {
        {"no hash columns", {}, false, twoRows, nullptr},
        {"one column", {"k"}, false, twoRows, "2,\n1,\n"},
        {"all columns in the table's order", {"v", "k"}, false, twoRows, "2,a,\n1,b,\n"},
        {"sorted", {"v", "k"}, true, twoRows, "1,b,\n2,a,\n"},
        {"a name with a dollar", {"$k"}, false, twoRows, "2,\n1,\n"},
        {"dollars anywhere", {"$d$o$l"}, false, {{}, {}, {"x"}}, "x,\n"},
        {"a name that is no column", {"other"}, false, twoRows, ""},
        {"no rows", {"k"}, false, {}, ""},
        {"a short column", {"k", "v"}, false, {{"1", "2"}, {"a"}}, "1,a,\n2,,\n"},
        {"sorted with a missing cell", {"k", "v"}, true, {{"1", "1"}, {"a"}}, "1,,\n1,a,\n"},
        {"only a longer column", {"v"}, false, {{"1"}, {"a", "b"}}, "a,\n"},
        {"bytes above 0x7f sort last", {"k"}, true, {{"\xC3", "z", "a"}}, "a,\nz,\n\xC3,\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TableTree tree({"k", "$v", "do$l"});
        tree.table->SetTableCmpColumns(row.hashColumns);
        tree.table->SetTableCmpSort(row.sort);
        const auto root = tree.Value(row.cells);
        EXPECT_EQ(TableTree::Table(*root).GenerateTableHash(),
                  row.bytes != nullptr ? DigestOf(row.bytes) : "");
        EXPECT_EQ(root->GenerateTableHash(), "") << "not a table";
    }
}

TEST(TableHash, OrderAndBordersOfCells) {
    TableTree tree({"k", "v"});
    tree.table->SetTableCmpColumns({"k", "v"});
    const auto hash = [&tree](bool sort, const std::vector<Cells>& cells) {
        tree.table->SetTableCmpSort(sort);
        return TableTree::Table(*tree.Value(cells)).GenerateTableHash();
    };
    EXPECT_EQ(hash(true, {{"1", "2"}, {"a", "b"}}), hash(true, {{"2", "1"}, {"b", "a"}}));
    EXPECT_NE(hash(false, {{"1", "2"}, {"a", "b"}}), hash(false, {{"2", "1"}, {"b", "a"}}));
    EXPECT_NE(hash(false, {{"a"}, {"b,"}}), hash(false, {{"a,"}, {"b"}}));
    Cells many;
    std::string bytes;
    for (int row = 0; row < 50000; ++row) {
        many.push_back(std::to_string(row));
        bytes += many.back() + ",,\n";
    }
    EXPECT_EQ(hash(false, {many}), DigestOf(bytes)) << "digested in pieces";
}

std::string DumpProperties(const CAppVariableValue& table) {
    std::string dump;
    for (auto* property : table.GetProperties()) {
        EXPECT_EQ(property->GetParentValue(), nullptr);
        const auto text = property->GetVariableValue(0)->text;
        dump += property->GetName() + "=" + (text.size() == 32 ? "hash" : text) + " ";
    }
    return dump;
}

TEST(TableProperties, RowCountAndHash) {
    struct Row {
        const char* name;
        std::size_t rows;
        bool hasHash;
        const char* wanted;
    };
    const Row rows[] = {{"no hash columns", 2, false, "_rowCount=2 _hashCmp= "},
                        {"hash columns", 2, true, "_rowCount=2 _hashCmp=hash "},
                        {"at the limit", 5000, true, "_rowCount=5000 _hashCmp=hash "},
                        {"above the limit", 5001, true, "_rowCount=5001 _hashCmp= "}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TableTree tree({"k"});
        if (row.hasHash) tree.table->SetTableCmpColumns({"k"});
        // The root's limit of 10 doesn't reach the table below it.
        const auto root = tree.Value({Cells(row.rows, "x")});
        auto& table = TableTree::Table(*root);
        table.AddTableHashAndRowCountToProperty();
        EXPECT_EQ(DumpProperties(table), row.wanted);
        const auto& def = dynamic_cast<const CAppVariableTableDef&>(*table.GetVarDef());
        EXPECT_EQ(def.GetTableRowCount(), static_cast<int>(row.rows));
        EXPECT_EQ(def.GetTableHash(), table.GetProperties()[1]->GetVariableValue(0)->text);
        table.AddTableHashAndRowCountToProperty();
        EXPECT_EQ(DumpProperties(table), std::string(row.wanted) + row.wanted);
        root->AddTableHashAndRowCountToProperty();
        EXPECT_TRUE(root->GetProperties().empty());
    }
}

TEST(TableProperties, TheLimitReachesATableThatIsTheRoot) {
    TableTree tree({"k"});
    tree.table->SetTableCmpColumns({"k"});
    CAppVariableValue table(tree.table, true, nullptr, nullptr, 1);
    table.GetChildValues()[0]->GetValues().resize(2);
    table.AddTableHashAndRowCountToProperty();
    EXPECT_EQ(DumpProperties(table), "_rowCount=2 _hashCmp= ");
}

TEST(TableProperties, ADefinitionOfTheCallersOwnIsWritten) {
    TableTree tree({"k"});
    CAppVariableValue root(tree.def.get(), false, nullptr, nullptr, 10);
    TableTree::Fill(root, {{"a"}});
    TableTree::Table(root).AddTableHashAndRowCountToProperty();
    EXPECT_EQ(tree.table->GetTableRowCount(), 1);
}

TEST(TableProperties, ASharedDefinitionIsCopiedByTheFirstWrite) {
    TableTree tree({"k", "v"});
    tree.table->AddKey("k");
    tree.table->SetTableCmpColumns({"k"});
    tree.def->InitBuiltInProperties();
    const std::shared_ptr<const CAppVariableDef> shared = tree.def;
    CAppVariableValue first(shared, nullptr, 10);
    CAppVariableValue second(shared, nullptr, 10);
    TableTree::Fill(first, {{"a", "b"}, {"1", "2"}});
    auto& table = TableTree::Table(first);
    const auto* before = table.GetVarDef();
    std::map<std::string, std::string> keys;
    table.GetVariableValue(1, keys);  // fills the look-up by definition
    table.AddTableHashAndRowCountToProperty();
    EXPECT_EQ(tree.table->GetTableRowCount(), 0);
    EXPECT_EQ(second.GetVarDef(), shared.get());
    EXPECT_NE(first.GetVarDef(), shared.get());
    EXPECT_EQ(before, tree.table);
    const auto& def = dynamic_cast<const CAppVariableTableDef&>(*table.GetVarDef());
    EXPECT_EQ(def.GetTableRowCount(), 2);
    EXPECT_EQ(def.GetParent(), first.GetVarDef());
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(table.GetProperties()[i]->GetVarDef(), def.GetProperties()[i]);
        EXPECT_EQ(table.GetChildValues()[i]->GetVarDef(), def.GetChildAt(i));
    }
    keys.clear();
    EXPECT_EQ(table.GetChildValues()[1]->GetVariableValue(1, keys)->text, "2");
    EXPECT_EQ(keys["k"], "b");
    const auto* own = table.GetVarDef();
    table.AddTableHashAndRowCountToProperty();
    EXPECT_EQ(table.GetVarDef(), own) << "copied once";
    CAppVariableValue copy(&first);
    EXPECT_EQ(DumpProperties(TableTree::Table(copy)), DumpProperties(table));
}

TEST(TableProperties, TreesOfOneDefinitionAreWrittenByManyThreads) {
    TableTree tree({"k"});
    tree.table->SetTableCmpColumns({"k"});
    const std::shared_ptr<const CAppVariableDef> shared = tree.def;
    const auto work = [&shared](const std::string& text) {
        for (std::size_t round = 1; round <= 200; ++round) {
            CAppVariableValue root(shared, nullptr, 10);
            TableTree::Fill(root, {Cells(round, text)});
            auto& table = TableTree::Table(root);
            table.AddTableHashAndRowCountToProperty();
            const auto& def = dynamic_cast<const CAppVariableTableDef&>(*table.GetVarDef());
            ASSERT_EQ(def.GetTableRowCount(), static_cast<int>(round));
            ASSERT_EQ(def.GetTableHash(), table.GenerateTableHash());
        }
    };
    std::thread other(work, "a");
    work("b");
    other.join();
    EXPECT_EQ(tree.table->GetTableRowCount(), 0);
}

}  // namespace
