#pragma once

#include "tzparser/paragraph/appparseruleparagraph.h"

#include "support/letdump.h"
#include "support/ruletree.h"

// `0 2 | 2 4`: begins, then ends.
inline std::string DumpRanges(const CAppParseRuleParagraph& rule) {
    std::string dump;
    for (const int line : rule.GetBeginLines()) dump += std::to_string(line) + " ";
    dump += "|";
    for (const int line : rule.GetEndLines()) dump += " " + std::to_string(line);
    return dump;
}

inline CAppParseRuleParagraph& ParagraphAt(CAppParseRule& parent, std::size_t index) {
    return dynamic_cast<CAppParseRuleParagraph&>(*parent.Children().at(index));
}

// The node of a paragraph: keys of its own, statements of its first child, and further children,
// all as JSON texts.
inline std::string ParagraphNode(const std::string& keys, const std::string& statements = "",
                                 const std::string& children = "") {
    return "{\"type\":4," + keys +
           ",\"child\":{\"parserule\":[{\"type\":0,\"keywords\":{\"keyword\":[" + statements +
           "]}}" + children + "]}}";
}
