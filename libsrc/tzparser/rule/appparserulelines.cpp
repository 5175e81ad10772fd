// Lines: their status, their texts, positions in joined lines, and matches over several lines.
#include "host/runtime/diagnostics.h"
#include "host/text/stlhelper.h"
#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/rule/appparserule.h"
#include "tzparser/rule/appparserulesample.h"
#include "tzparser/rule/appsamplelines.h"
#include "tzparser/text/appstrutil.h"

#include <algorithm>

#include <boost/algorithm/string/replace.hpp>

namespace {

// The offset of line number `line` in a text; npos when it has fewer lines.
std::size_t LineBegin(std::string_view text, int line) {
    std::size_t begin = 0;
    for (int skipped = 0; skipped < line; ++skipped) {
        const auto lineFeed = text.find('\n', begin);
        if (lineFeed == std::string_view::npos) return lineFeed;
        begin = lineFeed + 1;
    }
    return begin;
}

const std::string& EmptyLine() {
    static const std::string empty;
    return empty;
}

}  // namespace

AppLineStatus& CAppParseRule::GetLineStatus() {
    CAppParseRule::LineStatus();
    return m_lineStatus.HostBits();
}

const CAppLineStatus& CAppParseRule::LineStatus() {
    if (m_parent != nullptr) {
        const auto& parentStatus = m_parent->LineStatus();
        if (m_lineStatus.Count() != parentStatus.Count()) m_lineStatus = parentStatus;
    }
    return m_lineStatus;
}

const CAppSampleLines* CAppParseRule::GetSampleLines() const {
    const auto* sample = GetSampleRoot();
    return sample != nullptr ? &sample->GetLines() : nullptr;
}

const std::string& CAppParseRule::GetOriginalLine(int line) const {
    const auto* lines = GetSampleLines();
    return lines != nullptr ? lines->String(line) : EmptyLine();
}

const std::string& CAppParseRule::GetWrappedLine(int line) const {
    const auto& replaced = GetSearchReplaceLine(line);
    return replaced.empty() ? GetOriginalLine(line) : replaced;
}

std::string_view CAppParseRule::OriginalLineView(int line) const {
    const auto* lines = GetSampleLines();
    return lines != nullptr ? lines->View(line) : std::string_view();
}

std::string_view CAppParseRule::WrappedLineView(int line) const {
    const auto& replaced = GetSearchReplaceLine(line);
    return replaced.empty() ? OriginalLineView(line) : std::string_view(replaced);
}

// The text that matched is looked for again from the start of the joined lines, up to its first
// NUL: when the same text stands earlier than the match, the earlier place counts.
int CAppParseRule::ParseMultipleLineMatch(int startLine, int endLine, const std::string& pattern,
                                          int& matchEnd) {
    matchEnd = endLine;
    auto* sample = GetSampleRoot();
    if (sample == nullptr) return endLine;
    std::vector<int> lineNumbers;
    const auto joined = sample->GroupMultiLine(startLine, endLine, m_lineStatus, lineNumbers,
                                               GetSearchReplaceResult());
    const auto regex = GetCachedRegex(pattern, CAppRegex::RuleFlags);
    if (!regex) {
        DiagnosticOutput("Invalid regex expression:" + pattern + "\n");
        return endLine;
    }
    CAppRegexMatch match;
    if (regex->Search(joined, match) != AppRegexSearch_Match) return endLine;
    const auto matched = match.Text(0).substr(0, match.Text(0).find('\0'));
    const auto position = static_cast<int>(joined.find(matched));
    matchEnd = startLine + GetLineCountByPos(joined, position + static_cast<int>(matched.size()));
    return startLine + GetLineCountByPos(joined, position);
}

// A failed search gives -1, or with the last piece its length less one: callers take that as it is.
int CAppParseRule::GetPosByLine(const std::string& text, const std::string& line, int startPos,
                                bool first) {
    const auto pieces = AppStrUtil::StrSplit(line, "\n", true);
    if (pieces.empty()) return startPos;
    const auto from = static_cast<std::size_t>(startPos);
    if (first) return static_cast<int>(text.find(pieces.front(), from));
    return static_cast<int>(text.find(pieces.back(), from) + pieces.back().size());
}

int CAppParseRule::GetLineCountByPos(std::string_view text, int pos) {
    const auto end = std::min(text.size(), static_cast<std::size_t>(std::max(pos, 0)));
    return static_cast<int>(
        std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
}

int CAppParseRule::ConvertToLinePos(std::string_view text, int line, int pos) {
    if (line == 0) return pos;
    if (line < 0) return 0;
    const auto begin = LineBegin(text, line);
    if (begin == std::string_view::npos || pos < 0 || static_cast<std::size_t>(pos) < begin)
        return 0;
    return pos - static_cast<int>(begin);
}

std::string CAppParseRule::GetRegexByLine(const std::string& line,
                                          std::map<std::string, std::string>& regexByLine,
                                          std::set<std::string>& multiLine) {
    const auto known = regexByLine.find(line);
    if (known != regexByLine.end())
        return known->second.empty() ? StlHelper::RegexEscape(line) : known->second;
    CParserPatternHelper helper;
    std::string error;
    if (!helper.Parse(line, error)) return StlHelper::RegexEscape(line);
    if (helper.IsMultiLineRegex()) multiLine.insert(line);
    regexByLine[line] = helper.GetRegex();
    return helper.GetRegex().empty() ? StlHelper::RegexEscape(line) : helper.GetRegex();
}

void CAppParseRule::FormatString(std::string& text) {
    boost::algorithm::replace_all(text, "\r\n", "\n");
    boost::algorithm::replace_all(text, "\r", "\n");
}

bool CAppParseRule::IsMultiLineSyntax(const std::string& text) {
    return text.find("mregex:") != std::string::npos || text.find("mregex[") != std::string::npos;
}
