// Cutting a statement.
//
// Plain statements: the literal text between variables gives a piece a character, a run of white
// space one piece, and a variable the capture that the compiler gives it by itself. Expressions by
// hand are read once from the left: an atom outside of groups (a character, an escape, a class, a
// whole group) with the repeat behind it is a piece.
#include "tzparser/explain/statementcuts.h"

#include "host/text/asciicase.h"
#include "host/text/charset.h"
#include "tzparser/pattern/parserpatternhelper.h"
#include "tzparser/pattern/patternscan.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t MinWord = 3;
constexpr std::size_t MaxWords = 32;
constexpr std::string_view LiteralMarks = "\\Q";

struct WishRow {
    std::string_view type;
    const char* words;
};

constexpr std::array<WishRow, 4> Wishes = {{
    {"int:", "a whole number"},
    {"float:", "a number"},
    {"double:", "a number"},
    {"bool:", "1, 0, True or False"},
}};

// Behind the class that opens at `begin`; npos when it doesn't close.
std::size_t ClassEnd(std::string_view text, std::size_t begin) {
    auto at = begin + 1;
    if (at < text.size() && text[at] == '^') ++at;
    if (at < text.size() && text[at] == ']') ++at;
    for (; at < text.size(); ++at) {
        if (text[at] == '\\') {
            ++at;
        } else if (text[at] == '[' && at + 1 < text.size() && text[at + 1] == ':') {
            at = text.find(":]", at);
            if (at == std::string_view::npos) return at;
            ++at;
        } else if (text[at] == ']') {
            return at + 1;
        }
    }
    return std::string_view::npos;
}

// Behind the group that opens at `begin`; npos when it doesn't close.
std::size_t GroupEnd(std::string_view text, std::size_t begin) {
    std::size_t depth = 0;
    for (auto at = begin; at < text.size();) {
        const char c = text[at];
        if (c == '[') {
            at = ClassEnd(text, at);
            if (at == std::string_view::npos) return at;
            continue;
        }
        if (c == '(') ++depth;
        if (c == ')' && --depth == 0) return at + 1;
        at += c == '\\' ? 2 : 1;
    }
    return std::string_view::npos;
}

std::size_t AtomEnd(std::string_view text, std::size_t begin) {
    switch (text[begin]) {
        case '[':
            return ClassEnd(text, begin);
        case '(':
            return GroupEnd(text, begin);
        case '\\':
            return begin + 2;
        default:
            return begin + 1;
    }
}

// Behind the repeats that stand at `at`.
std::size_t RepeatEnd(std::string_view text, std::size_t at) {
    while (at < text.size() && std::string_view("*+?{").find(text[at]) != std::string_view::npos) {
        if (text[at] != '{') {
            ++at;
            continue;
        }
        const auto close = text.find('}', at);
        if (close == std::string_view::npos) return text.size();
        at = close + 1;
    }
    return at;
}

std::string CaptureOf(std::string_view variable) {
    CParserPatternHelper helper;
    std::string error;
    return helper.Parse(std::string(variable), error) ? helper.GetRegex() : std::string();
}

}  // namespace

CStatementCuts::CStatementCuts(const std::string& statement, CutForm_e form)
    : m_statement(statement) {
    if (statement.empty() || statement.size() > MaxStatement) return;
    if (form == CutForm_Headers)
        CutPlain(m_statement);
    else
        CutByForm();
    m_begin = m_pieces.empty() ? 0 : m_pieces.front().begin;
    GatherWords();
}

void CStatementCuts::CutByForm() {
    CParserPatternHelper helper;
    std::string error;
    if (!helper.Parse(m_statement, error))
        CutText(m_statement);
    else if (helper.IsRegex())
        CutExpression(m_statement, m_statement.size() - helper.GetRegex().size());
    else if (!helper.IsMline())
        CutPlain(m_statement);
}

void CStatementCuts::AddPiece(std::string_view statement, std::size_t begin, std::size_t end,
                              std::string expression) {
    const bool isLiteral = end == begin + 1 && AsciiIsAlnum(statement[begin]);
    m_pieces.push_back({begin, end, std::move(expression), isLiteral});
}

void CStatementCuts::CutPlain(std::string_view statement) {
    CPatternScan scan(statement);
    std::size_t at = 0;
    while (scan.Next()) {
        CutLiteral(statement, at, scan.Begin());
        AddPiece(statement, scan.Begin(), scan.End(), CaptureOf(scan.Match()));
        at = scan.End();
    }
    CutLiteral(statement, at, statement.size());
}

void CStatementCuts::CutLiteral(std::string_view statement, std::size_t begin, std::size_t end) {
    for (auto at = begin; at < end;) {
        auto next = at + 1;
        if (WhiteSpace.Has(statement[at])) {
            while (next < end && WhiteSpace.Has(statement[next])) ++next;
            AddPiece(statement, at, next, "\\s+");
        } else {
            const std::string one(1, statement[at]);
            AddPiece(statement, at, next,
                     CParserPatternHelper::RegexEscape(one, at == 0, next == statement.size()));
        }
        at = next;
    }
}

// What is no statement is searched for as it stands.
void CStatementCuts::CutText(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at)
        AddPiece(text, at, at + 1,
                 CParserPatternHelper::RegexEscape(std::string(1, text[at]), false, false));
}

void CStatementCuts::CutExpression(std::string_view statement, std::size_t begin) {
    if (statement.find(LiteralMarks, begin) != std::string_view::npos) return;
    for (auto at = begin; at < statement.size();) {
        if (statement[at] == '|') {
            m_pieces.clear();
            return;
        }
        const auto atom = AtomEnd(statement, at);
        if (atom == std::string_view::npos || atom > statement.size()) return;
        const auto end = RepeatEnd(statement, atom);
        AddPiece(statement, at, end, std::string(statement.substr(at, end - at)));
        at = end;
    }
}

std::size_t CStatementCuts::Offset(std::size_t count) const {
    return count == 0 ? m_begin : m_pieces[count - 1].end;
}

std::string CStatementCuts::Expression(std::size_t count) const {
    std::string expression;
    for (std::size_t i = 0; i < count; ++i) expression += m_pieces[i].expression;
    return expression;
}

std::size_t CStatementCuts::LiteralCount(std::size_t count) const {
    return static_cast<std::size_t>(
        std::count_if(m_pieces.begin(), m_pieces.begin() + static_cast<std::ptrdiff_t>(count),
                      [](const Piece& piece) { return piece.isLiteral; }));
}

std::string CStatementCuts::Wish(std::size_t count) const {
    if (count >= m_pieces.size()) return {};
    const auto& piece = m_pieces[count];
    CPatternScan scan(std::string_view(m_statement).substr(piece.begin, piece.end - piece.begin));
    if (!scan.Next() || scan.Match().size() != piece.end - piece.begin) return {};
    const auto name = "$" + std::string(scan.Name());
    if (!scan.Alternatives().empty()) return name + " takes " + std::string(scan.Alternatives());
    for (const auto& row : Wishes)
        if (AsciiEqualIgnoreCase(scan.Type(), row.type)) return name + " takes " + row.words;
    return {};
}

void CStatementCuts::GatherWords() {
    std::string word;
    const auto keep = [this, &word] {
        const bool isNew = std::find(m_words.begin(), m_words.end(), word) == m_words.end();
        if (word.size() >= MinWord && isNew && m_words.size() < MaxWords) m_words.push_back(word);
        word.clear();
    };
    for (const auto& piece : m_pieces) {
        if (piece.isLiteral)
            word.push_back(AsciiLower(m_statement[piece.begin]));
        else
            keep();
    }
    keep();
}
