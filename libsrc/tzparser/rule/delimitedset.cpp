#include "tzparser/rule/delimitedset.h"

#include "host/text/stlhelper.h"
#include "tzparser/text/appstrutil.h"

namespace {

constexpr const char* ListSeparator = ";";

void InsertPiece(std::set<std::string>& pieces, const std::string& piece) {
    auto trimmed = StlHelper::trump(piece);
    if (!trimmed.empty()) pieces.insert(std::move(trimmed));
}

}  // namespace

std::set<std::string> SplitDelimitedSet(std::string_view text, char delimiter, char escape) {
    std::set<std::string> pieces;
    std::string piece;
    for (const char c : text) {
        if (c != delimiter) {
            piece.push_back(c);
        } else if (escape != '\0' && !piece.empty() && piece.back() == escape) {
            piece.back() = delimiter;
        } else {
            InsertPiece(pieces, piece);
            piece.clear();
        }
    }
    InsertPiece(pieces, piece);
    return pieces;
}

void InsertPieces(const std::string& text, std::set<std::string>& pieces) {
    pieces.merge(AppStrUtil::StrSplitToSet(text, ListSeparator, false));
}

std::string JoinPieces(const std::set<std::string>& pieces) {
    return AppStrUtil::StrJoin({pieces.begin(), pieces.end()}, ListSeparator);
}
