#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

class CAppRegex;
class CStatementCuts;

// A line to be compared with a statement; the view must outlive the comparison.
struct NearestCandidate {
    int line;
    std::string_view text;
};

// How far the nearest line follows a statement.
struct NearestMatch {
    int line = -1;             // -1: no line comes near
    int column = -1;           // the byte behind the last one matched
    int statementColumn = -1;  // the byte of the statement where it stops
    std::string wish;          // what stands there in words; mostly empty
};

// CNearestLine finds, for statements that match no line, the line that follows each of them
// farthest.
//
//     CNearestLine nearest;
//     nearest.Find("mtu $int:mtu bytes", {{3, "speed 100"}, {7, "mtu 1500 byte"}});
//     // line 7, columns 13 of the line and 17 of the statement
//
// A line that holds more of the statement's words than the beginning that another one follows goes
// before it: there the mistake stands early in the statement.
// The work is bounded: of a line the first 1000 bytes are compared, and the searches over the
// object's life are limited, after which it finds nothing. One thread at a time.
class CNearestLine {
public:
    // The number of lines worth offering for one statement.
    static constexpr std::size_t MaxLines = 4000;

    NearestMatch Find(const std::string& statement, const std::vector<NearestCandidate>& lines);
    // The same for a statement over several lines; the column is an offset in the text.
    NearestMatch FindInText(const std::string& statement, std::string_view text);

    // The first line that an expression matches; -1: none.
    int FindFitting(const CAppRegex& expression, const std::vector<NearestCandidate>& lines);

    bool IsExhausted() const { return m_searchesLeft == 0; }

private:
    class Prefixes;

    static constexpr std::size_t MaxLine = 1000;
    static constexpr std::size_t MaxText = 50000;
    static constexpr std::size_t MaxSearches = 300000;

    std::size_t m_searchesLeft = MaxSearches;
};
