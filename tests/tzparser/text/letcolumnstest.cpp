#include "tzparser/text/letcolumns.h"
#include "tzparser/text/letlist.h"

#include "support/letdump.h"

#include <algorithm>
#include <memory>
#include <random>

#include <gtest/gtest.h>

namespace {

// The plain form is the map that the columns stand for; whatever is done, and whether or not a host
// has asked for the maps, both have to hold the same.
class CColumnsTrial {
public:
    explicit CColumnsTrial(unsigned seed) : m_random(seed) {}

    void Step() {
        const auto name = std::string("$") + static_cast<char>('a' + Draw(3));
        const int line = Draw(4) == 0 ? Draw(60) : m_nextLine++ % 60;
        const int begin = Draw(5);
        const std::string text(static_cast<std::size_t>(Draw(3) == 0 ? 0 : Draw(30)), 'x');
        const int end = begin + static_cast<int>(text.size());
        switch (Draw(11)) {
            case 0: {
                const CAppTextLet odd(line - 1, begin, line + Draw(2), end + Draw(2), text);
                m_columns.Column(name).Set(line, odd);
                m_plain[name].insert_or_assign(line, odd);
                break;
            }
            case 1:
                m_columns.Column(name).Erase({line, line + 2, line + 3});
                for (const int erased : {line, line + 2, line + 3}) m_plain[name].erase(erased);
                break;
            case 2:
                if (Draw(4) == 0) EditAsHost(name);
                break;
            case 3:
                if (Draw(3) == 0) m_columns = CLetColumns(m_columns);
                break;
            case 4:
                // Another text comes: its lines are views, whose values are places in it.
                m_source = std::make_shared<const std::string>(std::string(40, 'v'));
                m_columns.ReadFrom(m_source);
                break;
            case 5: {
                if (!m_source) break;
                const auto view = std::string_view(*m_source).substr(3, text.size());
                m_columns.Column(name).Set(line, begin, view);
                m_plain[name].insert_or_assign(
                    line, CAppTextLet(line, begin, line, end, std::string(view)));
                break;
            }
            case 6:
                // A copy that is written leaves this one as it is.
                if (auto copy = m_columns; Draw(2) == 0) copy.Column(name).Set(line, 0, "copy");
                if (const auto* column = m_columns.Find(name); column != nullptr) {
                    auto left = *column;
                    left.LeaveSourceText();
                    ASSERT_EQ(DumpLets(left.Lets()), DumpLets(column->Lets()));
                }
                break;
            default:
                m_columns.Column(name).Set(line, begin, text);
                m_plain[name].insert_or_assign(line, CAppTextLet(line, begin, line, end, text));
        }
    }

    void Compare() const {
        ASSERT_EQ(DumpPositions(m_columns.ToPositions()), DumpPositions(m_plain));
        for (const auto& [name, column] : m_columns.All()) {
            const auto& values = m_plain.at(name);
            ASSERT_EQ(column.Count(), values.size());
            ASSERT_EQ(column.Lines().size(), values.size());
            ASSERT_EQ(column.Lets().size(), values.size());
            std::size_t index = 0;
            for (const auto& [line, let] : values)
                ASSERT_EQ(column.TextAtIndex(index++), let.text) << line;
            for (int line = 0; line < 70; line += 3) CompareLine(column, values, line);
            if (values.empty()) continue;
            ASSERT_EQ(DumpLet(column.Last()), DumpLet(values.rbegin()->second));
        }
    }

private:
    int Draw(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }

    // A host writes the maps that it took, also behind the columns' back.
    void EditAsHost(const std::string& name) {
        auto& positions = m_columns.HostPositions();
        positions.erase(name);
        m_plain.erase(name);
        positions["$host"][Draw(60)] = CAppTextLet("host");
        m_plain["$host"] = positions["$host"];
    }

    static void CompareLine(const CLetColumn& column, const CLetColumn::Map& values, int line) {
        const auto at = values.lower_bound(line);
        ASSERT_EQ(column.FirstLine(line), at == values.end() ? CLetColumn::NoLine : at->first);
        const bool has = at != values.end() && at->first == line;
        ASSERT_EQ(column.Has(line), has);
        ASSERT_EQ(column.HasText(line), has && !at->second.text.empty() && !at->second.IsEmpty());
    }

