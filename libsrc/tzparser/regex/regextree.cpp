// Reading the matcher's machine.
//
// The machine is a list of states, each with the next one; choices, repeats and jumps know one more
// state. Its layout is regular, which gives the structure back:
//   choice:  alt, first branch, jump to the end; second branch, which may be a choice again
//   repeat:  rep, body, jump back to rep; rep knows the state behind
//   group:   startmark, parts, endmark; negative numbers are kinds of look-around
// Whatever looks otherwise makes the reader give up.
#include "tzparser/regex/regextree.h"

#include "tzparser/text/appregexbuild.h"

#include <array>

#include <boost/regex.hpp>

namespace {

namespace machine = boost::BOOST_REGEX_DETAIL_NS;

using State = machine::re_syntax_base;

constexpr std::size_t MaxNodes = 4000;
constexpr int MaxDepth = 200;

template <class T>
const T* As(const State* state) {
    return static_cast<const T*>(state);
}

// What bytes become before they are compared. All expressions are built with the classic locale, so
// there are two ways only.
struct Folding {
    std::array<char, 256> fold;
    std::array<RegexBytes, 256> bytesOf;  // which bytes become this one

    explicit Folding(bool ignoreCase) {
        const auto expression = BuildRegex("a", 0);
        const auto& traits = expression.get_traits();
        for (std::size_t i = 0; i < fold.size(); ++i) {
            fold[i] = traits.translate(static_cast<char>(i), ignoreCase);
            bytesOf[static_cast<unsigned char>(fold[i])].set(i);
        }
    }

    static const Folding& Of(bool ignoreCase) {
        static const Folding ofBytes(false);
        static const Folding ofLetters(true);
        return ignoreCase ? ofLetters : ofBytes;
    }
};

class CTreeReader {
public:
    explicit CTreeReader(const boost::regex& expression) : m_isReadable(IsPerl(expression)) {
        const bool ignoreCase = (expression.flags() & boost::regex::icase) != 0;
        m_folding = m_otherFolding = &Folding::Of(ignoreCase);
        for (const auto* state = expression.get_first_state(); state != nullptr;
             state = state->next.p) {
            m_isReadable = m_isReadable && !ActsElsewhere(*state);
            if (state->type != machine::syntax_element_toggle_case) continue;
            // Letter case changes on the way: whatever fits either way is taken.
            m_otherFolding = &Folding::Of(!ignoreCase);
            m_tree.isExact = false;
        }
    }

    std::optional<RegexTree> Read(const boost::regex& expression) {
        if (!m_isReadable) return std::nullopt;
        // The machine opens with a mark that nothing closes, within the first of its branches.
        const auto* at = expression.get_first_state();
        m_opening = at;
        if (at != nullptr && at->type == machine::syntax_element_alt) m_opening = at->next.p;
        if (m_opening == nullptr || m_opening->type != machine::syntax_element_startmark)
            return std::nullopt;
        if (!ReadParts(at, nullptr, m_tree.root.parts)) return std::nullopt;
        if (at->type != machine::syntax_element_match) return std::nullopt;
        m_tree.length = expression.size();
        return std::move(m_tree);
    }

private:
    // Expressions in any other syntax find the longest match.
    static bool IsPerl(const boost::regex& expression) {
        constexpr auto others = boost::regex::main_option_type | boost::regex::no_perl_ex;
        return (expression.flags() & others) == 0;
    }

    // Verbs act beyond the group that they stand in, even out of a look-around. Recursion is left
    // alone there too.
    static bool ActsElsewhere(const State& state) {
        return state.type == machine::syntax_element_accept ||
               state.type == machine::syntax_element_commit ||
               state.type == machine::syntax_element_then ||
               state.type == machine::syntax_element_recurse;
    }

    // Adds a node for one byte, of those that `takes` says yes to after folding.
    template <class Takes>
    bool AddBytes(std::vector<RegexNode>& parts, Takes takes) {
        auto* node = Add(parts, RegexNode_Bytes);
        if (node == nullptr) return false;
        for (std::size_t i = 0; i < node->bytes.size(); ++i)
            node->bytes[i] = takes(m_folding->fold[i]) || takes(m_otherFolding->fold[i]);
        return true;
    }

    RegexNode* Add(std::vector<RegexNode>& parts, RegexNode_e kind) {
        if (++m_tree.nodes > MaxNodes) return nullptr;
        parts.emplace_back();
        parts.back().kind = kind;
        return &parts.back();
    }

    bool AddAssert(const State*& at, std::vector<RegexNode>& parts, RegexAssert_e assertion) {
        auto* node = Add(parts, RegexNode_Assert);
        if (node == nullptr) return false;
        node->assertion = assertion;
        at = at->next.p;
        return true;
    }

