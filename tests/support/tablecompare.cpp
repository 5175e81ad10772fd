#include "support/tablecompare.h"

#include "tzparser/rule/appparserulesample.h"
#include "tzparser/rule/appsamplelines.h"
#include "tzparser/table/appparseruletable.h"
#include "tzparser/text/appstrutil.h"

#include "support/letdump.h"

namespace {

std::vector<std::string> LinesOf(const std::string& text) {
    CAppSampleLines split;
    split.Assign(text);
    std::vector<std::string> lines;
    for (int line = 0; line < split.Count(); ++line) lines.emplace_back(split.View(line));
    return lines;
}

void Configure(CAppParseRuleTable& rule, const CPlainTable& plain) {
    rule.SetHeader(AppStrUtil::StrJoin(plain.headers, ";"));
    for (const auto& [header, variable] : plain.headerVars) rule.AddHeaderVar(header, variable);
    for (const auto& variable : plain.followVars) rule.AddFollowVar(variable);
    rule.SetAlign(plain.align);
    rule.SetAlignRange(plain.alignRange);
    rule.SetEndCond(plain.endCondition);
    rule.SetSkipLine(plain.skipLine);
    rule.SetIsSkipLine(plain.isSkipLine);
    rule.SetIsUsePreVars(plain.isUsePreVars);
}

// Variables without a value aren't told from those that don't stand in the map.
std::string Dump(bool found, const CPlainTable::Values_t& values) {
    auto filled = values;
    for (auto at = filled.begin(); at != filled.end();)
        at = at->second.empty() ? filled.erase(at) : std::next(at);
    return (found ? "found\n" : "not found\n") + DumpPositions(filled);
}

}  // namespace

std::string TableDifference(CPlainTable& plain, const std::string& text) {
    CAppParseRuleSample sample("");
    auto* rule = new CAppParseRuleTable(&sample);
    sample.AddChildRule(rule);
    Configure(*rule, plain);
    const bool ruleFound = sample.Parse(text, 0, -1, nullptr);
    const bool plainFound = plain.Read(LinesOf(text));
    const auto ours = Dump(ruleFound, rule->GetVariablePos());
    const auto wanted = Dump(plainFound, plain.Values());
    if (ours == wanted) return {};
    return "the rule: " + ours + "as described: " + wanted;
}

bool ReadPlainTable(const std::string& bytes, CPlainTable& plain, std::string& text) {
    const auto settingsEnd = bytes.find('\n');
    const auto headersEnd =
        settingsEnd == std::string::npos ? settingsEnd : bytes.find('\n', settingsEnd + 1);
    if (headersEnd == std::string::npos || settingsEnd < 3) return false;
    plain.align = (bytes[0] - '0') & 3;
    plain.skipLine = (bytes[1] - '0') & 3;
    plain.isSkipLine = plain.skipLine != 0;
    plain.isUsePreVars = bytes[2] == 'p';
    const auto rest = bytes.substr(3, settingsEnd - 3);
    const auto bar = rest.find('|');
    plain.alignRange = rest.substr(0, bar);
    if (bar != std::string::npos) plain.endCondition = rest.substr(bar + 1);
    const auto headers = bytes.substr(settingsEnd + 1, headersEnd - settingsEnd - 1);
    plain.headers = AppStrUtil::StrSplit(headers, ";", false);
    int number = 0;
    for (auto& header : plain.headers) {
        const bool isMapped = header.empty() || header.back() != '-';
        if (!isMapped) header.pop_back();
        header.erase(0, header.find_first_not_of(" \t\n\r"));
        header.erase(header.find_last_not_of(" \t\n\r") + 1);
        const auto variable = "$v" + std::to_string(number++);
        if (!isMapped) continue;
        plain.headerVars[header] = variable;
        plain.followVars.insert(variable);
    }
    // One empty header can't be written: an empty text is no header.
    if (plain.headers.size() == 1 && plain.headers[0].empty()) plain.headers.clear();
    text = bytes.substr(headersEnd + 1);
    return true;
}
