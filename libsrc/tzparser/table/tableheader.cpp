// The search for a header line, line by line.
//
// Direct: each header's expression is found in the line. The place of a header is that of its very
// text, looked for from behind the header before. That distance grows by the lengths of the headers
// alone, not by where they were found, so a later header may be placed at an earlier occurrence.
//
// By words: the words of the line are walked along with the headers; each has to be part of its
// header. A header takes one word, and with more words than headers all further words that are part
// of it.
#include "tzparser/table/tableheader.h"

#include "host/runtime/diagnostics.h"

#include <algorithm>

namespace {

using namespace TableText;

constexpr Position Unplaced = -2;

bool Contains(std::string_view text, std::string_view piece) {
    return text.find(piece) != std::string_view::npos;
}

// The next word or header at or behind the end of a text that was looked for from a position. Also
// from no position: the search then begins again near the front.
Position Advance(std::string_view line, Position from, std::string_view passed) {
    return FirstNotOf(line, Blanks, from + Size(passed));
}

}  // namespace

void CTableHeader::Add(const std::string& text, const std::string& regexText,
                       std::shared_ptr<const CAppRegex> regex) {
    const auto same = std::find_if(m_items.begin(), m_items.end(),
                                   [&text](const Item& item) { return item.text == text; });
    const auto slot = same == m_items.end() ? m_items.size() : same->slot;
    m_items.push_back({text, regexText, std::move(regex), slot});
}

bool CTableHeader::FitsLine(std::string_view line, CAppRegexMatch& match) const {
    if (!m_line || m_fit == Fit::Any) return true;
    const auto result =
        m_fit == Fit::Whole ? m_line->MatchWhole(line, match) : m_line->Search(line, match);
    return result == AppRegexSearch_Match;
}

CTableHeaderSearch::CTableHeaderSearch(const CTableHeader& header, bool placesHeaders)
    : m_header(header), m_placesHeaders(placesHeaders), m_places(header.Items().size(), Unplaced) {}

bool CTableHeaderSearch::Try(std::string_view line) {
    m_trial = {};
    if (!m_header.FitsLine(line, m_match)) return false;
    if (TryDirect(line)) return true;
    ClearPlaces();
    return TryWords(line);
}

// A header whose expression doesn't compile fails no line, and has no place.
bool CTableHeaderSearch::TryDirect(std::string_view line) {
    ClearPlaces();
    Position from = 0;
    const auto& items = m_header.Items();
    for (std::size_t header = 0; header < items.size(); ++header) {
        const auto& item = items[header];
        if (!item.regex) {
            DiagnosticOutput("Invalid regex expression:" + item.regexText + "\n");
        } else if (item.regex->Search(line, m_match) != AppRegexSearch_Match) {
            if (m_trial.missingHeader < 0) m_trial.missingHeader = static_cast<int>(header);
        } else {
            Place(header, Find(line, item.text, from));
            from = Advance(line, from, item.text);
        }
    }
    if (m_trial.missingHeader >= 0) return false;
    m_trial.verdict = HeaderVerdict_Direct;
    return true;
}

bool CTableHeaderSearch::TryWords(std::string_view line) {
    Cut(Trim(line, WhiteSpace), Spaces, m_words);
    m_word = 0;
    m_position = 0;
    if (m_words.size() < m_header.Items().size()) return Fail(HeaderVerdict_TooFewTokens, line, 0);
    return WalkWords(line);
}

bool CTableHeaderSearch::WalkWords(std::string_view line) {
    const auto& items = m_header.Items();
    const bool hasFurtherWords = m_words.size() > items.size();
    for (std::size_t header = 0; header < items.size(); ++header) {
        if (!Contains(items[header].text, m_words[m_word]))
            return Fail(HeaderVerdict_TokenFitsNone, line, header);
        Place(header, Find(line, m_words[m_word], m_position));
        m_position = Advance(line, m_position, m_words[m_word++]);
        while (hasFurtherWords && TakeWord(header))
            m_position = Advance(line, m_position, m_words[m_word++]);
        if (m_word == m_words.size()) return EndOfWords(line, header);
    }
    m_trial.verdict = HeaderVerdict_ByWords;
    return true;
}

// Whether the next word is a further one of a header. A word that repeats the one before begins the
// next header.
bool CTableHeaderSearch::TakeWord(std::size_t header) {
    return m_word < m_words.size() && m_words[m_word] != m_words[m_word - 1] &&
           Contains(m_header.Items()[header].text, m_words[m_word]);
}

bool CTableHeaderSearch::EndOfWords(std::string_view line, std::size_t header) {
    if (m_placed != m_header.Items().size()) return Fail(HeaderVerdict_TooFewHeaders, line, header);
    m_trial.verdict = HeaderVerdict_ByWords;
    return true;
}

bool CTableHeaderSearch::Fail(HeaderVerdict_e verdict, std::string_view line, std::size_t header) {
    m_trial.verdict = verdict;
    m_trial.header = static_cast<int>(header);
    m_trial.token = static_cast<int>(m_word);
    m_trial.column = m_word < m_words.size()
                         ? static_cast<int>(m_words[m_word].data() - line.data())
                         : static_cast<int>(line.size());
    ClearPlaces();
    return false;
}

void CTableHeaderSearch::Place(std::size_t header, Position position) {
    if (!m_placesHeaders) return;
    auto& place = m_places[m_header.Items()[header].slot];
    if (place == Unplaced) ++m_placed;
    place = position;
}

void CTableHeaderSearch::ClearPlaces() {
    std::fill(m_places.begin(), m_places.end(), Unplaced);
    m_placed = 0;
}

std::vector<Position> CTableHeaderSearch::Columns() const {
    std::vector<Position> columns;
    columns.reserve(m_places.size());
    for (const auto& item : m_header.Items())
        if (m_places[item.slot] != Unplaced) columns.push_back(m_places[item.slot]);
    return columns;
}

bool CTableHeaderSearch::BeginsWithFirstWord() const {
    return !m_words.empty() && !m_header.Items().empty() &&
           std::string_view(m_header.Items()[0].text).substr(0, m_words[0].size()) == m_words[0];
}
