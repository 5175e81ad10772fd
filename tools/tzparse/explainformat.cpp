#include "explainformat.h"

#include "choiceformat.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::size_t Width = 100;
constexpr std::size_t MaxExcerpt = 72;   // bytes of a line or statement that are shown
constexpr std::size_t BeforeCaret = 48;  // of a long one, so many of them in front of the caret
constexpr std::size_t Step = 2;
constexpr std::size_t FactIndent = 4;

std::string Printable(std::string_view text) {
    constexpr char digits[] = "0123456789abcdef";
    std::string shown;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7F) {
            shown.push_back(c);
        } else if (c == '\t') {
            shown += "\\t";
        } else if (c == '\n') {
            shown += "\\n";
        } else {
            shown += "\\x";
            shown.push_back(digits[byte >> 4U]);
            shown.push_back(digits[byte & 0xFU]);
        }
    }
    return shown;
}

// Appends a text, folded at blanks; lines behind the first are indented by `indent`.
void AppendFolded(std::string& out, const std::string& text, std::size_t first,
                  std::size_t indent) {
    std::string_view rest = text;
    auto room = Width - std::min(first, Width / 2);
    while (rest.size() > room) {
        auto at = rest.rfind(' ', room);
        if (at == std::string_view::npos || at == 0) at = rest.find(' ', room);
        if (at == std::string_view::npos) break;
        out.append(rest.substr(0, at)).append("\n").append(indent, ' ');
        rest.remove_prefix(at + 1);
        room = Width - std::min(indent, Width / 2);
    }
    out.append(rest).append("\n");
}

// A line with a caret below the byte at `column` and words behind it.
void AppendMarked(std::string& out, std::string_view text, std::size_t column, std::size_t indent,
                  const char* words) {
    column = std::min(column, text.size());
    const auto begin = text.size() > MaxExcerpt && column > BeforeCaret ? column - BeforeCaret : 0;
    const auto front = begin > 0 ? std::string("...") : std::string();
    const bool isCut = text.size() - begin > MaxExcerpt;
    const auto before = front + Printable(text.substr(begin, column - begin));
    out.append(indent, ' ').append(before);
    out.append(Printable(text.substr(column, MaxExcerpt - (column - begin))));
    out.append(isCut ? "...\n" : "\n");
    out.append(indent + before.size(), ' ').append("^ ").append(words).append("\n");
}

void AppendNearest(std::string& out, const ExplainFact& fact, const ExplainReport& report,
                   std::size_t indent) {
    const auto row = static_cast<std::size_t>(fact.line);
    if (fact.line >= 0 && row < report.lines.size()) {
        const auto& line = fact.replacedLine.empty() ? report.lines[row] : fact.replacedLine;
        out.append(indent, ' ').append("nearest: line ").append(std::to_string(row + 1));
        out.append(fact.replacedLine.empty() ? "\n" : ", with its replacements\n");
        AppendMarked(out, line, static_cast<std::size_t>(std::max(fact.column, 0)),
                     indent + FactIndent, "matched up to here");
    }
    if (fact.statementColumn < 0) return;
    out.append(indent, ' ').append("statement:\n");
    AppendMarked(out, fact.statement, static_cast<std::size_t>(fact.statementColumn),
                 indent + FactIndent, fact.line >= 0 ? "stopped here" : "here");
}

void AppendFact(std::string& out, const ExplainFact& fact, const ExplainReport& report,
                std::size_t indent) {
    const bool hasStatement = !fact.statement.empty();
    auto words = Printable(fact.text);
    if (!hasStatement && fact.line >= 0)
        words = "line " + std::to_string(fact.line + 1) + ": " + words;
    out.append(indent, ' ').append(fact.isTrouble ? "! " : "  ");
    AppendFolded(out, words, indent + Step, indent + Step + FactIndent);
    if (hasStatement) AppendNearest(out, fact, report, indent + Step + FactIndent);
}

std::string RangeInWords(const ExplainRule& rule) {
    if (!rule.hasRun) return "didn't run";
    std::string words =
        rule.runs > 1 ? "ran " + std::to_string(rule.runs) + " times, last over " : "ran over ";
    if (rule.endLine <= rule.beginLine) return words + "no line";
    words += "lines " + std::to_string(rule.beginLine + 1) + " to " + std::to_string(rule.endLine);
    const int all = rule.endLine - rule.beginLine;
    if (rule.openLines < all)
        words += ", saw " + std::to_string(rule.openLines) + " of " + std::to_string(all);
    return words;
}

// A keyword rule that its parent made by itself has nothing to say unless it has statements.
bool IsSilent(const ExplainRule& rule, const ExplainReport& report) {
    return rule.facts.empty() && rule.parent >= 0 &&
           rule.path == report.rules[static_cast<std::size_t>(rule.parent)].path;
}

void AppendRule(std::string& out, const ExplainRule& rule, const ExplainReport& report,
                std::size_t indent) {
    out.append("\n").append(indent, ' ').append(Printable(rule.kind));
    if (!rule.name.empty()) out.append(" \"").append(Printable(rule.name)).append("\"");
    out.append("  ").append(Printable(rule.path)).append("\n");
    out.append(indent + Step, ' ').append(RangeInWords(rule)).append("\n");
    for (const auto& fact : rule.facts) AppendFact(out, fact, report, indent);
}

std::string Count(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string Summary(const ExplainReport& report) {
    const auto values = static_cast<std::size_t>(
        std::count_if(report.values.begin(), report.values.end(),
                      [](const ExplainValue& value) { return !value.text.empty(); }));
    std::size_t statements = 0;
    for (const auto& rule : report.rules)
        statements += static_cast<std::size_t>(std::count_if(
            rule.facts.begin(), rule.facts.end(),
            [](const ExplainFact& fact) { return fact.isTrouble && !fact.statement.empty(); }));
    return Count(values, "value", "values") + ", " + Count(statements, "statement", "statements") +
           " without a match, " + Count(CountTroubles(report), "thing", "things") + " to look at\n";
}

}  // namespace

std::size_t CountTroubles(const ExplainReport& report) {
    std::size_t count = 0;
    for (const auto& rule : report.rules)
        count += static_cast<std::size_t>(
            std::count_if(rule.facts.begin(), rule.facts.end(),
                          [](const ExplainFact& fact) { return fact.isTrouble; }));
    return count;
}

void WriteExplanation(const ExplainReport& report, COutputWriter& out) {
    WriteChoice(report.choice, out);
    if (!report.isParsed) AppendFolded(out.Buffer(), "! " + Printable(report.error), 0, FactIndent);
    std::vector<std::size_t> depths;
    for (const auto& rule : report.rules) {
        const auto depth = rule.parent < 0 ? 0 : depths[static_cast<std::size_t>(rule.parent)] + 1;
        depths.push_back(depth);
        if (IsSilent(rule, report)) continue;
        AppendRule(out.Buffer(), rule, report, std::min(depth, Width / Step / 2) * Step);
        out.Drain();
    }
    out.Buffer() += "\n" + Summary(report);
}
