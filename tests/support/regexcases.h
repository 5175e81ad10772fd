#pragma once

#include <functional>
#include <string>

// Makes expressions of the kind that statements hold, hostile ones among them, and texts that
// nearly or fully fit them. `pick(n)` chooses a number below n: a random one in tests, one read
// from the input in fuzzing.
class CRegexCases {
public:
    explicit CRegexCases(std::function<unsigned(unsigned)> pick) : m_pick(std::move(pick)) {}

    // A new expression; the texts afterwards are for it.
    std::string Expression();
    std::string Text();

private:
    struct Piece {
        std::string expression;
        std::string example;  // a text that it fits, assertions aside
    };

    Piece Choice(int depth);
    Piece Sequence(int depth);
    Piece Repeated(int depth);
    Piece Atom(int depth);
    Piece Group(int depth);
    Piece Set();
    std::string Noise(unsigned most);

    std::function<unsigned(unsigned)> m_pick;
    std::string m_example;
};

// Searches the text in every way there is and tells where one differs from plain searching; empty
// when none does.
std::string CompareSearches(const std::string& expression, unsigned flags, const std::string& text);
