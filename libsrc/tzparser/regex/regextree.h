#pragma once

#include <bitset>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include <boost/regex_fwd.hpp>

// The bytes that one place of an expression takes.
using RegexBytes = std::bitset<256>;

inline constexpr std::size_t RegexNoMaximum = std::numeric_limits<std::size_t>::max();

enum RegexNode_e {
    RegexNode_Bytes = 0,   // one byte of a set
    RegexNode_Group = 1,   // parts one after the other, captured or not
    RegexNode_Choice = 2,  // one of its parts, each of them a group without capture
    RegexNode_Repeat = 3,  // its parts, one after the other, so and so many times
    RegexNode_Assert = 4,  // takes nothing, holds at some places only
};

enum RegexAssert_e {
    RegexAssert_LineStart = 0,
    RegexAssert_LineEnd = 1,
    RegexAssert_TextStart = 2,
    RegexAssert_TextEnd = 3,
    RegexAssert_SoftTextEnd = 4,  // only line ends follow
    RegexAssert_WordEdge = 5,
    RegexAssert_WithinWord = 6,
    RegexAssert_WordStart = 7,
    RegexAssert_WordEnd = 8,
};

struct RegexNode {
    RegexNode_e kind = RegexNode_Group;
    RegexAssert_e assertion = RegexAssert_LineStart;
    int capture = 0;  // of a group: the number, 0 for none
    bool isGreedy = true;
    std::size_t min = 0;
    std::size_t max = 0;
    RegexBytes bytes;
    std::vector<RegexNode> parts;
};

// What an expression says, read from the machine that the matcher runs and not from its text: so
// escapes, sets, letter case and the classic locale's classes mean here what they mean to the
// matcher, by construction.
//
//     if (const auto tree = ReadRegexTree(expression)) use(tree->root, tree->isExact);
struct RegexTree {
    RegexNode root;  // a group without capture
    // False when the tree fits more texts than the expression: look-arounds and back references
    // are left out or widened. It never fits fewer.
    bool isExact = true;
    std::size_t nodes = 0;
    std::size_t length = 0;  // of the expression's text
};

// Null when the expression holds something that has no form here (recursion, verbs, conditions,
// sets with multi-character elements), is in another syntax than Perl's, or is very large. The
// expression must have compiled.
std::optional<RegexTree> ReadRegexTree(const boost::regex& expression);

// The bytes with which a match of the parts from `from` on may begin.
struct RegexFirst {
    RegexBytes bytes;
    bool canBeEmpty = false;  // without taking any byte
};
RegexFirst FirstOfParts(const std::vector<RegexNode>& parts, std::size_t from);
RegexFirst FirstOfNode(const RegexNode& node);

// "\n", "\r" and "\f": between them "^" and "$" see lines.
const RegexBytes& LineEndBytes();
// What "\w" takes.
const RegexBytes& WordBytes();
