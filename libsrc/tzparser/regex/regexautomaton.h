#pragma once

#include "tzparser/regex/regextree.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

enum RegexRange_e {
    RegexRange_Anywhere = 0,   // a match begins and ends anywhere in the text
    RegexRange_WholeText = 1,  // it takes the whole text
};

// CRegexAutomaton tells of a text that an expression can't match in it, in time linear in the
// text's length whatever the expression is.
//
//     const CRegexAutomaton automaton(*tree, RegexRange_Anywhere);
//     if (!automaton.CanMatch(line)) return;       // surely no match
//     search();                                    // perhaps one: it doesn't say where
//
// It fits every text that the tree's expression fits, and more where the tree isn't exact or where
// counted repeats are too large to be written out. Any number of threads may ask one object: it
// works its states out while it reads and keeps them for all, up to a limit of memory; past that it
// goes on without keeping, slower but with the same answers.
class CRegexAutomaton {
public:
    CRegexAutomaton(const RegexTree& tree, RegexRange_e range);
    ~CRegexAutomaton();
    CRegexAutomaton(const CRegexAutomaton&) = delete;
    CRegexAutomaton& operator=(const CRegexAutomaton&) = delete;

    bool CanMatch(std::string_view text) const;

private:
    using Place = std::uint16_t;

    enum Step_e { Step_Bytes = 0, Step_Fork = 1, Step_Assert = 2, Step_Match = 3 };
    // One place of the expression with all counted repeats written out.
    struct Step {
        Step_e kind = Step_Match;
        RegexAssert_e assertion = RegexAssert_LineStart;
        std::uint16_t set = 0;  // of bytes, in m_sets
        Place next = 0;
        Place other = 0;  // of a fork
    };

    // What stands around a place of the text.
    enum Side_e { Side_None = 0, Side_LineFeed, Side_Return, Side_FormFeed, Side_Word, Side_Other };

    // A state: the places where a match may stand after some text, and what that text ended with.
    using State = std::pair<std::vector<Place>, Side_e>;
    // A kept state's ways stand in a row, one for each class; null: not known yet.
    struct Way {
        mutable std::atomic<const Way*> row{nullptr};
    };

    // A row that nearly all bytes lead back to, and those few that don't.
    struct Rest {
        const Way* row = nullptr;
        std::size_t count = 0;  // 0: not such a row
        std::array<char, 3> bytes{};
    };

    class CBuilder;

    void NumberBytes(bool seesSides);
    Side_e SideOf(std::size_t byte) const;
    std::size_t Classes() const { return m_sides.size(); }
    const Way* Next(const Way& way, const Way* row, std::size_t byteClass) const;
    const Way* Keep(State state) const;
    State StateOf(const Way* row) const;
    void FindRest(const Way* row, Rest& rest) const;
    bool Move(const State& from, std::size_t byteClass, State& to) const;
    bool CanMatchUnkept(State state, std::string_view rest) const;
    bool Holds(RegexAssert_e assertion, Side_e before, Side_e after) const;

    RegexRange_e m_range;
    std::vector<Step> m_steps;
    std::vector<RegexBytes> m_sets;
    Place m_start = 0;
    std::array<std::uint8_t, 256> m_classOf{};
    std::vector<Side_e> m_sides;                // by class; the last stands for the text's end
    std::vector<std::vector<char>> m_setTakes;  // by set and class

    mutable std::mutex m_mutex;
    mutable std::map<State, std::unique_ptr<Way[]>> m_rows;
    mutable std::unordered_map<const Way*, const State*> m_states;  // by row
    mutable std::size_t m_memory = 0;
    const Way* m_first = nullptr;
    const Way m_matched;  // stands for the row of a match found
};
