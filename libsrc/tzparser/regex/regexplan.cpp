#include "tzparser/regex/regexplan.h"

#include "host/text/charset.h"

#include <boost/regex.hpp>

namespace {

// Making machine code costs as much as some dozens of searches.
constexpr int SearchesToJit = 40;

// Without a way out in between, so that the compiler takes many bytes at once.
bool HasLineEnd(std::string_view text) {
    unsigned found = 0;
    for (const char c : text)
        found |= static_cast<unsigned>(c == '\n') | static_cast<unsigned>(c == '\r') |
                 static_cast<unsigned>(c == '\f');
    return found != 0;
}

// Whether there are more than RegexFewBlanks blanks in a row. So long a run covers a multiple of
// the least such length, so only those places are looked at.
bool HasManyBlanks(std::string_view text) {
    constexpr std::size_t many = RegexFewBlanks + 1;
    for (std::size_t at = many - 1; at < text.size(); at += many) {
        if (!WhiteSpace.Has(text[at])) continue;
        auto begin = at;
        while (begin > 0 && WhiteSpace.Has(text[begin - 1])) --begin;
        auto end = at;
        while (end < text.size() && WhiteSpace.Has(text[end])) ++end;
        if (end - begin >= many) return true;
    }
    return false;
}

// Stores what was made, or takes what another thread has stored meanwhile.
template <class T>
const T* Publish(std::atomic<const T*>& slot, std::unique_ptr<const T> made) {
    const T* other = nullptr;
    if (slot.compare_exchange_strong(other, made.get(), std::memory_order_acq_rel))
        return made.release();
    return other;
}

}  // namespace

CRegexPlan::CRegexPlan(const boost::regex& expression) : m_searchesToJit(SearchesToJit) {
    const auto tree = ReadRegexTree(expression);
    if (!tree) return;
    m_hasTree = true;
    m_screen = CRegexScreen(*tree);
    if (tree->isExact) m_trust = TrustOfRegex(*tree);
}

CRegexPlan::~CRegexPlan() {
    delete m_jit.load();
    for (auto& automaton : m_automata) delete automaton.load();
}

bool CRegexPlan::IsTrusted(std::string_view text) const noexcept {
    // A length of 0 promises nothing, for the empty text neither.
    const auto isWithin = [&](std::size_t length) { return length > 0 && text.size() <= length; };
    if (!isWithin(m_trust.length) &&
        (!isWithin(m_trust.lengthWithFewBlanks) || HasManyBlanks(text)))
        return false;
    return !m_trust.isForOneLine || !HasLineEnd(text);
}

// Threads that count at once may lose counts, or both be told; neither does harm.
bool CRegexPlan::IsJitDue() const noexcept {
    const auto left = m_searchesToJit.load(std::memory_order_relaxed);
    if (left < 0) return false;
    m_searchesToJit.store(left - 1, std::memory_order_relaxed);
    return left == 0;
}

const CRegexJit* CRegexPlan::MakeJit(const boost::regex& expression) const {
    const auto tree = ReadRegexTree(expression);
    if (!tree) return nullptr;
    auto made = CRegexJit::Make(*tree);
    return made ? Publish(m_jit, std::move(made)) : nullptr;
}

bool CRegexPlan::CanMatch(const boost::regex& expression, std::string_view text,
                          RegexRange_e range) const {
    if (!m_hasTree) return true;
    auto& slot = m_automata[static_cast<std::size_t>(range)];
    const auto* automaton = slot.load(std::memory_order_acquire);
    if (automaton == nullptr) {
        const auto tree = ReadRegexTree(expression);
        if (!tree) return true;
        automaton = Publish(slot, std::make_unique<const CRegexAutomaton>(*tree, range));
    }
    return automaton->CanMatch(text);
}
