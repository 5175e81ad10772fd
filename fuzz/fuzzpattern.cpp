// Statements of the statement language: whatever the compiler accepts, the expression compiles or
// is told, and searching with it ends.
#include "tzparser/pattern/appregex.h"
#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/pattern/patternscan.h"
#include "tzparser/text/appregexbuild.h"

#include <cstdint>
#include <cstdlib>
#include <string>

#include <boost/regex.hpp>

namespace {

// The scanner finds the variables that the expression for them finds.
void CompareScan(const std::string& text) {
    static const auto expression = BuildRegex(PatternVariableRegex, kRuleRegexFlags);
    CPatternScan scan(text);
    boost::smatch match;
    auto at = text.cbegin();
    while (boost::regex_search(at, text.cend(), match, expression)) {
        if (!scan.Next() || scan.Match() != match[0].str() || scan.Type() != match[1].str() ||
            scan.Name() != match[2].str() || scan.Alternatives() != match[3].str())
            std::abort();
        at = match[0].second;
    }
    if (scan.Next()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const auto cut = input.find('\n');
    const std::string statement = input.substr(0, cut);
    const std::string line = cut == std::string::npos ? std::string() : input.substr(cut + 1);
    CompareScan(statement);
    CParserPatternHelper helper;
    std::string error;
    if (!helper.Parse(statement, error)) return 0;
    std::string name;
    std::vector<std::pair<std::string, std::string>> spans;
    helper.GetMlineVariables(name, spans);
    const CAppRegex regex(helper.GetRegex(), CAppRegex::RuleFlags);
    std::string reason;
    std::size_t offset = 0;
    if (CAppRegex::Diagnose(helper.GetRegex(), reason, offset) && offset > helper.GetRegex().size())
        std::abort();
    CAppRegexMatch match;
    if (regex.Search(line, match) != AppRegexSearch_Match) return 0;
    for (int group = 0; group <= match.GroupCount(); ++group) {
        const auto text = match.Text(group);
        const auto position = match.Position(group);
        if (position >= 0 &&
            line.compare(static_cast<std::size_t>(position), text.size(), text) != 0)
            std::abort();
    }
    return 0;
}
