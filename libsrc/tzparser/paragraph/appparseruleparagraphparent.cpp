// Parent lines: variables that stand before or between the paragraphs.
//
// All lines from the first of the range through the last begin are read, open or not. What is found
// overwrites, in the first child, the values of the paragraphs below. Groups go to the variables by
// their number alone: a "$_dummy" isn't passed over here.
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/rule/runlines.h"

#include <algorithm>

namespace {

// Joined lines, each with its line feed, without the line ends behind the last.
struct JoinedLines {
    std::string text;
    std::vector<std::size_t> offsets;

    std::size_t LineOf(std::size_t offset) const {
        const auto behind = std::upper_bound(offsets.begin(), offsets.end(), offset);
        return static_cast<std::size_t>(behind - offsets.begin()) - 1;
    }
};

template <class View>
JoinedLines Join(int first, int last, View view) {
    JoinedLines joined;
    for (int line = first; line <= last; ++line) {
        joined.offsets.push_back(joined.text.size());
        joined.text.append(view(line)).push_back('\n');
    }
    joined.text.erase(joined.text.find_last_not_of("\r\n") + 1);
    return joined;
}

// A group that took no part stands at the begin of its match's line, with the columns -1.
CAppTextLet LetOfGroup(const CAppRegexMatch& match, int group, std::size_t searchBegin,
                       const JoinedLines& joined, int firstLine) {
    const bool tookPart = match.Position(group) >= 0;
    const auto begin = searchBegin + static_cast<std::size_t>(match.Position(tookPart ? group : 0));
    const auto end = begin + match.Text(group).size();
    const auto beginLine = joined.LineOf(begin);
    const auto endLine = joined.LineOf(end);
    CAppTextLet let(firstLine + static_cast<int>(beginLine), -1,
                    firstLine + static_cast<int>(endLine), -1, std::string(match.Text(group)));
    if (!tookPart) return let;
    let.beginCol = static_cast<int>(begin - joined.offsets[beginLine]);
    let.endCol = static_cast<int>(end - joined.offsets[endLine]);
    return let;
}

int GroupsWithName(const CAppRegexMatch& match, const std::vector<std::string>& names) {
    return std::min(match.GroupCount(), static_cast<int>(names.size()));
}

}  // namespace

void CAppParseRuleParagraph::ParseParentLine(const Pattern& pattern, Range range) {
    if (!pattern.regex || pattern.names.empty()) return;
    ParentValues values;
    if (pattern.isMultiLine)
        ParseParentLineUseMultiLineMode(pattern, range, values);
    else
        ParseParentLineUseSingleLineMode(pattern, range, values);
    auto* keyword = GetFirstKeywordRule();
    if (!values.empty() && keyword != nullptr) keyword->SetVariableValueOfParentLine(values);
}

void CAppParseRuleParagraph::ParseParentLineUseSingleLineMode(const Pattern& pattern, Range range,
                                                              ParentValues& values) {
    const CRunLines lines(*this, GetSampleLines());
    auto& match = m_scratch->match;
    for (int line = range.first; line <= range.last; ++line) {
        const auto text = lines.Wrapped(line);
        if (text.empty() || pattern.regex->Search(text, match) != AppRegexSearch_Match) continue;
        for (int group = 1; group <= GroupsWithName(match, pattern.names); ++group) {
            const auto value = match.Text(group);
            const auto begin = static_cast<int>(match.Position(group));
            values[pattern.names[static_cast<std::size_t>(group) - 1]].emplace_back(
                line, begin, line, begin + static_cast<int>(value.size()), std::string(value));
        }
    }
}

// A match that is empty is taken once, as the search behind it would find it again.
void CAppParseRuleParagraph::ParseParentLineUseMultiLineMode(const Pattern& pattern, Range range,
                                                             ParentValues& values) {
    if (range.first > range.last) return;
    const CRunLines lines(*this, GetSampleLines());
    const auto joined =
        Join(range.first, range.last, [&lines](int line) { return lines.Wrapped(line); });
    auto& match = m_scratch->match;
    std::size_t searchBegin = 0;
    while (pattern.regex->Search(std::string_view(joined.text).substr(searchBegin), match) ==
           AppRegexSearch_Match) {
        for (int group = 1; group <= GroupsWithName(match, pattern.names); ++group)
            values[pattern.names[static_cast<std::size_t>(group) - 1]].push_back(
                LetOfGroup(match, group, searchBegin, joined, range.first));
        if (match.Text(0).empty()) break;
        searchBegin += static_cast<std::size_t>(match.Position(0)) + match.Text(0).size();
    }
}
