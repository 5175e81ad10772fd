#pragma once

#include "tzparser/pattern/appregex.h"
#include "tzparser/table/tablelayout.h"
#include "tzparser/table/tabletext.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// CTableHeader is the header of a table made ready to be found: the expressions of a definition.
// Immutable after it is made, shared by clones.
class CTableHeader {
public:
    // How the expression of the whole header is laid on a line.
    enum class Fit {
        Any,    // there is none
        Found,  // it is found in the line
        Whole,  // it matches all of the line
    };

    struct Item {
        std::string text;
        std::string regexText;
        std::shared_ptr<const CAppRegex> regex;  // null: it doesn't compile
        std::size_t slot;                        // the index of the first item with this text
    };

    CTableHeader() = default;
    CTableHeader(std::shared_ptr<const CAppRegex> line, Fit fit)
        : m_line(std::move(line)), m_fit(fit) {}

    void Add(const std::string& text, const std::string& regexText,
             std::shared_ptr<const CAppRegex> regex);

    const std::vector<Item>& Items() const { return m_items; }
    bool FitsLine(std::string_view line, CAppRegexMatch& match) const;

private:
    std::shared_ptr<const CAppRegex> m_line;
    Fit m_fit = Fit::Any;
    std::vector<Item> m_items;
};

// CTableHeaderSearch tries lines as a table's header and keeps the places of the headers in the
// line that it accepts.
//
//     CTableHeaderSearch search(header, true);
//     while (!search.Try(nextLine())) {}
//     search.Columns();
//
// A line is accepted directly when every header is found in it, each on its own; or word by word,
// when the words of the line belong to the headers in their order. The header outlives the search.
class CTableHeaderSearch {
public:
    // `placesHeaders` is false where columns don't come from the header line.
    CTableHeaderSearch(const CTableHeader& header, bool placesHeaders);

    bool Try(std::string_view line);
    // What became of the line tried last; its line number isn't set.
    const HeaderTrial& Trial() const { return m_trial; }
    // Whether any header has a place, and the places in header order; headers without one are left
    // out, equal headers have the place of the last of them.
    bool HasPlaces() const { return m_placed != 0; }
    std::vector<TableText::Position> Columns() const;
    // Whether the first header begins with the first word of the line accepted by words.
    bool BeginsWithFirstWord() const;

private:
    bool TryDirect(std::string_view line);
    bool TryWords(std::string_view line);
    bool WalkWords(std::string_view line);
    bool TakeWord(std::size_t header);
    bool Fail(HeaderVerdict_e verdict, std::string_view line, std::size_t header);
    bool EndOfWords(std::string_view line, std::size_t header);
    void Place(std::size_t header, TableText::Position position);
    void ClearPlaces();

    const CTableHeader& m_header;
    bool m_placesHeaders;
    CAppRegexMatch m_match;
    std::vector<TableText::Position> m_places;  // by slot; Unplaced for none
    std::size_t m_placed = 0;
    std::vector<std::string_view> m_words;
    std::size_t m_word = 0;
    TableText::Position m_position = 0;
    HeaderTrial m_trial;
};
