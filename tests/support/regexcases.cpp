#include "support/regexcases.h"

#include "tzparser/pattern/appregex.h"
#include "tzparser/regex/regexplan.h"
#include "tzparser/text/appregexbuild.h"

#include <array>
#include <string_view>
#include <utility>

#include <boost/regex.hpp>

namespace {

struct Row {
    std::string_view expression;
    std::string_view example;
};

constexpr std::array<Row, 34> Atoms = {{
    {"a", "a"},         {"b", "B"},         {"ab", "aB"},
    {"0", "0"},         {"up", "UP"},       {" ", " "},
    {",", ","},         {"\\.", "."},       {":", ":"},
    {"\\-", "-"},       {"%", "%"},         {"\\d", "1"},
    {"\\w", "a"},       {"\\s", " "},       {"\\S", "b"},
    {"\\D", "a"},       {"\\W", ","},       {".", "a"},
    {"\\n", "\n"},      {"\\t", "\t"},      {"\\xe9", "\xe9"},
    {"\\x41", "A"},     {"\\Q.*\\E", ".*"}, {"/", "/"},
    {"_", "_"},         {"\\s+", " "},      {"\\S+", "ab"},
    {"\\d+", "10"},     {".*", "a b"},      {".*?", "a"},
    {"\\-?\\d+", "-1"}, {"[^,]*", "ab"},    {"(?:\\d+\\.){3}\\d+", "1.0.10.1"},
    {"\\r", "\r"},
}};

constexpr std::array<std::string_view, 16> Assertions = {
    "^",   "$",   "^",   "$",     "\\b",   "\\B",    "\\<",    "\\>",
    "\\A", "\\z", "\\Z", "(?=a)", "(?!b)", "(?<=a)", "(?<!b)", "\\1"};

constexpr std::array<std::string_view, 16> Repeats = {
    "*",    "+",      "?",     "*?",    "+?", "??", "{2}", "{1,3}",
    "{2,}", "{0,2}?", "{3,5}", "{1,}?", "*+", "++", "{0}", "{2,40}"};

constexpr std::array<std::string_view, 12> SetParts = {
    "a", "b-d", "0-9", "\\d", "\\s", "\\w", "A-C", ",", "\\.", "[:alpha:]", "\\xe0-\\xff", "\\S"};

constexpr std::string_view NoiseBytes = "aAbBcd01 2 ,.:-%_/\t\n\r\f(";

}  // namespace

std::string CRegexCases::Expression() {
    Piece piece = Choice(0);
    if (m_pick(5) == 0) piece.expression = "^" + piece.expression;
    if (m_pick(6) == 0) piece.expression += "$";
    m_example = std::move(piece.example);
    return std::move(piece.expression);
}

CRegexCases::Piece CRegexCases::Choice(int depth) {
    auto piece = Sequence(depth);
    while (m_pick(5) == 0 && piece.expression.size() < 200) {
        auto other = Sequence(depth);
        piece.expression += "|" + other.expression;
        if (m_pick(2) == 0) piece.example = std::move(other.example);
    }
    return piece;
}

CRegexCases::Piece CRegexCases::Sequence(int depth) {
    Piece piece;
    const auto parts = 1 + m_pick(depth == 0 ? 7 : 3);
    for (unsigned i = 0; i < parts; ++i) {
        if (m_pick(14) == 0) {
            piece.expression += Assertions[m_pick(Assertions.size())];
            continue;
        }
        auto part = Repeated(depth);
        piece.expression += part.expression;
        piece.example += part.example;
    }
    return piece;
}

CRegexCases::Piece CRegexCases::Repeated(int depth) {
    auto piece = Atom(depth);
    if (m_pick(3) != 0) return piece;
    if (piece.expression.size() > 1 && m_pick(2) == 0)
        piece.expression = "(?:" + piece.expression + ")";
    piece.expression += Repeats[m_pick(Repeats.size())];
    const auto times = m_pick(4);
    std::string example;
    for (unsigned i = 0; i < times && example.size() < 100; ++i) example += piece.example;
    piece.example = std::move(example);
    return piece;
}

CRegexCases::Piece CRegexCases::Atom(int depth) {
    const auto kind = m_pick(6);
    if (kind == 0) return Set();
    if (kind == 1 && depth < 4) return Group(depth + 1);
    const auto& row = Atoms[m_pick(Atoms.size())];
    return {std::string(row.expression), std::string(row.example)};
}

CRegexCases::Piece CRegexCases::Group(int depth) {
    auto piece = Choice(depth);
    constexpr std::array<std::string_view, 9> opens = {
        "(", "(", "(", "(", "(?:", "(?:", "(?>", "(?i:", "(?-i:"};
    piece.expression = std::string(opens[m_pick(opens.size())]) + piece.expression + ")";
    return piece;
}