    // Reads until the state `end`, or one that ends a group, branch or body, and leaves `at` there.
    bool ReadParts(const State*& at, const State* end, std::vector<RegexNode>& parts) {
        if (++m_depth > MaxDepth) return false;
        while (at != nullptr && at != end && at->type != machine::syntax_element_endmark &&
               at->type != machine::syntax_element_jump &&
               at->type != machine::syntax_element_match)
            if (!ReadState(at, parts)) return false;
        --m_depth;
        return at != nullptr;
    }

    bool ReadState(const State*& at, std::vector<RegexNode>& parts) {
        switch (at->type) {
            case machine::syntax_element_startmark:
                return ReadMark(at, parts);
            case machine::syntax_element_alt:
                return ReadChoice(at, parts);
            case machine::syntax_element_rep:
            case machine::syntax_element_dot_rep:
            case machine::syntax_element_char_rep:
            case machine::syntax_element_short_set_rep:
                return ReadRepeat(at, parts);
            case machine::syntax_element_backref:
                return ReadBackReference(at, parts);
            case machine::syntax_element_toggle_case:
            case machine::syntax_element_restart_continue:
                m_tree.isExact = false;
                at = at->next.p;
                return true;
            default:
                return ReadBytes(at, parts) || ReadAssert(at, parts);
        }
    }

    bool ReadBytes(const State*& at, std::vector<RegexNode>& parts) {
        bool added = false;
        if (at->type == machine::syntax_element_literal) {
            added = AddLiteral(at, parts);
        } else if (at->type == machine::syntax_element_set) {
            const auto* map = As<machine::re_set>(at)->_map;
            added =
                AddBytes(parts, [&](char c) { return map[static_cast<unsigned char>(c)] != 0; });
        } else if (at->type == machine::syntax_element_wild) {
            added = AddWild(at, parts);
        }
        if (added) at = at->next.p;
        return added;
    }

    bool AddLiteral(const State* at, std::vector<RegexNode>& parts) {
        const auto* literal = As<machine::re_literal>(at);
        const auto* text = static_cast<const char*>(static_cast<const void*>(literal + 1));
        for (unsigned i = 0; i < literal->length; ++i) {
            auto* node = Add(parts, RegexNode_Bytes);
            if (node == nullptr) return false;
            const auto byte = static_cast<unsigned char>(text[i]);
            node->bytes = m_folding->bytesOf[byte] | m_otherFolding->bytesOf[byte];
        }
        return true;
    }

    bool AddWild(const State* at, std::vector<RegexNode>& parts) {
        auto* node = Add(parts, RegexNode_Bytes);
        if (node == nullptr) return false;
        node->bytes.set();
        if ((machine::test_newline & As<machine::re_dot>(at)->mask) == 0)
            node->bytes &= ~LineEndBytes();
        return true;
    }

    bool ReadAssert(const State*& at, std::vector<RegexNode>& parts) {
        switch (at->type) {
            case machine::syntax_element_start_line:
                return AddAssert(at, parts, RegexAssert_LineStart);
            case machine::syntax_element_end_line:
                return AddAssert(at, parts, RegexAssert_LineEnd);
            case machine::syntax_element_buffer_start:
                return AddAssert(at, parts, RegexAssert_TextStart);
            case machine::syntax_element_buffer_end:
                return AddAssert(at, parts, RegexAssert_TextEnd);
            case machine::syntax_element_soft_buffer_end:
                return AddAssert(at, parts, RegexAssert_SoftTextEnd);
            case machine::syntax_element_word_boundary:
                return AddAssert(at, parts, RegexAssert_WordEdge);
            case machine::syntax_element_within_word:
                return AddAssert(at, parts, RegexAssert_WithinWord);
            case machine::syntax_element_word_start:
                return AddAssert(at, parts, RegexAssert_WordStart);
            case machine::syntax_element_word_end:
                return AddAssert(at, parts, RegexAssert_WordEnd);
            default:
                return false;
        }
    }

    bool ReadMark(const State*& at, std::vector<RegexNode>& parts) {
        if (at == m_opening) {
            at = at->next.p;
            return true;
        }
        const int index = As<machine::re_brace>(at)->index;
        if (index >= 0) return ReadGroup(at, index, parts);
        m_tree.isExact = false;
        if (index == -5) {  // where the match is said to begin
            at = at->next.p;
            return true;
        }
        if (index < -3) return false;
        const auto* jump = As<machine::re_jump>(at->next.p);
        const auto* close = jump->alt.p;
        if (index == -3) {  // a group that isn't gone back into
            auto* group = Add(parts, RegexNode_Group);
            const State* body = jump->next.p;
            if (group == nullptr || !ReadParts(body, close, group->parts) || body != close)
                return false;
        }
        at = close->next.p;
        return true;
    }

