#include "plainsearch.h"

#include "tzparser/pattern/parserpatternhelper.h"

#include <cstring>
#include <exception>
#include <locale>
#include <string>

namespace {

boost::regex Compile(const std::string& statement) {
    CParserPatternHelper helper;
    std::string error;
    helper.Parse(statement, error);
    boost::regex expression;
    expression.imbue(std::locale::classic());
    expression.assign(helper.GetRegex(), boost::regex::perl | boost::regex::icase);
    return expression;
}

bool Matches(std::string_view text, boost::cmatch& match, const boost::regex& expression) {
    return boost::regex_search(text.data(), text.data() + text.size(), match, expression);
}

}  // namespace

CPlainSearch::CPlainSearch(const BenchText::Statements& statements) {
    for (const auto& statement : statements) m_expressions.push_back(Compile(statement));
}

std::size_t CPlainSearch::FirstMatches(const std::vector<std::string_view>& lines) const {
    boost::cmatch match;
    std::size_t found = 0;
    for (const auto& expression : m_expressions) {
        for (const auto line : lines) {
            if (line.empty() || !Matches(line, match, expression)) continue;
            ++found;
            break;
        }
    }
    return found;
}

std::size_t CPlainSearch::WholeMatches(std::string_view text) const {
    boost::cmatch match;
    std::size_t found = 0;
    for (const auto& expression : m_expressions) {
        try {
            if (Matches(text, match, expression)) ++found;
        } catch (const std::exception&) {
            continue;
        }
    }
    return found;
}

std::vector<std::string_view> SplitPlainly(std::string_view text) {
    std::vector<std::string_view> lines;
    lines.reserve(text.size() / 64 + 4);
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        const auto* found = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
        if (found == nullptr) break;
        const auto* lineFeed = static_cast<const char*>(found);
        lines.emplace_back(at, static_cast<std::size_t>(lineFeed - at));
        at = lineFeed + 1;
    }
    lines.emplace_back(at, static_cast<std::size_t>(end - at));
    return lines;
}
