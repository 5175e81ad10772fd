#pragma once

#include "host/runtime/copyonwrite.h"
#include "tzparser/text/apptextlet.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <boost/container/small_vector.hpp>

// CLetColumn holds the values of one variable by line: a map from line to let that costs 16 bytes
// a value as long as lines come in ascending order and lets lie on their line, and beside it the
// text, unless that is a view into the text that is being parsed (ReadFrom).
//
//     CLetColumn column;
//     column.Set(7, 0, "Gi0/1");                   // 7:0-5 "Gi0/1"
//     column.Set(9, CAppTextLet(9, 0, 9, 0, ""));
//     column.FirstLine(8);                         // 9
//
// Lets are made when somebody asks for them. A copy shares the values until one of both is written,
// so copying costs nothing; what is seen is as if each had values of its own. A host may want the
// map itself, for reading and writing (Follow): from then on all operations work on it, and a copy
// has copies of all values. A value under a line replaces the one that stood there.
//
// One thread at a time uses a column; columns that share values may be used by a thread each.
class TZPARSER_API CLetColumn {
public:
    using Map = std::map<std::int32_t, CAppTextLet>;

    // What FirstLine gives when there is no such line.
    static constexpr std::int32_t NoLine = INT32_MAX;
    // What LastLine gives of an empty column.
    static constexpr std::int32_t NoLineYet = INT32_MIN;

    CLetColumn() = default;
    CLetColumn(const CLetColumn& other);
    CLetColumn(CLetColumn&& other) noexcept = default;
    CLetColumn& operator=(const CLetColumn& other);
    CLetColumn& operator=(CLetColumn&& other) noexcept = default;
    ~CLetColumn() = default;

    // Of values that are set from now on, texts that lie in this one are kept as places in it; the
    // column keeps it alive. What is there already stays as it is.
    void ReadFrom(const std::shared_ptr<const std::string>& text);
    // Makes room for so many values in all.
    void Reserve(std::size_t count);
    // The text that values are kept as places in; null when there is none, or no value yet.
    const std::string* SourceText() const { return m_body->source.get(); }
    // Gives up that text, for copies of the values' own texts.
    void LeaveSourceText();

    bool IsEmpty() const { return Count() == 0; }
    std::size_t Count() const;

    // Stores a let on the line itself, from a column to behind its text.
    void Set(std::int32_t line, std::int32_t begin, std::string_view text);
    // The same; true when the line is behind all others.
    bool Append(std::int32_t line, std::int32_t begin, std::string_view text);
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
    // The text of the value at an index; empty when there is none. Valid until the column is
    // written.
    std::string_view TextAtIndex(std::size_t index) const;
    // The bytes of all texts together.
    std::size_t TextBytes() const;
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
            begin;  // where the let begins; its index in `odd` when the length is OddLength
        std::uint32_t text;   // where the text begins in `source`, behind its end in `texts`
        std::int32_t length;  // of the text, or OddLength
    };
    static constexpr std::int32_t OddLength = -1;

    // One cell, as most variables have, takes no memory of its own.
    using Cells = boost::container::small_vector<Cell, 1>;

    struct Body {
        // Sorted by line up to `settled`; what is behind it came out of order and waits for the
        // next reader. Of equal lines the later one holds.
        Cells cells;
        std::size_t settled = 0;
        std::shared_ptr<const std::string> source;
        std::string texts;
        std::vector<CAppTextLet> odd;  // lets that don't lie on their line as their text is long

        bool AddText(std::string_view text, Cell& cell);
        // True when the cell came in order, behind all others.
        bool Place(const Cell& cell);
        void Settle();
        std::size_t SourceSize() const { return source ? source->size() : 0; }
        std::string_view Text(const Cell& cell) const;
        CAppTextLet Let(const Cell& cell) const;
    };

    bool Put(std::int32_t line, std::int32_t begin, std::string_view text);
    const Body& Settled() const;
    static Cells::const_iterator LowerBound(const Body& body, std::int32_t line);

    mutable CCopyOnWrite<Body> m_body;
    Map* m_map = nullptr;  // when a host has the values
};

template <class Use>
void CLetColumn::ForEachFrom(std::int32_t from, Use use) const {
    if (m_map != nullptr) {
        for (auto at = m_map->lower_bound(from); at != m_map->end(); ++at)
            use(at->first, at->second);
        return;
    }
    const auto& body = Settled();
    for (auto at = LowerBound(body, from); at != body.cells.cend(); ++at)
        use(at->line, body.Let(*at));
}
