// The search for the nearest line.
//
// The prefixes of a statement get longer piece by piece, and a line that matches one matches those
// before it. So one search a line tells whether it beats the best so far: it has to match one piece
// more. Only for such a line a binary search finds how far it goes; at most that happens as often
// as there are pieces. Another line is nearer still when it holds more of the statement's words:
// then the mistake stands early in the statement. Expressions of prefixes are compiled when first
// asked for.
#include "tzparser/explain/nearestline.h"

#include "host/text/asciicase.h"
#include "tzparser/explain/statementcuts.h"
#include "tzparser/pattern/appregex.h"

#include <algorithm>
#include <memory>

namespace {

// So many letters or digits of its own text make a beginning; fewer fit too many lines.
constexpr std::size_t MinLiterals = 3;
// What a search counts that gives up.
constexpr std::size_t GivenUpCost = 1000;

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), AsciiLower);
    return lower;
}

}  // namespace

// The prefixes of one statement, and the searches with them.
class CNearestLine::Prefixes {
public:
    Prefixes(const std::string& statement, std::size_t& searchesLeft)
        : m_cuts(statement), m_compiled(m_cuts.Count() + 1), m_searchesLeft(searchesLeft) {}

    const CStatementCuts& Cuts() const { return m_cuts; }

    // Whether the first `count` pieces match a text, and where the match ends.
    bool Fits(std::size_t count, std::string_view text, std::ptrdiff_t& end) {
        if (m_searchesLeft == 0) return false;
        auto& regex = m_compiled[count];
        if (!regex)
            regex = std::make_unique<CAppRegex>(m_cuts.Expression(count), CAppRegex::RuleFlags);
        const auto result = regex->Search(text, m_match);
        Pay(result == AppRegexSearch_GaveUp ? GivenUpCost : 1);
        if (result != AppRegexSearch_Match) return false;
        end = m_match.Position(0) + static_cast<std::ptrdiff_t>(m_match.Text(0).size());
        return true;
    }

    // The most pieces that match a text, at least `count`, which are known to.
    std::size_t Longest(std::size_t count, std::string_view text, std::ptrdiff_t& end) {
        auto behind = m_cuts.Count() + 1;
        while (count + 1 < behind) {
            const auto middle = count + (behind - count) / 2;
            if (Fits(middle, text, end))
                count = middle;
            else
                behind = middle;
        }
        return count;
    }

    NearestMatch MatchAt(int line, std::size_t count, std::ptrdiff_t end) const {
        return {line, static_cast<int>(end), static_cast<int>(m_cuts.Offset(count)),
                m_cuts.Wish(count)};
    }

    // Whether the first pieces are enough to tell a line from others: by the text among them or,
    // for an expression with little text, by their number.
    bool IsBeginning(std::size_t count) const {
        const auto wanted = std::min(MinLiterals, m_cuts.LiteralCount(m_cuts.Count()));
        return count > 0 && (m_cuts.LiteralCount(count) >= wanted || count * 2 > m_cuts.Count());
    }

    // The letters of the statement's words that a line holds.
    std::size_t WordLetters(std::string_view line) {
        const auto& words = m_cuts.Words();
        Pay(words.size());
        const auto text = Lower(line);
        std::size_t letters = 0;
        for (const auto& word : words)
            if (text.find(word) != std::string::npos) letters += word.size();
        return letters;
    }

    // The line with most letters of the statement's words, when there are more than `letters`; else
    // null.
    const NearestCandidate* MostWords(const std::vector<NearestCandidate>& lines,
                                      std::size_t letters) {
        const NearestCandidate* best = nullptr;
        for (const auto& line : lines) {
            if (m_searchesLeft == 0) break;
            const auto found = WordLetters(line.text.substr(0, MaxLine));
            if (found <= letters) continue;
            letters = found;
            best = &line;
        }
        return best;
    }

private:
    void Pay(std::size_t searches) { m_searchesLeft -= std::min(m_searchesLeft, searches); }

    CStatementCuts m_cuts;
    std::vector<std::unique_ptr<const CAppRegex>> m_compiled;  // by the number of pieces
    CAppRegexMatch m_match;
    std::size_t& m_searchesLeft;
};

NearestMatch CNearestLine::Find(const std::string& statement,
                                const std::vector<NearestCandidate>& lines) {
    Prefixes prefixes(statement, m_searchesLeft);
    std::size_t best = 0;
    std::string_view bestText;
    NearestMatch nearest;
    for (const auto& line : lines) {
        std::ptrdiff_t end = 0;
        const auto text = line.text.substr(0, MaxLine);
        if (best >= prefixes.Cuts().Count() || !prefixes.Fits(best + 1, text, end)) continue;
        best = prefixes.Longest(best + 1, text, end);
        bestText = text;
        nearest = prefixes.MatchAt(line.line, best, end);
    }
    if (!prefixes.IsBeginning(best)) {
        nearest = {};
        best = 0;
    }
    const auto letters =
        std::max(prefixes.Cuts().LiteralCount(best), prefixes.WordLetters(bestText));
    const auto* wordy = prefixes.MostWords(lines, best > 0 ? letters : 0);
    if (wordy == nullptr) return nearest;
    std::ptrdiff_t end = 0;
    const auto count = prefixes.Longest(0, wordy->text.substr(0, MaxLine), end);
    return prefixes.MatchAt(wordy->line, count, end);
}

NearestMatch CNearestLine::FindInText(const std::string& statement, std::string_view text) {
    Prefixes prefixes(statement, m_searchesLeft);
    if (prefixes.Cuts().Count() == 0) return {};
    std::ptrdiff_t end = 0;
    const auto count = prefixes.Longest(0, text.substr(0, MaxText), end);
    return prefixes.IsBeginning(count) ? prefixes.MatchAt(0, count, end) : NearestMatch();
}

int CNearestLine::FindFitting(const CAppRegex& expression,
                              const std::vector<NearestCandidate>& lines) {
    CAppRegexMatch match;
    for (const auto& line : lines) {
        if (m_searchesLeft == 0) break;
        const auto result = expression.Search(line.text.substr(0, MaxLine), match);
        m_searchesLeft -=
            std::min(m_searchesLeft, result == AppRegexSearch_GaveUp ? GivenUpCost : 1);
        if (result == AppRegexSearch_Match) return line.line;
    }
    return -1;
}
