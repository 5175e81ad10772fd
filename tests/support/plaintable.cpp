#include "support/plaintable.h"

#include "host/text/stlhelper.h"
#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/rule/appparserule.h"
#include "tzparser/text/appstrutil.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

#include <boost/regex.hpp>

namespace {

constexpr const char* Blanks = " \t";
constexpr const char* Spaces = " \t\r\n";
constexpr const char* RuleCharacters = " \t\n\r-=";
constexpr const char* WhiteSpace = " \t\n\v\f\r";

int FirstOf(const std::string& text, const char* set, int from) {
    return static_cast<int>(text.find_first_of(set, static_cast<std::size_t>(from)));
}

int FirstNotOf(const std::string& text, const char* set, int from) {
    return static_cast<int>(text.find_first_not_of(set, static_cast<std::size_t>(from)));
}

int LastOf(const std::string& text, const char* set, int from) {
    return static_cast<int>(text.find_last_of(set, static_cast<std::size_t>(from)));
}

int Find(const std::string& text, const std::string& piece, int from) {
    return static_cast<int>(text.find(piece, static_cast<std::size_t>(from)));
}

int Length(const std::string& text) {
    return static_cast<int>(text.size());
}

bool Contains(const std::string& text, const std::string& piece) {
    return text.find(piece) != std::string::npos;
}

std::string Trim(const std::string& text) {
    const auto first = text.find_first_not_of(WhiteSpace);
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(WhiteSpace) - first + 1);
}

// Whether a column's edge at the place behind this character parts two tokens.
bool IsBoundary(const std::string& line, int at) {
    return std::string(" \t\r\n\\").find(line[static_cast<std::size_t>(at)]) != std::string::npos;
}

boost::regex Compile(const std::string& text) {
    return boost::regex(text, boost::regex::perl | boost::regex::icase | boost::regex::no_except);
}

std::string HeaderRegex(const std::vector<std::string>& headers) {
    const auto joined = AppStrUtil::StrJoin(headers, "  ");
    CParserPatternHelper helper;
    std::string error;
    if (helper.Parse(joined, error)) return helper.GetRegex();
    const auto escaped = StlHelper::RegexEscape(joined);
    return ".*" + boost::regex_replace(escaped, boost::regex("\\s+"), std::string("\\\\s+")) + ".*";
}

}  // namespace

bool CPlainTable::Read(const std::vector<std::string>& lines) {
    m_lines = lines;
    m_columns.clear();
    m_widths.clear();
    m_previous.clear();
    m_skip = isSkipLine ? skipLine : 0;
    m_headerLine = m_firstOpen = 0;
    m_endLine = static_cast<int>(lines.size());
    const bool found = FindHeader();
    if (found) FindColumns();
    FindEnd();
    if (m_columns.empty() || m_columns.size() != headers.size()) return false;
    for (int row = m_headerLine + m_skip; row < m_endLine; ++row)
        if (row >= m_firstOpen) ReadRow(row);
    RemoveEmptyRows();
    return true;
}

bool CPlainTable::FindHeader() {
    m_headerPos.clear();
    const auto whole = Compile(HeaderRegex(headers));
    for (std::size_t line = 0; line < m_lines.size(); ++line) {
        const auto& text = m_lines[line];
        if (text.empty() || (whole.status() == 0 && !boost::regex_match(text, whole))) continue;
        m_headerLine = static_cast<int>(line);
        if (FitsDirectly(text)) return true;
        if (!FitsByWords(text)) continue;
        const auto words = AppStrUtil::StrSplit(Trim(text), Spaces, true);
        if (m_skip == 0 && headers.front().compare(0, words[0].size(), words[0]) == 0)
            ++m_headerLine;
        return true;
    }
    m_headerLine = 0;
    return false;
}

bool CPlainTable::FitsDirectly(const std::string& line) {
    bool allMatch = true;
    int place = 0;
    for (const auto& header : headers) {
        const auto regex = Compile(AppStrUtil::StrTransRegex(header, true, true));
        if (regex.status() != 0) continue;
        if (!boost::regex_search(line, regex)) {
            allMatch = false;
            continue;
        }
        if (HasPlaces()) m_headerPos[header] = Find(line, header, place);
        place = FirstNotOf(line, Blanks, place + Length(header));
    }
    return allMatch;
}

bool CPlainTable::FitsByWords(const std::string& line) {
    m_headerPos.clear();
    const auto words = AppStrUtil::StrSplit(Trim(line), Spaces, true);
    if (words.size() >= headers.size() && !words.empty() && WalkWords(line, words)) return true;
    m_headerPos.clear();
    return false;
}

