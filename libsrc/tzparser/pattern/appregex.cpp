// How a search is made:
//
// 1. A string that every match holds is looked for. Nearly all searches that find nothing end here.
// 2. On a text on which the plain matcher can't give up, the expression as machine code decides. It
//    finds what the plain matcher finds; where it can't be made, or stops at a limit of its own,
//    the plain matcher searches.
// 3. On any other text an automaton is asked first. What it rules out is no match: the plain
//    matcher would say so too or give up, which means the same. For the rest the plain matcher
//    decides.
#include "tzparser/pattern/appregex.h"

#include "host/runtime/diagnostics.h"
#include "tzparser/regex/regexlanes.h"
#include "tzparser/regex/regexplan.h"
#include "tzparser/regex/regexvalidity.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <iterator>

// The matcher is compiled into this library, so that it takes its memory from regexblocks.cpp.
#define BOOST_REGEX_NO_EXTERNAL_TEMPLATES
#include <boost/regex.hpp>

namespace {

constexpr unsigned KnownFlags = kRuleRegexFlags;

}  // namespace

struct CAppRegexMatch::Impl {
    boost::cmatch plain;
    CRegexJitMatch fast;
    const char* text = nullptr;  // that the fast one holds places of; null when the plain one holds
    int groups = 0;
};

CAppRegexMatch::CAppRegexMatch() : m_impl(std::make_unique<Impl>()) {}
CAppRegexMatch::~CAppRegexMatch() = default;
CAppRegexMatch::CAppRegexMatch(CAppRegexMatch&&) noexcept = default;
CAppRegexMatch& CAppRegexMatch::operator=(CAppRegexMatch&&) noexcept = default;

int CAppRegexMatch::GroupCount() const noexcept {
    if (m_impl->text != nullptr) return m_impl->groups;
    const auto size = m_impl->plain.size();
    return size == 0 ? 0 : static_cast<int>(size) - 1;
}

std::ptrdiff_t CAppRegexMatch::Position(int group) const noexcept {
    // The matcher keeps what stands around the match below group 0.
    if (group < 0 || group > GroupCount()) return -1;
    if (m_impl->text != nullptr) return m_impl->fast.Begin(group);
    return m_impl->plain[group].matched ? m_impl->plain.position(group) : -1;
}

std::string_view CAppRegexMatch::Text(int group) const noexcept {
    const auto begin = Position(group);
    if (begin < 0) return {};
    if (m_impl->text != nullptr)
        return {m_impl->text + begin, static_cast<std::size_t>(m_impl->fast.End(group) - begin)};
    const auto& sub = m_impl->plain[group];
    return {sub.first, static_cast<std::size_t>(sub.second - sub.first)};
}

struct CAppRegex::Impl {
    ~Impl() { delete plan.load(); }

    // The plan of the expression, made on its first search.
    const CRegexPlan& Plan(std::string_view text) {
        if (const auto* known = plan.load(std::memory_order_acquire)) return *known;
        auto made = std::make_unique<const CRegexPlan>(Plain(text));
        const CRegexPlan* other = nullptr;
        if (plan.compare_exchange_strong(other, made.get(), std::memory_order_acq_rel))
            return *made.release();
        return *other;
    }

    const boost::regex& Plain(std::string_view text) const { return lanes.Mine(text, flags); }

    unsigned flags = 0;
    CRegexLanes lanes;
    std::atomic<const CRegexPlan*> plan{nullptr};
};

CAppRegex::CAppRegex(std::string_view expression, unsigned flags)
    : m_impl(std::make_unique<Impl>()), m_text(expression) {
    m_impl->flags = flags | boost::regex::no_except;
    m_valid = (flags & ~KnownFlags) == 0 && IsSurelyValidRegex(m_text);
    if (m_valid) return;  // compiled when first searched
    try {
        m_valid = m_impl->lanes.Compile(m_text, m_impl->flags);
    } catch (const std::exception&) {
        m_valid = false;
    }
}

CAppRegex::~CAppRegex() = default;

