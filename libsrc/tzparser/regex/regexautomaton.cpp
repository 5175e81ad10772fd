// Subset construction, done while a text is read.
//
// 1. The tree becomes steps: take a byte of a set, fork, assert, match. Counted repeats are written
//    out; when that gets too long the rest is one unbounded repeat, which fits more.
// 2. A state is the set of steps where a match may stand, and what the last byte was as far as
//    assertions care. Assertions stay unresolved in it: they are decided when the next byte is
//    known, so "$" or "\b" never need a look ahead.
// 3. Bytes that all sets treat alike form a class, and a state has one way for each class and one
//    for the text's end. Ways are worked out under a lock the first time they are gone and read
//    without one afterwards.
// 4. In a state that nearly all bytes lead back to (between a failed line start and the next, say)
//    the few others are searched for, sixteen bytes at a time.
#include "tzparser/regex/regexautomaton.h"

#include <algorithm>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

constexpr std::size_t MaxSteps = 600;
constexpr std::size_t MaxMemory = 256 * 1024;

// The first place from `at` on of one of three bytes, the text's size without any.
std::size_t FindAny(std::string_view text, std::size_t at, const std::array<char, 3>& bytes) {
#if defined(__SSE2__)
    const auto first = _mm_set1_epi8(bytes[0]);
    const auto second = _mm_set1_epi8(bytes[1]);
    const auto third = _mm_set1_epi8(bytes[2]);
    for (; at + sizeof(__m128i) <= text.size(); at += sizeof(__m128i)) {
        __m128i block;
        std::memcpy(&block, text.data() + at, sizeof(block));
        const auto hits =
            _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(block, first), _mm_cmpeq_epi8(block, second)),
                         _mm_cmpeq_epi8(block, third));
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(hits));
        if (mask != 0) return at + static_cast<std::size_t>(__builtin_ctz(mask));
    }
#endif
    while (at < text.size() && text[at] != bytes[0] && text[at] != bytes[1] && text[at] != bytes[2])
        ++at;
    return at;
}

}  // namespace

// Writes the steps from the expression's end to its beginning, so that each knows its next.
class CRegexAutomaton::CBuilder {
public:
    CBuilder(std::vector<Step>& steps, std::vector<RegexBytes>& sets)
        : m_steps(steps), m_sets(sets) {}

    Place Add(Step step) {
        m_steps.push_back(step);
        return static_cast<Place>(m_steps.size() - 1);
    }

    Place Parts(const std::vector<RegexNode>& parts, Place next) {
        for (auto part = parts.rbegin(); part != parts.rend(); ++part) next = Node(*part, next);
        return next;
    }

    bool SeesSides() const { return m_seesSides; }

private:
    Place Node(const RegexNode& node, Place next) {
        Step step;
        step.next = next;
        switch (node.kind) {
            case RegexNode_Bytes:
                step.kind = Step_Bytes;
                step.set = SetOf(node.bytes);
                return Add(step);
            case RegexNode_Assert:
                m_seesSides = true;
                step.kind = Step_Assert;
                step.assertion = node.assertion;
                return Add(step);
            case RegexNode_Choice:
                return Choice(node, next);
            case RegexNode_Repeat:
                return Repeat(node, next);
            default:
                return Parts(node.parts, next);
        }
    }

    std::uint16_t SetOf(const RegexBytes& bytes) {
        const auto found = std::find(m_sets.begin(), m_sets.end(), bytes);
        const auto index = found - m_sets.begin();
        if (found == m_sets.end()) m_sets.push_back(bytes);
        return static_cast<std::uint16_t>(index);
    }

    Place Fork(Place next, Place other) {
        Step step;
        step.kind = Step_Fork;
        step.next = next;
        step.other = other;
        return Add(step);
    }

    Place Choice(const RegexNode& node, Place next) {
        auto place = Parts(node.parts.back().parts, next);
        for (auto branch = node.parts.size() - 1; branch-- > 0;)
            place = Fork(Parts(node.parts[branch].parts, next), place);
        return place;
    }