bool CPlainTable::WalkWords(const std::string& line, const std::vector<std::string>& words) {
    std::size_t word = 0;
    int place = 0;
    const auto pass = [&] {
        place = FirstNotOf(line, Blanks, place + Length(words[word]));
        return ++word == words.size();
    };
    for (const auto& header : headers) {
        if (!Contains(header, words[word])) return false;
        if (HasPlaces()) m_headerPos[header] = Find(line, words[word], place);
        if (pass()) return m_headerPos.size() == headers.size();
        if (headers.size() >= words.size()) continue;
        while (words[word] != words[word - 1] && Contains(header, words[word]))
            if (pass()) return m_headerPos.size() == headers.size();
    }
    return true;
}

void CPlainTable::FindColumns() {
    ++m_skip;
    if (m_headerPos.empty()) {
        if (align == 2 || align == 3) SplitRange();
        return;
    }
    for (const auto& header : headers) {
        const auto at = m_headerPos.find(header);
        if (at != m_headerPos.end()) m_columns.push_back(at->second);
    }
    m_firstOpen = m_headerLine;
    FindSeparator();
}

void CPlainTable::SplitRange() {
    for (const auto& piece : AppStrUtil::StrSplit(alignRange, ";", false)) {
        m_columns.push_back(std::atoi(piece.c_str()));
        m_widths.push_back(m_columns.back());
    }
}

void CPlainTable::FindSeparator() {
    const int begin = m_headerLine + m_skip;
    const int end = std::min(begin + 5, static_cast<int>(m_lines.size()));
    for (int line = std::max(begin, m_firstOpen); line < end; ++line) {
        std::vector<int> places;
        if (!FitsSeparator(m_lines[static_cast<std::size_t>(line)], places)) continue;
        m_headerLine = line;
        if (skipLine == 0 || skipLine == 1) m_skip = 1;
        m_columns = places;
        return;
    }
}

bool CPlainTable::FitsSeparator(const std::string& line, std::vector<int>& places) const {
    if (!Contains(line, "===") && !Contains(line, "---")) return false;
    const auto groups = AppStrUtil::StrSplit(Trim(line), Blanks, true);
    if (groups.size() != headers.size()) return false;
    int from = 0;
    for (const auto& group : groups) {
        if (!Contains(group, "===") || !Contains(group, "---")) return false;
        places.push_back(Find(line, group, from));
        from = FirstNotOf(line, Blanks, from + Length(group));
    }
    return true;
}

void CPlainTable::FindEnd() {
    if (endCondition.empty()) return;
    std::map<std::string, std::string> known;
    std::set<std::string> multiLine;
    const auto regex = Compile(CAppParseRule::GetRegexByLine(endCondition, known, multiLine));
    if (regex.status() != 0) return;
    const int begin = std::max(m_headerLine + m_skip, m_firstOpen);
    for (int line = begin; line < static_cast<int>(m_lines.size()); ++line) {
        auto text = m_lines[static_cast<std::size_t>(line)];
        text.erase(text.find_last_not_of("\r\n") + 1);
        if (!boost::regex_search(text, regex)) continue;
        m_endLine = line;
        return;
    }
}

void CPlainTable::ReadRow(int& number) {
    Row row;
    row.number = number;
    row.line = m_lines[static_cast<std::size_t>(number)];
    if (row.line.find_first_not_of(RuleCharacters) == std::string::npos || Trim(row.line).empty())
        return;
    if (number + 1 < m_endLine) row.next = m_lines[static_cast<std::size_t>(number) + 1];
    const auto last = row.line.find_last_not_of(Blanks);
    if (row.line[last] == '\\') row.line.erase(row.line.find_last_not_of(" \t\r\n\\") + 1);
    row.tokens = AppStrUtil::StrSplit(row.line, " \t\n", true);
    for (int column = 0; column < static_cast<int>(m_columns.size()); ++column) {
        StartCell(row, column);
        if (align == 3)
            MeasureWords(row, column);
        else if (align == 1)
            MeasureRight(row, column);
        else
            MeasureLeft(row, column);
        auto cell = CutCell(row);
        StoreCell(row, column, std::move(cell));
        if (align == 3) row.start = row.tokenEnd;
    }
    if (row.isMerged) ++number;
}

void CPlainTable::StartCell(Row& row, int column) const {
    if (align == 1)
        StartRight(row, column);
    else if (align != 3)
        StartLeft(row, column);
}

void CPlainTable::Row::GoOnInNext() {
    line = next;
    isMerged = true;
}

void CPlainTable::StartLeft(Row& row, int column) const {
    const int nextColumn = IsLast(column) ? row.Size() : Column(column + 1);
    const int own = Column(column);
    row.start = own;
    if (own <= 0 || row.Size() <= own || IsBoundary(row.line, own - 1)) return;
    const int before = LastOf(row.line, Spaces, own - 1);
    if (column == 0 || (column >= 2 && before > Column(column - 1))) {
        row.start = before + 1;
        return;
    }
    const int behind = FirstOf(row.line, Spaces, own);
    if (behind != -1 && behind < nextColumn) {
        row.start = behind;
        return;
    }
    row.start = before < 1 ? -1 : FirstOf(row.line, Spaces, before - 1);
    if (row.start == -1 && Length(row.next) > own) {
        row.GoOnInNext();
        row.start = own;
    }
}