CRegexCases::Piece CRegexCases::Set() {
    Piece piece{m_pick(3) == 0 ? "[^" : "[", "a"};
    const auto parts = 1 + m_pick(3);
    for (unsigned i = 0; i < parts; ++i) piece.expression += SetParts[m_pick(SetParts.size())];
    piece.expression += "]";
    return piece;
}

std::string CRegexCases::Noise(unsigned most) {
    std::string noise;
    for (auto left = m_pick(most + 1); left > 0; --left)
        noise += m_pick(24) == 0 ? static_cast<char>(m_pick(256))
                                 : NoiseBytes[m_pick(static_cast<unsigned>(NoiseBytes.size()))];
    return noise;
}

std::string CRegexCases::Text() {
    auto text = Noise(8);
    const auto times = m_pick(8) == 0 ? 1 + m_pick(20) : 1;
    for (unsigned i = 0; i < times && text.size() < 300; ++i) text += m_example + Noise(3);
    for (auto changes = m_pick(3); changes > 0 && !text.empty(); --changes) {
        const auto at = m_pick(static_cast<unsigned>(text.size()));
        text.replace(at, m_pick(2), Noise(2));
    }
    return text + Noise(8);
}

namespace {

std::string Dump(AppRegexSearch_e result, const CAppRegexMatch& match) {
    if (result != AppRegexSearch_Match)
        return result == AppRegexSearch_NoMatch ? "none" : "gave up";
    std::string dump;
    for (int group = 0; group <= match.GroupCount(); ++group)
        dump += std::to_string(match.Position(group)) + "+" +
                std::to_string(match.Text(group).size()) + " ";
    return dump;
}

std::string Dump(const CRegexJit& jit, const CRegexJitMatch& match) {
    std::string dump;
    for (int group = 0; group <= jit.GroupCount(); ++group)
        dump += std::to_string(match.Begin(group)) + "+" +
                std::to_string(match.End(group) - match.Begin(group)) + " ";
    return dump;
}

std::string Differ(const char* what, const std::string& plain, const std::string& fast) {
    return std::string(what) + ": plain " + plain + ", fast " + fast;
}

// The parts by themselves, whether or not a search would use them.
std::string CompareParts(const boost::regex& compiled, const std::string& text,
                         const std::string& plain) {
    const CRegexPlan plan(compiled);
    if (plan.IsTrusted(text) && plain == "gave up") return "plain gave up on a trusted text";
    if (plain != "none" && plain != "gave up" &&
        !plan.CanMatch(compiled, text, RegexRange_Anywhere))
        return Differ("automaton", plain, "none");
    if (plain != "none" && plain != "gave up" && !plan.Passes(text))
        return Differ("screen", plain, "none");
    const auto tree = ReadRegexTree(compiled);
    const auto jit = tree ? CRegexJit::Make(*tree) : nullptr;
    if (!jit || plain == "gave up") return {};
    const bool isOneLine = text.find_first_of("\n\r\f") == std::string::npos;
    if (TrustOfRegex(*tree).isForOneLine && !isOneLine) return {};
    CRegexJitMatch match;
    const auto found = jit->Search(text, match);
    if (!found) return {};
    const auto fast = *found ? Dump(*jit, match) : "none";
    return fast == plain ? std::string() : Differ("machine code", plain, fast);
}

}  // namespace

std::string CompareSearches(const std::string& expression, unsigned flags,
                            const std::string& text) {
    const auto compiled = BuildRegex(expression, flags | boost::regex::no_except);
    const bool isValid = compiled.status() == 0;
    const CAppRegex regex(expression, flags);
    if (regex.IsValid() != isValid)
        return isValid ? "a good one isn't valid" : "a bad one is valid";
    if (!isValid) return {};
    CAppRegexMatch match;
    const auto plain = Dump(regex.SearchPlain(text, match), match);
    const auto telling = Dump(regex.SearchTelling(text, match), match);
    if (telling != plain) return Differ("telling", plain, telling);
    const auto fast = Dump(regex.Search(text, match), match);
    if (fast != plain && (fast != "none" || plain != "gave up"))
        return Differ("search", plain, fast);
    const auto plainWhole = Dump(regex.MatchWholePlain(text, match), match);
    const auto whole = Dump(regex.MatchWhole(text, match), match);
    if (whole != plainWhole && (whole != "none" || plainWhole != "gave up"))
        return Differ("whole", plainWhole, whole);
    return CompareParts(compiled, text, plain);
}
