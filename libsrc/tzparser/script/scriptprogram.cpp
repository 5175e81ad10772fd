#include "tzparser/script/scriptprogram.h"

#include "host/text/asciicase.h"
#include "host/text/stlhelper.h"
#include "host/text/strformat.h"
#include "tzparser/pattern/appregex.h"

#include <algorithm>

#include <pthread.h>

namespace {

constexpr std::string_view Blanks = "    ";
constexpr std::string_view Quotes = "'''";
constexpr const char* TextName = "_original_result_{0}";
constexpr const char* ResultName = "parse_result_{0}";
constexpr const char* OldImport = "from\\s+pyapplib\\s+import\\s+PyConfigLet";
constexpr const char* PresentImport = "from pyconfiglet import PyConfigLet";

bool IsEncodingByte(char c) {
    return AsciiIsAlnum(c) || c == '-' || c == '_' || c == '.';
}

// A line of blanks, or of blanks and a comment.
bool IsCommentLine(std::string_view line) {
    const auto begin = line.find_first_not_of(" \t\f");
    return begin == std::string_view::npos || line[begin] == '#';
}

std::string_view EncodingOfLine(std::string_view line) {
    constexpr std::string_view word = "coding";
    if (!IsCommentLine(line)) return {};
    for (auto at = line.find(word); at != std::string_view::npos; at = line.find(word, at + 1)) {
        auto rest = line.substr(at + word.size());
        if (rest.empty() || (rest.front() != ':' && rest.front() != '=')) continue;
        rest.remove_prefix(1);
        rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
        const auto end = std::find_if_not(rest.begin(), rest.end(), IsEncodingByte);
        const auto name = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
        if (!name.empty()) return name;
    }
    return {};
}

bool IsUtf8(const std::string& encoding) {
    return encoding == "utf-8" || encoding.compare(0, 6, "utf-8-") == 0;
}

}  // namespace

ScriptNames::ScriptNames(std::uint64_t number)
    : thread(number),
      text(StrFormat(TextName) << static_cast<unsigned long long>(number)),
      result(StrFormat(ResultName) << static_cast<unsigned long long>(number)) {}

ScriptNames ScriptNames::OfThisThread() {
    return ScriptNames(static_cast<std::uint64_t>(pthread_self()));
}

std::string WithProgramBlanks(std::string text) {
    if (text.find('\r') != std::string::npos) StlHelper::replaceString(text, "\r\n", "\n");
    if (text.find('\t') != std::string::npos) StlHelper::replaceString(text, "\t", Blanks);
    return text;
}

std::string AsTokenized(std::string text) {
    text = WithProgramBlanks(std::move(text));
    if (text.find('\r') == std::string::npos) return text;
    StlHelper::replaceString(text, "\r\n", "\n");
    std::replace(text.begin(), text.end(), '\r', '\n');
    return text;
}

std::string ComposeScriptProgram(const std::string& script, const ScriptNames& names,
                                 std::string_view clean) {
    std::string program;
    program.reserve(script.size() + clean.size() + 4 * names.text.size() + names.result.size());
    program.append(script).append("\n");
    program.append(names.text).append(" = r").append(Quotes);
    program.append(clean).append(Quotes).append("\n");
    program.append(names.result).append(" = ParseText(").append(names.text).append(")\n");
    return WithProgramBlanks(std::move(program));
}

// As the tokenizer does it: a backslash takes the byte behind it along, and quotes close the
// literal where three stand in a row. The first two of the closing ones may be the text's own.
bool FitsRawLiteral(std::string_view text, std::size_t& closes) {
    std::size_t quotes = 0;
    for (auto at = text.find_first_of("'\\"); at < text.size(); ++at) {
        if (text[at] == '\'') {
            closes = at + 1;
            if (++quotes == Quotes.size()) return false;
            continue;
        }
        quotes = 0;
        if (text[at] != '\\') continue;
        closes = text.size();
        if (++at == text.size()) return false;
    }
    closes = text.size();
    return quotes == 0;
}

std::string DeclaredEncoding(std::string_view script) {
    for (int line = 0; line < 2; ++line) {
        const auto end = std::min(script.find('\n'), script.size());
        auto encoding = std::string(EncodingOfLine(script.substr(0, end)));
        if (!encoding.empty()) {
            ToLowerInPlace(encoding);
            std::replace(encoding.begin(), encoding.end(), '_', '-');
            return IsUtf8(encoding) ? std::string() : encoding;
        }
        if (!IsCommentLine(script.substr(0, end)) || end == script.size()) break;
        script.remove_prefix(end + 1);
    }
    return {};
}

std::string WithPresentImports(const std::string& script) {
    static const CAppRegex expression(OldImport, CAppRegex::RuleFlags);
    CAppRegexMatch match;
    std::string result;
    std::string_view rest = script;
    while (expression.Search(rest, match) == AppRegexSearch_Match) {
        const auto begin = static_cast<std::size_t>(match.Position(0));
        result.append(rest.substr(0, begin)).append(PresentImport);
        rest.remove_prefix(begin + match.Text(0).size());
    }
    return result.append(rest);
}
