#include "host/diff/tzdifflib.h"

TzDifferResult::TzDifferResult(const CommonLines& lines)
    : m_lines(std::make_shared<std::vector<TzDifferLine>>()) {
    m_lines->reserve(lines.size());
    for (const auto& [first, second] : lines) m_lines->emplace_back(first, second);
}

// All pointers share the one block that holds the lines.
std::vector<std::shared_ptr<TzDifferLine>> TzDifferResult::GetCommonLines() const {
    std::vector<std::shared_ptr<TzDifferLine>> pointers;
    pointers.reserve(m_lines->size());
    for (auto& line : *m_lines) pointers.emplace_back(m_lines, &line);
    return pointers;
}

std::shared_ptr<TzDifferResult> TzDiffLib::Compare(std::string_view first,
                                                   std::string_view second) const {
    return std::make_shared<TzDifferResult>(CompareLines(first, second));
}

CommonLines TzDiffLib::CompareLines(std::string_view first, std::string_view second) {
    return CDiffLines(first).Compare(second);
}
