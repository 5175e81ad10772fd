// Lines of the second text are only looked up: one that the first text doesn't have is common with
// nothing and needs no number of its own.
#include "host/diff/difflines.h"

#include "host/diff/sequencediff.h"
#include "host/text/linescan.h"

namespace {

template <class Use>
void ForEachLine(std::string_view text, Use use) {
    std::size_t begin = 0;
    CLineScan scan(text);
    for (; scan.Next(); begin = scan.NextBegin()) use(text.substr(begin, scan.LineEnd() - begin));
    use(text.substr(begin));
}

}  // namespace

CDiffLines::CDiffLines(std::string_view text) {
    ForEachLine(text, [this](std::string_view line) {
        m_numbers.push_back(Add(line));
        m_lines.push_back(line);
    });
}

CommonLines CDiffLines::Compare(std::string_view second) const {
    const auto numbers = NumbersOf(second);
    return CSequenceDiff::Compare(m_numbers, numbers,
                                  SequenceDiffLimits::For(m_numbers.size() + numbers.size()));
}

// Most lines of a second text stand behind the same line as in the first: comparing them with that
// one is quicker than to hash them. A line that isn't in the first text at all is taken for a new
// one, which leaves the expectation as it was.
std::vector<int> CDiffLines::NumbersOf(std::string_view second) const {
    std::vector<int> numbers;
    numbers.reserve(m_numbers.size());
    std::size_t expected = 0;
    ForEachLine(second, [&](std::string_view line) {
        if (expected < m_lines.size() && m_lines[expected] == line) {
            numbers.push_back(m_numbers[expected++]);
            return;
        }
        const int number = numbers.emplace_back(Find(line));
        if (number == CTextSlots::NoNumber) return;
        const auto place = static_cast<std::size_t>(m_places[static_cast<std::size_t>(number)]);
        if (place > expected) expected = place + 1;
    });
    return numbers;
}

std::string_view CDiffLines::TextOf(int number) const {
    return m_lines[static_cast<std::size_t>(m_places[static_cast<std::size_t>(number)])];
}

int CDiffLines::Add(std::string_view line) {
    const auto next = static_cast<int>(m_places.size());
    const int number = m_slots.Add(line, next, [this](int known) { return TextOf(known); });
    if (number == next) m_places.push_back(static_cast<int>(m_lines.size()));
    return number;
}

int CDiffLines::Find(std::string_view line) const {
    return m_slots.Find(line, [this](int number) { return TextOf(number); });
}
