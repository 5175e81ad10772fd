// Behind the line feed of its last row the diff text has one more line, an empty one. It is no row,
// but may be paired with an empty line of the text, and so decides between common subsequences. It
// isn't compared with the others: its partner could only be the last empty line of the text, and
// that one only when as many rows are common with the lines in front of it as with the whole text.
#include "tzparser/select/diffbaseline.h"

#include "host/text/linescan.h"

namespace {

constexpr int NoRow = -1;

// The text in front of its last empty line and the line end before that; `line` is the number of
// the empty line, -1 when there is none.
std::string_view BeforeLastEmptyLine(std::string_view text, int& line) {
    line = -1;
    std::size_t length = 0;
    std::size_t lastEnd = 0;
    std::size_t begin = 0;
    int number = 0;
    CLineScan scan(text);
    const auto note = [&](std::size_t end) {
        if (begin != end) return;
        line = number;
        length = lastEnd;
    };
    for (; scan.Next(); begin = scan.NextBegin(), ++number) {
        note(scan.LineEnd());
        lastEnd = scan.LineEnd();
    }
    note(text.size());
    return text.substr(0, length);
}

}  // namespace

CDiffBaseline::CDiffBaseline(const AppDiffLines& lines, int startRow, int endRow)
    : m_text(JoinRows(lines, startRow, endRow)), m_lines(m_text), m_rows(m_lines.Count(), NoRow) {
    std::size_t line = 0;
    for (const auto& [offset, row] : m_places) {
        while (line < m_rows.size() && m_lines.Line(line).data() < m_text.data() + offset) ++line;
        if (line < m_rows.size()) m_rows[line] = row;
    }
    m_places.clear();
    m_places.shrink_to_fit();
}

std::string CDiffBaseline::JoinRows(const AppDiffLines& lines, int startRow, int endRow) {
    std::string text;
    for (auto at = lines.m_rows.lower_bound(startRow);
         at != lines.m_rows.end() && at->first < endRow; ++at) {
        const auto& [row, rowText] = *at;
        if (rowText.empty()) continue;
        if (m_rowCount++ == 0)
            m_firstRow = row;
        else
            text += '\n';
        m_lastRow = row;
        if (lines.m_addedRows.count(row) == 0) m_places.emplace_back(text.size(), row);
        text += rowText;
    }
    return text;
}

AppLineMapping CDiffBaseline::Compare(std::string_view text) const {
    auto common = m_lines.Compare(text);
    if (!common.empty() && common.size() < m_lines.Count()) {
        int emptyLine = -1;
        const auto before = BeforeLastEmptyLine(text, emptyLine);
        if (emptyLine > 0 && emptyLine <= common.back().second) {
            auto shorter = m_lines.Compare(before);
            if (shorter.size() == common.size()) common = std::move(shorter);
        }
    }
    AppLineMapping mapping;
    mapping.reserve(common.size());
    for (const auto& [rowLine, line] : common)
        if (const int row = m_rows[static_cast<std::size_t>(rowLine)]; row != NoRow)
            mapping.emplace_back(line, row);
    return mapping;
}
