#pragma once

#include "host/runtime/tzexport.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// CStringFinder tells which of many strings stand in a text, in one pass over the text, whatever
// their number.
//
//     const CStringFinder finder({"Cisco", "Version", "IOS"});
//     CStringFinder::Found found = finder.Find(text);        // one search
//     found.Has(2);                                          // whether "IOS" stands in it
//
// The time of a search grows with the text alone, and the memory with the length of all strings
// together. Immutable once made: any number of threads may search with one object at once.
class TZPARSER_API CStringFinder {
public:
    // The strings that stand in a text, by their place in the list.
    class Found {
    public:
        explicit Found(std::size_t count) : m_bits((count + 63) / 64) {}
        bool Has(std::size_t string) const {
            return (m_bits[string / 64] >> (string % 64) & 1U) != 0;
        }
        void Add(std::size_t string) { m_bits[string / 64] |= std::uint64_t{1} << (string % 64); }

    private:
        std::vector<std::uint64_t> m_bits;
    };

    // The strings aren't empty and none comes twice. Their bytes are copied.
    explicit CStringFinder(const std::vector<std::string_view>& strings);

    Found Find(std::string_view text) const;

private:
    using State = std::uint32_t;
    struct Pass;
    struct Lane;
    static constexpr std::size_t LaneCount = 8;
    using LaneList = std::array<Lane, LaneCount>;

    void NumberClasses(const std::vector<std::string_view>& strings);
    void MakeStates(const std::vector<std::string_view>& strings);
    void LinkFailures();
    void FillRows();
    State Child(State state, std::uint16_t byteClass) const;
    State Step(State state, std::uint16_t byteClass) const;
    void Report(State state, Pass& pass) const;
    void ReadOn(Lane lane, Pass& pass) const;
    LaneList Divide(const std::uint8_t* begin, std::size_t size) const;
    void ReadTogether(LaneList& lanes, Pass& pass) const;

    std::size_t m_count;
    std::size_t m_longest = 1;
    std::array<std::uint16_t, 256> m_classOf{};  // 0: a byte that no string holds
    std::uint32_t m_classShift = 0;
    // By state, states standing in the order of their depth and children of one beside each other.
    std::vector<State> m_childBegin;  // and one more at the end
    std::vector<std::uint16_t> m_classIn;
    std::vector<State> m_failure;
    std::vector<State> m_end;
    std::vector<std::uint32_t> m_string;
    // The complete rows of the first states, a target marked when strings end there.
    State m_rowCount = 0;
    std::vector<State> m_rows;
};