// Runs a search; what it throws becomes a note and AppRegexSearch_GaveUp.
template <class Run>
AppRegexSearch_e CAppRegex::Guard(Run run) const noexcept {
    if (!m_valid) return AppRegexSearch_NoMatch;
    try {
        return run() ? AppRegexSearch_Match : AppRegexSearch_NoMatch;
    } catch (...) {
        DiagnosticOutput("Catch any exception");
        return AppRegexSearch_GaveUp;
    }
}

bool CAppRegex::RunPlain(std::string_view text, CAppRegexMatch& match, bool isWhole) const {
    auto& result = *match.m_impl;
    const char* begin = text.data() == nullptr ? "" : text.data();
    const char* end = begin + text.size();
    result.text = nullptr;
    const auto& expression = m_impl->Plain(m_text);
    return isWhole ? boost::regex_match(begin, end, result.plain, expression)
                   : boost::regex_search(begin, end, result.plain, expression);
}

// For a text on which plain searching surely ends.
bool CAppRegex::RunTrusted(std::string_view text, CAppRegexMatch& match) const {
    const auto& plan = m_impl->Plan(m_text);
    const auto* jit = plan.Jit();
    if (jit == nullptr && plan.IsJitDue()) jit = plan.MakeJit(m_impl->Plain(m_text));
    if (jit == nullptr) return RunPlain(text, match, false);
    auto& result = *match.m_impl;
    const char* begin = text.data() == nullptr ? "" : text.data();
    const auto found = jit->Search({begin, text.size()}, result.fast);
    if (!found) return RunPlain(text, match, false);
    result.text = begin;
    result.groups = jit->GroupCount();
    return *found;
}

AppRegexSearch_e CAppRegex::Search(std::string_view text, CAppRegexMatch& match) const noexcept {
    return Guard([&] {
        const auto& plan = m_impl->Plan(m_text);
        if (!plan.Passes(text)) return false;
        if (plan.IsTrusted(text)) return RunTrusted(text, match);
        return plan.CanMatch(m_impl->Plain(m_text), text, RegexRange_Anywhere) &&
               RunPlain(text, match, false);
    });
}

AppRegexSearch_e CAppRegex::SearchTelling(std::string_view text,
                                          CAppRegexMatch& match) const noexcept {
    return Guard([&] {
        const auto& plan = m_impl->Plan(m_text);
        if (plan.IsTrusted(text)) return plan.Passes(text) && RunTrusted(text, match);
        return RunPlain(text, match, false);
    });
}

AppRegexSearch_e CAppRegex::SearchPlain(std::string_view text,
                                        CAppRegexMatch& match) const noexcept {
    return Guard([&] { return RunPlain(text, match, false); });
}

AppRegexSearch_e CAppRegex::MatchWhole(std::string_view text,
                                       CAppRegexMatch& match) const noexcept {
    return Guard([&] {
        const auto& plan = m_impl->Plan(m_text);
        return plan.Passes(text) &&
               plan.CanMatch(m_impl->Plain(m_text), text, RegexRange_WholeText) &&
               RunPlain(text, match, true);
    });
}

AppRegexSearch_e CAppRegex::MatchWholePlain(std::string_view text,
                                            CAppRegexMatch& match) const noexcept {
    return Guard([&] { return RunPlain(text, match, true); });
}

bool CAppRegex::Replace(std::string& text, const std::string& replacement, bool replaceAll) const {
    std::string result;
    auto flags = boost::match_default | boost::format_perl;
    if (!replaceAll) flags |= boost::format_first_only;
    boost::regex_replace(std::back_inserter(result), text.cbegin(), text.cend(),
                         m_impl->Plain(m_text), replacement, flags);
    if (result == text) return false;
    text = std::move(result);
    return true;
}

bool CAppRegex::Diagnose(std::string_view expression, std::string& reason, std::size_t& offset) {
    offset = 0;
    try {
        BuildRegex(expression, boost::regex::perl | boost::regex::icase);
        return false;
    } catch (const boost::regex_error& error) {
        reason = error.what();
        // The library's words go on with the fragment around the place; the offset tells that
        // better.
        reason.resize(std::min(reason.size(), reason.find("  The error occurred")));
        if (error.position() > 0) offset = static_cast<std::size_t>(error.position());
    } catch (const std::exception& error) {
        reason = error.what();
    }
    return true;
}
