#include "tzparser/pattern/appregex.h"

#include "host/runtime/diagnostics.h"

#include <algorithm>
#include <exception>
#include <iterator>

#include <boost/regex.hpp>

struct CAppRegexMatch::Impl {
    boost::cmatch results;
};

struct CAppRegex::Impl {
    boost::regex expression;
};

CAppRegexMatch::CAppRegexMatch() : m_impl(std::make_unique<Impl>()) {}
CAppRegexMatch::~CAppRegexMatch() = default;
CAppRegexMatch::CAppRegexMatch(CAppRegexMatch&&) noexcept = default;
CAppRegexMatch& CAppRegexMatch::operator=(CAppRegexMatch&&) noexcept = default;

int CAppRegexMatch::GroupCount() const noexcept {
    const auto size = m_impl->results.size();
    return size == 0 ? 0 : static_cast<int>(size) - 1;
}

std::ptrdiff_t CAppRegexMatch::Position(int group) const noexcept {
    const auto& sub = m_impl->results[group];
    return sub.matched ? m_impl->results.position(group) : -1;
}

std::string_view CAppRegexMatch::Text(int group) const noexcept {
    const auto& sub = m_impl->results[group];
    if (!sub.matched) return {};
    return {sub.first, static_cast<std::size_t>(sub.second - sub.first)};
}

CAppRegex::CAppRegex(std::string_view expression, unsigned flags)
    : m_impl(std::make_unique<Impl>()), m_text(expression) {
    try {
        m_impl->expression = BuildRegex(expression, flags | boost::regex::no_except);
        m_valid = m_impl->expression.status() == 0;
    } catch (const std::exception&) {
        m_valid = false;
    }
}

CAppRegex::~CAppRegex() = default;

// Runs the matcher over a text; what it throws becomes a note and AppRegexSearch_GaveUp.
template <class Run>
AppRegexSearch_e CAppRegex::Guard(std::string_view text, Run run) const noexcept {
    if (!m_valid) return AppRegexSearch_NoMatch;
    const char* begin = text.data() == nullptr ? "" : text.data();
    try {
        return run(begin, begin + text.size()) ? AppRegexSearch_Match : AppRegexSearch_NoMatch;
    } catch (...) {
        DiagnosticOutput("Catch any exception");
        return AppRegexSearch_GaveUp;
    }
}

AppRegexSearch_e CAppRegex::Search(std::string_view text, CAppRegexMatch& match) const noexcept {
    return Guard(text, [&](const char* begin, const char* end) {
        return boost::regex_search(begin, end, match.m_impl->results, m_impl->expression);
    });
}

AppRegexSearch_e CAppRegex::MatchWhole(std::string_view text,
                                       CAppRegexMatch& match) const noexcept {
    return Guard(text, [&](const char* begin, const char* end) {
        return boost::regex_match(begin, end, match.m_impl->results, m_impl->expression);
    });
}

bool CAppRegex::Replace(std::string& text, const std::string& replacement, bool replaceAll) const {
    std::string result;
    auto flags = boost::match_default | boost::format_perl;
    if (!replaceAll) flags |= boost::format_first_only;
    boost::regex_replace(std::back_inserter(result), text.cbegin(), text.cend(), m_impl->expression,
                         replacement, flags);
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
