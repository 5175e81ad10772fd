// The automaton of Aho and Corasick. A state stands for a beginning of some string: the longest one
// that the text read so far ends with. States are numbered by depth, so the children of a state
// have numbers in a row, and a state's failure (the longest shorter suffix that is a state too) has
// a smaller number than the state.
//
// The first states, those that a text visits nearly always, have complete rows: the next state for
// every class of bytes. The others find the next state among their children or go on with their
// failure; a text can't take more such steps down than it took up. So the memory is in proportion
// to the strings.
//
// A step has to wait for the one before it, so the processor would idle most of the time. A text of
// some length is therefore read at several places in turn, each with a state of its own.
#include "tzparser/identify/stringfinder.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr std::uint32_t Marked = 0x80000000U;
constexpr std::uint32_t NoString = 0xFFFFFFFFU;
constexpr std::uint32_t MaxRowCells = 1U << 20;
// Parts of so few bytes aren't worth the bytes that are read twice.
constexpr std::size_t ShortPart = 128;

std::uint8_t ByteAt(std::string_view text, std::size_t at) {
    return static_cast<std::uint8_t>(text[at]);
}

}  // namespace

struct CStringFinder::Pass {
    Found found;
    std::size_t left;
};

// One of the places that a text is read at.
struct CStringFinder::Lane {
    const std::uint8_t* at = nullptr;
    const std::uint8_t* end = nullptr;
    State state = 0;
};

CStringFinder::CStringFinder(const std::vector<std::string_view>& strings)
    : m_count(strings.size()) {
    for (const auto string : strings) m_longest = std::max(m_longest, string.size());
    NumberClasses(strings);
    MakeStates(strings);
    LinkFailures();
    FillRows();
}

void CStringFinder::NumberClasses(const std::vector<std::string_view>& strings) {
    for (const auto string : strings)
        for (const char c : string) m_classOf[static_cast<std::uint8_t>(c)] = 1;
    std::uint16_t last = 0;
    for (auto& byteClass : m_classOf)
        if (byteClass != 0) byteClass = ++last;
    while ((1U << m_classShift) <= last) ++m_classShift;
}

// A state is a range of the sorted strings and a depth down to which they are alike.
void CStringFinder::MakeStates(const std::vector<std::string_view>& strings) {
    struct Range {
        std::uint32_t first;
        std::uint32_t end;
        std::uint32_t depth;
    };
    std::vector<std::uint32_t> sorted(strings.size());
    std::iota(sorted.begin(), sorted.end(), 0U);
    std::sort(sorted.begin(), sorted.end(),
              [&strings](auto a, auto b) { return strings[a] < strings[b]; });
    std::vector<Range> ranges = {{0, static_cast<std::uint32_t>(strings.size()), 0}};
    m_classIn.push_back(0);
    for (std::size_t state = 0; state < ranges.size(); ++state) {
        auto [at, end, depth] = ranges[state];
        const bool isString = at < end && strings[sorted[at]].size() == depth;
        m_string.push_back(isString ? sorted[at++] : NoString);
        m_childBegin.push_back(static_cast<State>(ranges.size()));
        while (at < end) {
            const auto first = at;
            const auto byte = ByteAt(strings[sorted[first]], depth);
            while (at < end && ByteAt(strings[sorted[at]], depth) == byte) ++at;
            ranges.push_back({first, at, depth + 1});
            m_classIn.push_back(m_classOf[byte]);
        }
    }
    m_childBegin.push_back(static_cast<State>(ranges.size()));
}

void CStringFinder::LinkFailures() {
    const auto count = m_string.size();
    m_failure.assign(count, 0);
    m_end.assign(count, 0);
    for (State state = 0; state < count; ++state) {
        m_end[state] = m_string[state] != NoString ? state : m_end[m_failure[state]];
        for (auto child = m_childBegin[state]; child < m_childBegin[state + 1]; ++child) {
            State target = 0;
            for (auto from = state; from != 0 && target == 0;) {
                from = m_failure[from];
                target = Child(from, m_classIn[child]);
            }
            m_failure[child] = target;
        }
    }
}

