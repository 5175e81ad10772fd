#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// CStatementCuts cuts a statement into the pieces that a line has to hold one behind the other, so
// that one can ask how far a line follows it.
//
//     CStatementCuts cuts("mtu $int:mtu bytes");
//     cuts.Count();                  // 11: "m", "t", "u", the blank, the variable, ...
//     cuts.Expression(5);            // mtu\s+(\-?\d+)
//     cuts.Offset(5);                // 12, behind the variable
//
// A plain statement is cut behind each character and each variable; an expression by hand behind
// each part that stands in no group, up to the first "|" outside of groups; a text that is no
// statement behind each character. A line that the first n pieces match is, but for an odd
// expression, matched by fewer of them too. A statement that is too long has no pieces. Immutable;
// any number of threads may read one object.
class CStatementCuts {
public:
    // A longer statement isn't cut, in bytes.
    static constexpr std::size_t MaxStatement = 2000;

    explicit CStatementCuts(const std::string& statement);

    std::size_t Count() const { return m_pieces.size(); }
    // The byte offset in the statement behind the first `count` pieces; with 0 where the first
    // begins.
    std::size_t Offset(std::size_t count) const;
    // The expression of the first `count` pieces, to be compiled as rules do it.
    std::string Expression(std::size_t count) const;
    // How many of the first `count` pieces are letters or digits that a line has to hold.
    std::size_t LiteralCount(std::size_t count) const;
    // What a line must hold for the piece behind the first `count`, when that is worth telling:
    // "$int:mtu takes a whole number".
    std::string Wish(std::size_t count) const;
    // The different words of three letters or more among the pieces, in small letters.
    const std::vector<std::string>& Words() const { return m_words; }

private:
    struct Piece {
        std::size_t begin;  // in the statement
        std::size_t end;
        std::string expression;
        bool isLiteral;  // a letter or digit
    };

    void CutPlain(std::string_view statement);
    void CutLiteral(std::string_view statement, std::size_t begin, std::size_t end);
    void CutText(std::string_view text);
    void CutExpression(std::string_view statement, std::size_t begin);
    void AddPiece(std::string_view statement, std::size_t begin, std::size_t end,
                  std::string expression);
    void GatherWords();

    std::string m_statement;
    std::vector<Piece> m_pieces;
    std::vector<std::string> m_words;
    std::size_t m_begin = 0;
};