    bool ReadGroup(const State*& at, int index, std::vector<RegexNode>& parts) {
        auto* group = Add(parts, RegexNode_Group);
        if (group == nullptr) return false;
        group->capture = index;
        at = at->next.p;
        if (!ReadParts(at, nullptr, group->parts)) return false;
        if (at->type != machine::syntax_element_endmark ||
            As<machine::re_brace>(at)->index != index)
            return false;
        at = at->next.p;
        return true;
    }

    bool ReadChoice(const State*& at, std::vector<RegexNode>& parts) {
        auto* choice = Add(parts, RegexNode_Choice);
        if (choice == nullptr) return false;
        const State* end = nullptr;
        while (at->type == machine::syntax_element_alt) {
            const auto* second = As<machine::re_alt>(at)->alt.p;
            at = at->next.p;
            if (!ReadBranch(at, nullptr, choice->parts)) return false;
            if (at->type != machine::syntax_element_jump || at->next.p != second) return false;
            const auto* target = As<machine::re_jump>(at)->alt.p;
            if (end != nullptr && target != end) return false;
            end = target;
            at = second;
        }
        return ReadBranch(at, end, choice->parts) && at == end;
    }

    bool ReadBranch(const State*& at, const State* end, std::vector<RegexNode>& branches) {
        auto* branch = Add(branches, RegexNode_Group);
        return branch != nullptr && ReadParts(at, end, branch->parts);
    }

    bool ReadRepeat(const State*& at, std::vector<RegexNode>& parts) {
        const auto* repeat = As<machine::re_repeat>(at);
        auto* node = Add(parts, RegexNode_Repeat);
        if (node == nullptr) return false;
        node->min = repeat->min;
        node->max = repeat->max;
        node->isGreedy = repeat->greedy;
        at = repeat->next.p;
        if (!ReadParts(at, nullptr, node->parts)) return false;
        if (at->type != machine::syntax_element_jump || As<machine::re_jump>(at)->alt.p != repeat)
            return false;
        at = repeat->alt.p;
        return true;
    }

    bool ReadBackReference(const State*& at, std::vector<RegexNode>& parts) {
        auto* node = Add(parts, RegexNode_Repeat);
        if (node == nullptr) return false;
        node->max = RegexNoMaximum;
        auto* any = Add(node->parts, RegexNode_Bytes);
        if (any == nullptr) return false;
        any->bytes.set();
        m_tree.isExact = false;
        at = at->next.p;
        return true;
    }

    const Folding* m_folding;
    const Folding* m_otherFolding;
    bool m_isReadable;
    const State* m_opening = nullptr;
    RegexTree m_tree;
    int m_depth = 0;
};

RegexBytes BytesOf(const char* text) {
    RegexBytes bytes;
    for (; *text != '\0'; ++text) bytes.set(static_cast<unsigned char>(*text));
    return bytes;
}

}  // namespace

const RegexBytes& LineEndBytes() {
    static const auto bytes = BytesOf("\n\r\f");
    return bytes;
}

const RegexBytes& WordBytes() {
    static const auto bytes =
        BytesOf("0123456789_ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    return bytes;
}

std::optional<RegexTree> ReadRegexTree(const boost::regex& expression) {
    return CTreeReader(expression).Read(expression);
}

RegexFirst FirstOfNode(const RegexNode& node) {
    switch (node.kind) {
        case RegexNode_Bytes:
            return {node.bytes, false};
        case RegexNode_Assert:
            return {{}, true};
        case RegexNode_Choice: {
            RegexFirst first;
            for (const auto& branch : node.parts) {
                const auto one = FirstOfNode(branch);
                first.bytes |= one.bytes;
                first.canBeEmpty = first.canBeEmpty || one.canBeEmpty;
            }
            return first;
        }
        case RegexNode_Repeat: {
            if (node.max == 0) return {{}, true};
            auto first = FirstOfParts(node.parts, 0);
            first.canBeEmpty = first.canBeEmpty || node.min == 0;
            return first;
        }
        default:
            return FirstOfParts(node.parts, 0);
    }
}

RegexFirst FirstOfParts(const std::vector<RegexNode>& parts, std::size_t from) {
    RegexFirst first;
    first.canBeEmpty = true;
    for (; from < parts.size() && first.canBeEmpty; ++from) {
        const auto one = FirstOfNode(parts[from]);
        first.bytes |= one.bytes;
        first.canBeEmpty = one.canBeEmpty;
    }
    return first;
}
