// The table rule against the plain form of its steps, over generated tables as roughly aligned as
// devices print them, and worse.
#include "support/tablecompare.h"

#include <random>

#include <gtest/gtest.h>

namespace {

constexpr int Rounds = 20000;

class CTableMaker {
public:
    explicit CTableMaker(unsigned seed) : m_random(seed) {}

    // The bytes of ReadPlainTable.
    std::string Make() {
        const int columns = 1 + Draw(5);
        std::vector<int> places;
        std::string headers;
        std::string line(static_cast<std::size_t>(Draw(4) == 0 ? Draw(4) : 0), ' ');
        for (int i = 0; i < columns; ++i) {
            const auto header = Pick(Headers);
            headers += (i == 0 ? "" : ";") + header + (Draw(8) == 0 ? "-" : "");
            places.push_back(static_cast<int>(line.size()));
            line += (Draw(12) == 0 ? Pick(Headers) : header) +
                    std::string(static_cast<std::size_t>(1 + Draw(6)), ' ');
        }
        std::string text = Draw(3) == 0 ? "show table\n\n" : "";
        text += line + "\n";
        if (Draw(4) == 0) text += SeparatorLine(places);
        const int rows = Draw(7);
        for (int row = 0; row < rows; ++row) text += Row(places);
        if (Draw(3) == 0) text += "Total 5\n" + Row(places);
        return Settings(places) + "\n" + headers + "\n" + text;
    }

private:
    static constexpr const char* Headers[] = {"Port",       "Name",  "IP Address", "Po", "VLAN ID",
                                              "Local Intf", "State", "",           "MTU"};
    static constexpr const char* Cells[] = {"Gi0/1",    "192.0.2.1", "up",    "a", "10", "-",
                                            "long-one", "two words", "x,y,z", "",  "=",  "Port"};

    int Draw(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }

    template <std::size_t Size>
    std::string Pick(const char* const (&pool)[Size]) {
        return pool[Draw(static_cast<int>(Size))];
    }

    std::string Settings(const std::vector<int>& places) {
        const int align = Draw(4);
        std::string settings = std::to_string(align) +
                               std::to_string(Draw(6) == 0 ? 1 + Draw(3) : 0) +
                               (Draw(3) == 0 ? "p" : "-");
        for (std::size_t i = 0; i < places.size() && align >= 2; ++i)
            settings += (i == 0 ? "" : ";") + std::to_string(align == 2 ? places[i] : 1 + Draw(2));
        return settings + (Draw(3) == 0 ? "|regex:^Total" : "");
    }

    std::string SeparatorLine(const std::vector<int>& places) {
        std::string line;
        for (std::size_t i = 0; i < places.size(); ++i) {
            if (i > 0) line.append(static_cast<std::size_t>(1 + Draw(3)), ' ');
            line += Draw(3) == 0 ? "-----" : "===---";
        }
        return line + "\n";
    }

    // Cells near their columns, some shifted, some left out, some rows broken in two.
    std::string Row(const std::vector<int>& places) {
        std::string line;
        for (const int place : places) {
            if (Draw(15) == 0) line += "\n";
            const auto lineBegin = line.rfind('\n') + 1;
            const auto wanted =
                static_cast<std::size_t>(std::max(0, place + Draw(7) / 5 * (Draw(7) - 3)));
            while (line.size() - lineBegin < wanted) line += Draw(40) == 0 ? '\t' : ' ';
            if (Draw(4) != 0 && line.size() > lineBegin && line.back() != ' ') line += ' ';
            line += Pick(Cells);
        }
        if (Draw(20) == 0) line += " \\";
        if (Draw(20) == 0) line += " ";
        return line + (Draw(30) == 0 ? "\n\n" : "\n");
    }

    std::mt19937 m_random;
};

TEST(TableDifferential, ReadsWhatThePlainStepsRead) {
    CTableMaker maker(20261121);
    int filled = 0;
    for (int round = 0; round < Rounds; ++round) {
        const auto bytes = maker.Make();
        CPlainTable plain;
        std::string text;
        ASSERT_TRUE(ReadPlainTable(bytes, plain, text));
        ASSERT_EQ(TableDifference(plain, text), "") << "round " << round << "\n" << bytes;
        if (!plain.Values().empty()) ++filled;
    }
    EXPECT_GT(filled, Rounds / 3);
}

}  // namespace