int CPlainTable::RightEdge(int column) const {
    return Column(column) + Length(headers[static_cast<std::size_t>(column)]);
}

void CPlainTable::StartRight(Row& row, int column) const {
    if (column == 0) return;
    const int anchor = RightEdge(column - 1);
    row.start = anchor;
    if (anchor <= 0 || row.Size() <= anchor || IsBoundary(row.line, anchor - 1) ||
        IsBoundary(row.line, anchor))
        return;
    row.start = FirstOf(row.line, Spaces, anchor);
    if (row.start == -1 && Length(row.next) > anchor) {
        row.GoOnInNext();
        row.start = anchor;
    }
}

void CPlainTable::MeasureLeft(Row& row, int column) const {
    row.length = -1;
    if (IsLast(column)) return;
    const int own = Column(column);
    const int next = Column(column + 1);
    row.length = 0;
    if (own < 0 || next <= own) return;
    row.length = next - own;
    if (row.start != own) {
        row.start = FirstNotOf(row.line, Spaces, row.start);
        const int end = FirstOf(row.line, Spaces, row.start);
        row.length = (end == -1 ? row.Size() : end) - row.start;
        return;
    }
    if (row.Size() <= next || IsBoundary(row.line, next - 1)) return;
    int end = FirstOf(row.line, Spaces, own);
    if (end == -1) end = row.Size();
    if (end >= next) {
        row.length = end - own;
        return;
    }
    const int last = LastOf(row.line, Spaces, next);
    if (last != -1 && last >= end) row.length = last - row.start;
}

void CPlainTable::MeasureRight(Row& row, int column) const {
    row.length = -1;
    if (IsLast(column)) return;
    const int right = RightEdge(column);
    const int next = Column(column + 1);
    row.length = right - row.start;
    if (row.start > Column(column)) {
        row.start = FirstNotOf(row.line, Spaces, row.start);
        int end = FirstOf(row.line, Spaces, row.start);
        if (end == -1) end = row.Size();
        if (end > next || row.length + row.start >= next) row.length = end - row.start;
    } else if (right >= 0 && row.Size() > right && !IsBoundary(row.line, right)) {
        int end = FirstOf(row.line, Spaces, right);
        if (end == -1) end = row.Size();
        if (end > next) row.length = end - Column(column);
    }
}

void CPlainTable::MeasureWords(Row& row, int column) const {
    row.length = 0;
    const int wanted = std::accumulate(m_widths.begin(), m_widths.end(), 0);
    if (static_cast<int>(row.tokens.size()) < wanted) return;
    const int width = m_widths[static_cast<std::size_t>(column)];
    const auto token = [&row](int at) { return row.tokens[static_cast<std::size_t>(at)]; };
    const int found = Find(row.line, token(row.tokenIndex), row.start);
    if (found != -1) {
        row.start = found;
        row.tokenEnd = found + Length(token(row.tokenIndex));
        for (int more = 1; more < width; ++more) {
            const auto& text = token(row.tokenIndex + more);
            row.tokenEnd = Find(row.line, text, row.tokenEnd) + Length(text);
        }
    } else {
        row.start = row.tokenEnd;
    }
    row.tokenIndex += width;
    row.length =
        IsLast(column) ? -1 : Find(row.line, token(row.tokenIndex), row.tokenEnd) - row.start;
}

std::string CPlainTable::CutCell(Row& row) {
    if (row.start == -1) return {};
    const auto cut = [&row] {
        return Trim(row.line.substr(static_cast<std::size_t>(row.start),
                                    static_cast<std::size_t>(row.length)));
    };
    if (row.start < row.Size()) return cut();
    const int text = row.isMerged ? -1 : FirstNotOf(row.next, Spaces, 0);
    if (text == -1 || Length(row.next) <= row.start || text < row.start) {
        row.start = row.Size();
        return {};
    }
    row.GoOnInNext();
    return cut();
}

void CPlainTable::StoreCell(Row& row, int column, std::string cell) {
    const auto at = headerVars.find(headers[static_cast<std::size_t>(column)]);
    if (at == headerVars.end()) return;
    const auto& name = at->second;
    if (!cell.empty())
        row.start = Find(row.line, cell, row.start);
    else if (isUsePreVars && followVars.count(name) != 0)
        cell = m_previous[name];
    m_previous[name] = cell;
    const int line = row.number + (row.isMerged ? 1 : 0);
    const int begin = row.start == -1 ? row.Size() : row.start;
    m_values[name][line] = CAppTextLet(line, begin, line, begin + Length(cell), cell);
}

void CPlainTable::RemoveEmptyRows() {
    std::map<int, int> filled;
    for (const auto& [name, values] : m_values)
        for (const auto& [line, let] : values)
            filled[line] += let.text.empty() || let.IsEmpty() ? 0 : 1;
    for (auto& [name, values] : m_values)
        for (const auto& [line, count] : filled)
            if (count == 0) values.erase(line);
}