    std::mt19937 m_random;
    int m_nextLine = 0;
    std::shared_ptr<const std::string> m_source;
    CLetColumns m_columns;
    CLetColumns::Positions m_plain;
};

TEST(LetColumns, HoldWhatMapsWouldHold) {
    for (unsigned seed = 0; seed < 150; ++seed) {
        CColumnsTrial trial(seed);
        for (int step = 0; step < 80; ++step) {
            trial.Step();
            if (step % 5 == 0) trial.Compare();
            if (::testing::Test::HasFatalFailure()) FAIL() << "seed " << seed << " step " << step;
        }
    }
}

TEST(LetColumns, ACopyHasValuesOfItsOwn) {
    CLetColumns columns;
    columns.Column("$a").Set(1, 0, "x");
    auto& host = columns.HostPositions();
    const CLetColumns copy(columns);
    host["$a"][1].text = "y";
    EXPECT_EQ(copy.Find("$a")->Lets().at(0).text, "x");
    EXPECT_EQ(columns.Find("$a")->Lets().at(0).text, "y");
    EXPECT_EQ(copy.Find("$b"), nullptr);
}

TEST(LetColumns, ASlotStandsForItsNameUntilForgotten) {
    CLetColumns columns;
    columns.ColumnAt(1, "$b").Set(1, 0, "x");
    EXPECT_EQ(&columns.ColumnAt(1, "$b"), columns.Find("$b"));
    columns.Clear();
    EXPECT_EQ(columns.Find("$b"), nullptr);
    EXPECT_TRUE(columns.ColumnAt(1, "$b").IsEmpty()) << "another column";
    columns.HostPositions().erase("$b");
    columns.ColumnAt(1, "$b").Set(2, 0, "y");
    EXPECT_EQ(DumpPositions(columns.HostPositions()), "$b 2: 2:0-1 \"y\";\n");
    columns.ForgetSlots();
    const auto* other = &columns.ColumnAt(1, "$c");
    EXPECT_EQ(other, columns.Find("$c"));
}

// The same values as lets, as a column and picked from one.
TEST(LetList, GivesTheSameInEachOfItsForms) {
    CLetColumn column;
    const auto text = std::make_shared<const std::string>("one two");
    column.ReadFrom(text);
    column.Set(1, 0, std::string_view(*text).substr(0, 3));
    column.Set(2, 4, std::string_view(*text).substr(4));
    const auto lets = column.Lets();
    const std::string wanted = DumpLet(lets[0]) + "; " + DumpLet(lets[1]) + "; " + DumpLet(lets[1]);
    CLetList both{column};
    both.Append(CLetList(column, {1}));
    struct Row {
        const char* name;
        CLetList list;
    };
    Row rows[] = {{"lets", CLetList({lets[0], lets[1], lets[1]})},
                  {"picked", CLetList(column, {0, 1, 1})},
                  {"column and picked", std::move(both)}};
    for (auto& [name, list] : rows) {
        SCOPED_TRACE(name);
        ASSERT_EQ(list.Count(), 3U);
        for (std::size_t i = 0; i < 5; ++i)
            EXPECT_EQ(list.Text(i), i < 3 ? lets[std::min<std::size_t>(i, 1)].text : "");
        EXPECT_EQ(DumpLet(list.Copy(2)), DumpLet(lets[1]));
        EXPECT_EQ(DumpLet(list.Copy(3)), DumpLet(CAppTextLet()));
        list.LeaveSourceText();
        EXPECT_EQ(list.SourceText(), nullptr);
        auto copy = list;
        copy.Lets().pop_back();
        EXPECT_EQ(DumpLets(list.TakeLets()), wanted);
        EXPECT_TRUE(list.IsEmpty());
        EXPECT_EQ(copy.Count(), 2U);
    }
    EXPECT_TRUE(CLetList(column, {}).IsEmpty());
    EXPECT_EQ(column.SourceText(), text.get()) << "copies that left the text";
}

TEST(LetColumns, AMarkedLetStaysMarked) {
    CLetColumn column;
    CAppTextLet marked(3, 0, 3, 1, "x");
    marked.SetModifyByOutSide();
    column.Set(3, marked);
    EXPECT_TRUE(column.At(3).IsModifyByOutSide());
    EXPECT_TRUE(column.HasText(3));
}

}  // namespace
