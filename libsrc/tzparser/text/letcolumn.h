#pragma once

#include "tzparser/text/apptextlet.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

// CLetColumn holds the values of one variable by line: a map from line to let that costs 16 bytes
// and the text a value as long as lines come in ascending order and lets lie on their line.
//
//     CLetColumn column;
//     column.Set(7, 0, "Gi0/1");                   // 7:0-5 "Gi0/1"
//     column.Set(9, CAppTextLet(9, 0, 9, 0, ""));
//     column.FirstLine(8);                         // 9
//
// A host may want the map itself, for reading and writing (Follow): from then on all operations
// work on it. A value under a line replaces the one that stood there. One thread at a time.
class TZPARSER_API CLetColumn {
public:
    using Map = std::map<std::int32_t, CAppTextLet>;

    // What FirstLine gives when there is no such line.
    static constexpr std::int32_t NoLine = INT32_MAX;
    // What LastLine gives of an empty column.
    static constexpr std::int32_t NoLineYet = INT32_MIN;

    bool IsEmpty() const { return Count() == 0; }
    std::size_t Count() const;

    // Stores a let on the line itself, from a column to behind its text.
    void Set(std::int32_t line, std::int32_t begin, std::string_view text);
    // Stores any let. The same let as above costs the same.
    void Set(std::int32_t line, const CAppTextLet& let);
    // Takes out the lines of an ascending list; costs what stands behind the first of them.
    void Erase(const std::vector<std::int32_t>& lines);
    void Clear();

    bool Has(std::int32_t line) const;
    // The first line at or behind a line that has a value.
    std::int32_t FirstLine(std::int32_t from) const;
    // Whether the line has a value with a text and a span.
    bool HasText(std::int32_t line) const;
    // Whether some value's span begins where it ends.
    bool HasEmptySpan() const;
    // The largest line that has a value, of all and of those before a line; NoLineYet when there is
    // none.
    std::int32_t LastLine() const;
    std::int32_t LastLineBefore(std::int32_t line) const;
    // Copies in line order: of all values, and of the lines alone.
    std::vector<CAppTextLet> Lets() const;
    std::vector<std::int32_t> Lines() const;
    Map ToMap() const;
    // The values of the smallest and the largest line, of one line, and of the line at an index in
    // line order; a let of zeros when there is none.
    CAppTextLet First() const { return At(FirstLine(INT32_MIN)); }
    CAppTextLet Last() const { return At(LastLine()); }
    CAppTextLet At(std::int32_t line) const;
    CAppTextLet AtIndex(std::size_t index) const;
    // Calls use(line, let) in line order, from a line on; the let lives for the call.
    template <class Use>
    void ForEach(Use use) const {
        ForEachFrom(INT32_MIN, use);
    }
    template <class Use>
    void ForEachFrom(std::int32_t from, Use use) const;

    // Works on the map from now on, as it stands; what the column held is gone. The map has to
    // outlive the column or its next Follow.
    void Follow(Map* map);

private:
    struct Cell {
        std::int32_t line;
        std::int32_t
            begin;  // where the let begins; its index in m_odd when the length is OddLength
        std::uint32_t text;   // where the text begins in m_texts
        std::int32_t length;  // of the text, or OddLength
    };
    static constexpr std::int32_t OddLength = -1;

    using Cells = std::vector<Cell>;

    bool AppendText(std::string_view text, Cell& cell);
    void Place(const Cell& cell);
    void Settle() const;
    Cells::const_iterator LowerBound(std::int32_t line) const;
    CAppTextLet LetOf(const Cell& cell) const;

    // Sorted by line up to m_settled; what is behind it came out of order and waits for the next
    // reader. Of equal lines the later one holds.
    mutable Cells m_cells;
    mutable std::size_t m_settled = 0;
    std::string m_texts;
    std::vector<CAppTextLet> m_odd;  // lets that don't lie on their line as their text is long
    Map* m_map = nullptr;            // when a host has the values
};

template <class Use>
void CLetColumn::ForEachFrom(std::int32_t from, Use use) const {
    if (m_map != nullptr) {
        for (auto at = m_map->lower_bound(from); at != m_map->end(); ++at)
            use(at->first, at->second);
        return;
    }
    for (auto at = LowerBound(from); at != m_cells.cend(); ++at) use(at->line, LetOf(*at));
}
