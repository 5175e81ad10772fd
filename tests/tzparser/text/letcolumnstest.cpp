#include "tzparser/text/letcolumns.h"

#include "support/letdump.h"

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
        switch (Draw(9)) {
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

}  // namespace
