// Variables that are a block of lines between values which other KVPs found.
//
// A span names its first and last variable. All rows of the first variable's values belong to it;
// with a second variable also all rows from the first value of the one through the last value of
// the other, and with an open end all rows to the end of the range. The rows of all spans together,
// in order, make the value. Original lines are used here, not replaced ones. The range's exclusive
// end counts as a row too: a block that is open to the end of the text ends in an empty line.
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/rule/appparserulesample.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace {

// Marks rows first through last, as far as they lie in the range that `marked` stands for.
void MarkRows(int first, int last, int start, std::vector<char>& marked) {
    const auto end = start + static_cast<int>(marked.size()) - 1;
    for (int row = std::max(first, start); row <= std::min(last, end); ++row)
        marked[static_cast<std::size_t>(row - start)] = 1;
}

}  // namespace

void CAppParseRuleKeyWord::ParseMlineVariables(int startLine, int endLine) {
    if (m_definition->mlineDefine.empty()) return;
    for (const auto& entry : m_definition->mlineDefine)
        ParseMlineVariable(startLine, endLine, entry.first);
}

void CAppParseRuleKeyWord::ParseMlineVariable(int startLine, int endLine, const std::string& name) {
    const auto* sample = GetSampleRoot();
    const auto define = m_definition->mlineDefine.find(name);
    if (sample == nullptr || define == m_definition->mlineDefine.end()) return;
    const int start = std::max(startLine, 0);
    const int end = std::min(endLine, sample->GetLines().Count());
    if (end < start) return;
    std::vector<char> marked(static_cast<std::size_t>(end - start) + 1, 0);
    for (const auto& span : define->second) MarkSpan(span, start, end, marked);
    std::string text;
    std::vector<int> rows;
    for (int row = start; row <= end; ++row) {
        if (marked[static_cast<std::size_t>(row - start)] == 0) continue;
        text.append(sample->GetLines().View(row)).push_back('\n');
        rows.push_back(row);
    }
    if (rows.empty()) return;
    auto& values = m_values.Column(name);
    // The stand-by value goes: it is the last one stored for the name.
    if (!values.IsEmpty()) values.Erase({values.LastLine()});
    CAppTextLet let(rows.front(), 0, rows.front(), static_cast<int>(text.find_first_of("\r\n")),
                    {});
    let.text = std::move(text);
    let.lines = std::move(rows);
    values.Set(let.beginRow, let);
}

void CAppParseRuleKeyWord::MarkSpan(const std::pair<std::string, std::string>& span, int startLine,
                                    int endLine, std::vector<char>& marked) const {
    const auto* first = m_values.Find(span.first);
    if (first == nullptr || first->IsEmpty()) return;
    // Values of earlier paragraphs stand there too; those that end above the range are passed over.
    const auto reach = std::int64_t{startLine} - m_longestSpan;
    const auto from =
        static_cast<int>(std::max<std::int64_t>(reach, std::numeric_limits<int>::min()));
    first->ForEachFrom(from, [&](int, const CAppTextLet& let) {
        MarkRows(let.beginRow, let.endRow, startLine, marked);
    });
    if (span.first == span.second) return;
    const int begin = first->First().beginRow;
    if (span.second.empty()) {
        MarkRows(begin, endLine, startLine, marked);
        return;
    }
    const auto* second = m_values.Find(span.second);
    if (second != nullptr && !second->IsEmpty())
        MarkRows(begin, second->Last().endRow, startLine, marked);
}
