// A hash table with open addressing. Lines of the second text are only looked up: one that the
// first text doesn't have is common with nothing and needs no number of its own.
#include "host/diff/difflines.h"

#include "host/diff/sequencediff.h"
#include "host/text/linescan.h"

#include <random>

#include <xxhash.h>

namespace {

constexpr int NoNumber = -1;
constexpr std::size_t FewestSlots = 64;

std::uint64_t MakeSeed() {
    try {
        std::random_device device;
        return (std::uint64_t{device()} << 32) | device();
    } catch (const std::exception&) {
        return 0x9E3779B97F4A7C15U;
    }
}

std::uint32_t HashOf(std::string_view line) {
    static const std::uint64_t seed = MakeSeed();
    return static_cast<std::uint32_t>(XXH3_64bits_withSeed(line.data(), line.size(), seed));
}

template <class Use>
void ForEachLine(std::string_view text, Use use) {
    std::size_t begin = 0;
    CLineScan scan(text);
    for (; scan.Next(); begin = scan.NextBegin()) use(text.substr(begin, scan.LineEnd() - begin));
    use(text.substr(begin));
}

}  // namespace

CDiffLines::CDiffLines(std::string_view text) : m_slots(FewestSlots, Slot{0, NoNumber}) {
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
        if (number == NoNumber) return;
        const auto place = static_cast<std::size_t>(m_places[static_cast<std::size_t>(number)]);
        if (place > expected) expected = place + 1;
    });
    return numbers;
}

int CDiffLines::Add(std::string_view line) {
    const auto hash = HashOf(line);
    auto& slot = m_slots[SlotOf(line, hash)];
    if (slot.number != NoNumber) return slot.number;
    const auto number = static_cast<int>(m_places.size());
    slot = {hash, number};
    m_places.push_back(static_cast<int>(m_lines.size()));
    if (m_places.size() * 2 > m_slots.size()) Grow();
    return number;
}

int CDiffLines::Find(std::string_view line) const {
    return m_slots[SlotOf(line, HashOf(line))].number;
}

// The slot that holds the line, or the free one where it belongs.
std::size_t CDiffLines::SlotOf(std::string_view line, std::uint32_t hash) const {
    const auto mask = m_slots.size() - 1;
    for (auto at = std::size_t{hash} & mask;; at = (at + 1) & mask) {
        const auto& slot = m_slots[at];
        if (slot.number == NoNumber) return at;
        if (slot.hash != hash) continue;
        const int place = m_places[static_cast<std::size_t>(slot.number)];
        if (m_lines[static_cast<std::size_t>(place)] == line) return at;
    }
}

void CDiffLines::Grow() {
    const auto slots = std::move(m_slots);
    m_slots.assign(slots.size() * 2, Slot{0, NoNumber});
    const auto mask = m_slots.size() - 1;
    for (const auto& slot : slots) {
        if (slot.number == NoNumber) continue;
        auto at = std::size_t{slot.hash} & mask;
        while (m_slots[at].number != NoNumber) at = (at + 1) & mask;
        m_slots[at] = slot;
    }
}