    Place Repeat(const RegexNode& node, Place next) {
        if (node.max == 0) return next;
        const auto size = SizeOf(node.parts);
        const auto room = m_steps.size() < MaxSteps ? (MaxSteps - m_steps.size()) / 2 : 0;
        const auto copies = room / (size + 1);
        Place place = next;
        auto must = node.min;
        if (node.max == RegexNoMaximum || node.max > copies) {
            place = Loop(node, next);
            must = std::min(must, copies);
        } else {
            for (auto i = node.min; i < node.max; ++i) place = Fork(Parts(node.parts, place), next);
        }
        for (; must > 0; --must) place = Parts(node.parts, place);
        return place;
    }

    Place Loop(const RegexNode& node, Place next) {
        const auto fork = Fork(0, next);
        const auto body = Parts(node.parts, fork);
        m_steps[fork].next = body;
        return fork;
    }

    // Written once; repeats inside may write more.
    static std::size_t SizeOf(const std::vector<RegexNode>& parts) {
        std::size_t size = 0;
        for (const auto& part : parts) {
            auto one = SizeOf(part.parts) + 1;
            if (part.kind == RegexNode_Repeat && part.max != 0)
                one *= std::min<std::size_t>(part.max == RegexNoMaximum ? part.min + 1 : part.max,
                                             MaxSteps);
            size = std::min(size + one, MaxSteps);
        }
        return size;
    }

    std::vector<Step>& m_steps;
    std::vector<RegexBytes>& m_sets;
    bool m_seesSides = false;
};

CRegexAutomaton::CRegexAutomaton(const RegexTree& tree, RegexRange_e range) : m_range(range) {
    CBuilder builder(m_steps, m_sets);
    m_start = builder.Parts(tree.root.parts, builder.Add(Step()));
    NumberBytes(builder.SeesSides());
    m_first = Keep({{m_start}, Side_None});
}

CRegexAutomaton::~CRegexAutomaton() = default;

CRegexAutomaton::Side_e CRegexAutomaton::SideOf(std::size_t byte) const {
    if (byte == '\n') return Side_LineFeed;
    if (byte == '\r') return Side_Return;
    if (byte == '\f') return Side_FormFeed;
    return WordBytes()[byte] ? Side_Word : Side_Other;
}

void CRegexAutomaton::NumberBytes(bool seesSides) {
    std::map<std::pair<std::vector<bool>, Side_e>, std::uint8_t> numbers;
    m_setTakes.resize(m_sets.size());
    for (std::size_t byte = 0; byte < m_classOf.size(); ++byte) {
        const auto side = seesSides ? SideOf(byte) : Side_Other;
        std::vector<bool> takes;
        for (const auto& set : m_sets) takes.push_back(set[byte]);
        const auto [at, isNew] =
            numbers.emplace(std::make_pair(takes, side), static_cast<std::uint8_t>(numbers.size()));
        m_classOf[byte] = at->second;
        if (!isNew) continue;
        m_sides.push_back(side);
        for (std::size_t set = 0; set < m_sets.size(); ++set)
            m_setTakes[set].push_back(takes[set] ? 1 : 0);
    }
    m_sides.push_back(Side_None);
    for (auto& takes : m_setTakes) takes.push_back(0);
}

bool CRegexAutomaton::Holds(RegexAssert_e assertion, Side_e before, Side_e after) const {
    const auto endsLine = [](Side_e side) {
        return side == Side_LineFeed || side == Side_Return || side == Side_FormFeed;
    };
    const bool isInside = before == Side_Return && after == Side_LineFeed;
    const bool isWordBefore = before == Side_Word;
    const bool isWordAfter = after == Side_Word;
    switch (assertion) {
        case RegexAssert_LineStart:
            return before == Side_None || (endsLine(before) && !isInside);
        case RegexAssert_LineEnd:
            return after == Side_None || (endsLine(after) && !isInside);
        case RegexAssert_TextStart:
            return before == Side_None;
        case RegexAssert_TextEnd:
            return after == Side_None;
        case RegexAssert_SoftTextEnd:
            return after == Side_None || endsLine(after);  // what comes later isn't looked at
        case RegexAssert_WordEdge:
            return isWordBefore != isWordAfter;
        case RegexAssert_WithinWord:
            return before != Side_None && after != Side_None && isWordBefore == isWordAfter;
        case RegexAssert_WordStart:
            return !isWordBefore && isWordAfter;
        default:
            return isWordBefore && !isWordAfter;
    }
}