void CStringFinder::FillRows() {
    const auto width = State{1} << m_classShift;
    m_rowCount =
        static_cast<State>(std::min<std::size_t>(m_string.size(), MaxRowCells >> m_classShift));
    m_rows.assign(std::size_t{m_rowCount} << m_classShift, 0);
    for (State state = 0; state < m_rowCount; ++state) {
        const auto row = m_rows.begin() + (std::ptrdiff_t{state} << m_classShift);
        const auto failure = m_rows.begin() + (std::ptrdiff_t{m_failure[state]} << m_classShift);
        if (state != 0) std::copy(failure, failure + width, row);
        for (auto child = m_childBegin[state]; child < m_childBegin[state + 1]; ++child)
            row[m_classIn[child]] = m_end[child] != 0 ? child | Marked : child;
    }
}

// 0 when there is none.
CStringFinder::State CStringFinder::Child(State state, std::uint16_t byteClass) const {
    const auto begin = m_classIn.begin() + m_childBegin[state];
    const auto end = m_classIn.begin() + m_childBegin[state + 1];
    const auto at = std::lower_bound(begin, end, byteClass);
    return at != end && *at == byteClass ? static_cast<State>(at - m_classIn.begin()) : 0;
}

CStringFinder::State CStringFinder::Step(State state, std::uint16_t byteClass) const {
    while (state >= m_rowCount) {
        const auto child = Child(state, byteClass);
        if (child != 0) return m_end[child] != 0 ? child | Marked : child;
        state = m_failure[state];
    }
    return m_rows[(std::size_t{state} << m_classShift) + byteClass];
}

// Where a string was found before, all that end with it were too.
void CStringFinder::Report(State state, Pass& pass) const {
    for (auto end = m_end[state]; end != 0; end = m_end[m_failure[end]]) {
        if (pass.found.Has(m_string[end])) return;
        pass.found.Add(m_string[end]);
        --pass.left;
    }
}

void CStringFinder::ReadOn(Lane lane, Pass& pass) const {
    while (lane.at != lane.end && pass.left != 0) {
        lane.state = Step(lane.state, m_classOf[*lane.at++]);
        if ((lane.state & Marked) == 0) continue;
        lane.state &= ~Marked;
        Report(lane.state, pass);
    }
}

// A lane begins so far before its part that it has seen all of a string that ends there.
CStringFinder::LaneList CStringFinder::Divide(const std::uint8_t* begin, std::size_t size) const {
    LaneList lanes;
    const auto part = size / lanes.size();
    const auto before = m_longest - 1;
    for (std::size_t i = 0; i < lanes.size(); ++i) {
        const bool isLast = i + 1 == lanes.size();
        lanes[i] = {begin + part * i - (i == 0 ? 0 : before),
                    begin + (isLast ? size : part * (i + 1)), 0};
    }
    return lanes;
}

// The first lane is the shortest, as there is nothing before its part. States are kept in locals
// and have complete rows, so that nothing but the next states is waited for.
void CStringFinder::ReadTogether(LaneList& lanes, Pass& pass) const {
    const State* const rows = m_rows.data();
    const std::uint16_t* const classOf = m_classOf.data();
    const auto shift = m_classShift;
    const auto count = static_cast<std::size_t>(lanes[0].end - lanes[0].at);
    std::array<State, LaneCount> states{};
    for (std::size_t i = 0; i < count; ++i) {
        State marks = 0;
        for (std::size_t k = 0; k < LaneCount; ++k) {
            states[k] = rows[(std::size_t{states[k]} << shift) + classOf[lanes[k].at[i]]];
            marks |= states[k];
        }
        if ((marks & Marked) == 0) continue;
        for (auto& state : states) {
            if ((state & Marked) == 0) continue;
            state &= ~Marked;
            Report(state, pass);
        }
        if (pass.left == 0) return;
    }
    for (std::size_t k = 0; k < LaneCount; ++k) {
        lanes[k].at += count;
        lanes[k].state = states[k];
    }
}

CStringFinder::Found CStringFinder::Find(std::string_view text) const {
    Pass pass{Found(m_count), m_count};
    const auto* begin = static_cast<const std::uint8_t*>(static_cast<const void*>(text.data()));
    const bool areRowsComplete = m_rowCount == m_string.size();
    if (areRowsComplete && text.size() / LaneCount > std::max(ShortPart, 2 * m_longest)) {
        auto lanes = Divide(begin, text.size());
        ReadTogether(lanes, pass);
        for (const auto& lane : lanes) ReadOn(lane, pass);
    } else {
        ReadOn({begin, begin + text.size(), 0}, pass);
    }
    return std::move(pass.found);
}
