// Splitting takes one forward scan.
//
// Only the begin of each line is kept, four bytes a line. A line's end is its successor's begin
// less the line end between them, which is two bytes exactly when both bytes before that begin are
// a pair and lie in the line's own part of the text: a line itself holds no line end characters, so
// the pair can't be anything else.
#include "tzparser/rule/appsamplelines.h"

#include <algorithm>
#include <limits>

namespace {

// Makes room for the lines of the whole text, if the rest has them as close as the part before
// `offset`: a text of short lines then costs one move and little spare room.
void MakeRoom(std::vector<std::uint32_t>& begins, std::size_t offset, std::size_t length) {
    const double share = static_cast<double>(length) / static_cast<double>(offset);
    const auto expected = static_cast<std::size_t>(static_cast<double>(begins.size()) * share);
    begins.reserve(std::max(expected + 16, begins.size() + begins.size() / 4));
}

const std::string& EmptyLine() {
    static const std::string empty;
    return empty;
}

}  // namespace

bool CAppSampleLines::Assign(std::string_view text) {
    m_strings.clear();
    m_begins.clear();
    m_text.reset();
    if (text.size() > MaxText) return false;
    m_text = std::make_shared<const std::string>(text);
    m_begins.reserve(text.size() / 64 + 4);
    m_begins.push_back(0);
    for (CLineScan scan(*m_text); scan.Next();) {
        if (m_begins.size() >= static_cast<std::size_t>(std::numeric_limits<int>::max())) {
            m_begins.clear();
            m_text.reset();
            return false;
        }
        const auto offset = scan.NextBegin();
        if (m_begins.size() == m_begins.capacity()) MakeRoom(m_begins, offset, text.size());
        m_begins.push_back(static_cast<std::uint32_t>(offset));
    }
    return true;
}

const std::string& CAppSampleLines::String(int line) const {
    if (line < 0 || line >= Count()) return EmptyLine();
    const auto [at, isNew] = m_strings.try_emplace(line);
    if (isNew) at->second = View(line);
    return at->second;
}

bool CAppSampleLines::operator==(const CAppSampleLines& other) const {
    if (m_begins != other.m_begins) return false;
    return m_text == other.m_text || (m_text && other.m_text && *m_text == *other.m_text);
}

void CAppSampleLines::Swap(CAppSampleLines& other) noexcept {
    m_text.swap(other.m_text);
    m_begins.swap(other.m_begins);
    m_strings.swap(other.m_strings);
}