// Where a match may stand after one more class of byte; true when it is there already.
bool CRegexAutomaton::Move(const State& from, std::size_t byteClass, State& to) const {
    const auto after = m_sides[byteClass];
    const bool isEnd = byteClass + 1 == Classes();
    std::vector<char> seen(m_steps.size());
    std::vector<Place> open(from.first);
    to.first.clear();
    to.second = after;
    while (!open.empty()) {
        const auto place = open.back();
        open.pop_back();
        if (seen[place] != 0) continue;
        seen[place] = 1;
        const auto& step = m_steps[place];
        if (step.kind == Step_Match) {
            if (m_range == RegexRange_Anywhere || isEnd) return true;
        } else if (step.kind == Step_Bytes) {
            if (m_setTakes[step.set][byteClass] != 0) to.first.push_back(step.next);
        } else if (step.kind == Step_Fork) {
            open.push_back(step.other);
            open.push_back(step.next);
        } else if (Holds(step.assertion, from.second, after)) {
            open.push_back(step.next);
        }
    }
    if (m_range == RegexRange_Anywhere) to.first.push_back(m_start);
    std::sort(to.first.begin(), to.first.end());
    to.first.erase(std::unique(to.first.begin(), to.first.end()), to.first.end());
    return false;
}

// Null when there is no room for another state; the first one always has it.
const CRegexAutomaton::Way* CRegexAutomaton::Keep(State state) const {
    const auto found = m_rows.find(state);
    if (found != m_rows.end()) return found->second.get();
    constexpr std::size_t ofMaps = 160;
    const auto size = Classes() * sizeof(Way) + state.first.size() * sizeof(Place) + ofMaps;
    if (m_memory + size > MaxMemory && !m_rows.empty()) return nullptr;
    m_memory += size;
    const auto at = m_rows.emplace(std::move(state), std::make_unique<Way[]>(Classes())).first;
    m_states.emplace(at->second.get(), &at->first);
    return at->second.get();
}

CRegexAutomaton::State CRegexAutomaton::StateOf(const Way* row) const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return *m_states.at(row);
}

// The row that a way leads to, worked out and kept; null when there is no room for it.
const CRegexAutomaton::Way* CRegexAutomaton::Next(const Way& way, const Way* row,
                                                  std::size_t byteClass) const {
    if (const auto* known = way.row.load(std::memory_order_acquire)) return known;
    State to;
    const bool isMatch = Move(StateOf(row), byteClass, to);
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto* next = isMatch ? &m_matched : Keep(std::move(to));
    if (next != nullptr) way.row.store(next, std::memory_order_release);
    return next;
}

// Works all ways of a row out.
void CRegexAutomaton::FindRest(const Way* row, Rest& rest) const {
    rest = Rest();
    rest.row = row;
    std::size_t count = 0;
    for (std::size_t byte = 0; byte < m_classOf.size() && count <= rest.bytes.size(); ++byte) {
        const auto byteClass = m_classOf[byte];
        if (Next(row[byteClass], row, byteClass) == row) continue;
        if (count < rest.bytes.size()) rest.bytes[count] = static_cast<char>(byte);
        ++count;
    }
    if (count == 0 || count > rest.bytes.size()) return;
    for (auto unused = count; unused < rest.bytes.size(); ++unused)
        rest.bytes[unused] = rest.bytes[0];
    rest.count = count;
}

bool CRegexAutomaton::CanMatch(std::string_view text) const {
    constexpr int many = 8;
    const auto* row = m_first;
    Rest rest;
    int same = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (row == rest.row && rest.count != 0) {
            at = FindAny(text, at, rest.bytes);
            if (at == text.size()) break;
        } else if (same == many && row != rest.row) {
            FindRest(row, rest);
        }
        const auto byteClass = m_classOf[static_cast<unsigned char>(text[at])];
        const auto* next = Next(row[byteClass], row, byteClass);
        if (next == &m_matched) return true;
        if (next == nullptr) return CanMatchUnkept(StateOf(row), text.substr(at));
        same = next == row ? same + 1 : 0;
        row = next;
    }
    const auto end = Classes() - 1;
    const auto* last = Next(row[end], row, end);
    return last == nullptr ? CanMatchUnkept(StateOf(row), {}) : last == &m_matched;
}

bool CRegexAutomaton::CanMatchUnkept(State state, std::string_view rest) const {
    State to;
    for (const char c : rest) {
        if (Move(state, m_classOf[static_cast<unsigned char>(c)], to)) return true;
        std::swap(state, to);
    }
    return Move(state, Classes() - 1, to);
}
