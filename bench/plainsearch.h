#pragma once

#include "benchtext.h"

#include <cstddef>
#include <string_view>
#include <vector>

#include <boost/regex.hpp>

// CPlainSearch is the baseline: what a program pays that uses boost.regex as it is, with the
// expressions that the statements stand for, and keeps no result. The expressions are compiled once
// (case-insensitive, classic locale) and the match object is reused.
//
//     CPlainSearch plain(BenchText::SmallStatements());
//     plain.FirstMatches(SplitPlainly(text));             // 10: every statement found its line
class CPlainSearch {
public:
    explicit CPlainSearch(const BenchText::Statements& statements);

    // Searches line by line for the first match of each expression; empty lines are passed over, as
    // rules do. The number of expressions that matched.
    std::size_t FirstMatches(const std::vector<std::string_view>& lines) const;
    // Searches the whole text at once. The number of expressions that matched; one that the matcher
    // gives up on counts as none.
    std::size_t WholeMatches(std::string_view text) const;
    std::size_t Count() const { return m_expressions.size(); }

private:
    std::vector<boost::regex> m_expressions;
};

// The lines between line feeds, found with memchr.
std::vector<std::string_view> SplitPlainly(std::string_view text);
