// Translating a tree into the compiled engine's syntax.
//
// Sets are written as the bytes that they hold, so the engine's own idea of classes and letter case
// never matters: the option for ignoring case is given only when every set holds both cases of each
// of its letters, as it compares strings faster with it. "^" and "$" become the ends of the text,
// which is why a caller that has them must keep line ends out. Left out are
//   - lazy repeats with a maximum at the beginning (see SkipsStarts),
//   - repeats of what can be empty, where engines differ in when they stop,
//   - captures inside of repeats, but for optional ones,
//   - all assertions but the ends and "\b".
#include "tzparser/regex/regexjit.h"

#include <algorithm>
#include <array>
#include <cstdint>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

namespace {

constexpr int MaxGroups = 60;
constexpr std::size_t MaxNodes = 400;
constexpr std::size_t MaxCount = 1000;

constexpr std::size_t ToLower = 'a' - 'A';

bool HoldsBothCases(const RegexBytes& bytes) {
    for (std::size_t letter = 'A'; letter <= 'Z'; ++letter)
        if (bytes[letter] != bytes[letter + ToLower]) return false;
    return true;
}

bool HoldsBothCases(const RegexNode& node) {
    return (node.kind != RegexNode_Bytes || HoldsBothCases(node.bytes)) &&
           std::all_of(node.parts.begin(), node.parts.end(),
                       [](const auto& part) { return HoldsBothCases(part); });
}

std::size_t FirstOf(const RegexBytes& bytes) {
    std::size_t first = 0;
    while (first < bytes.size() && !bytes[first]) ++first;
    return first;
}

// A letter in both cases and nothing else.
bool IsOneLetter(const RegexBytes& bytes) {
    const auto first = FirstOf(bytes);
    return bytes.count() == 2 && first >= 'A' && first <= 'Z' && bytes[first + ToLower];
}

// After a failure the plain matcher goes on behind what a repeat in front has taken. For a lazy one
// with a maximum that passes over places where a match begins, so it finds another match or none.
bool SkipsStarts(const std::vector<RegexNode>& parts) {
    for (const auto& part : parts) {
        if (part.kind == RegexNode_Assert) continue;
        if (part.kind == RegexNode_Choice)
            return std::any_of(part.parts.begin(), part.parts.end(),
                               [](const auto& branch) { return SkipsStarts(branch.parts); });
        const bool isRepeat = part.kind == RegexNode_Repeat;
        if (isRepeat && !part.isGreedy && part.max != RegexNoMaximum) return true;
        if (part.kind != RegexNode_Bytes && SkipsStarts(part.parts)) return true;
        if (!FirstOfNode(part).canBeEmpty || isRepeat) return false;
    }
    return false;
}

class CTranslation {
public:
    // Empty when the tree can't be translated.
    std::string Make(const RegexTree& tree) {
        if (!tree.isExact || tree.nodes > MaxNodes || SkipsStarts(tree.root.parts)) return {};
        m_ignoresCase = HoldsBothCases(tree.root);
        if (!Parts(tree.root.parts, false)) return {};
        return std::move(m_out);
    }
    bool IgnoresCase() const { return m_ignoresCase; }

private:
    bool Parts(const std::vector<RegexNode>& parts, bool isRepeated) {
        return std::all_of(parts.begin(), parts.end(),
                           [&](const auto& part) { return Node(part, isRepeated); });
    }

    bool Node(const RegexNode& node, bool isRepeated) {
        switch (node.kind) {
            case RegexNode_Bytes:
                AddBytes(node.bytes);
                return node.bytes.any();
            case RegexNode_Assert:
                return Assert(node.assertion);
            case RegexNode_Choice:
                return Choice(node, isRepeated);
            case RegexNode_Repeat:
                return Repeat(node, isRepeated);
            default:
                return Group(node, isRepeated);
        }
    }

    bool Group(const RegexNode& node, bool isRepeated) {
        if (node.capture != 0) {
            // The numbers must be those that the engine gives.
            if (isRepeated || node.capture != ++m_groups || m_groups > MaxGroups) return false;
        }
        m_out += node.capture != 0 ? "(" : "(?:";
        if (!Parts(node.parts, isRepeated)) return false;
        m_out += ')';
        return true;
    }

    bool Assert(RegexAssert_e assertion) {
        switch (assertion) {
            case RegexAssert_LineStart:
            case RegexAssert_TextStart:
                m_out += "\\A";
                return true;
            case RegexAssert_LineEnd:
            case RegexAssert_TextEnd:
                m_out += "\\z";
                return true;
            case RegexAssert_WordEdge:
                m_out += "\\b";
                return true;
            default:
                return false;
        }
    }

    bool Choice(const RegexNode& node, bool isRepeated) {
        m_out += "(?:";
        for (std::size_t i = 0; i < node.parts.size(); ++i) {
            if (i != 0) m_out += '|';
            if (!Parts(node.parts[i].parts, isRepeated)) return false;
        }
        m_out += ')';
        return true;
    }

    bool Repeat(const RegexNode& node, bool isRepeated) {
        const bool isOptional = node.min == 0 && node.max == 1;
        const bool isBounded = node.max != RegexNoMaximum;
        if (node.max == 0 || node.min > MaxCount || (isBounded && node.max > MaxCount))
            return false;
        if (FirstOfParts(node.parts, 0).canBeEmpty) return false;
        const bool isSingle = node.parts.size() == 1 && node.parts[0].kind != RegexNode_Repeat;
        if (!isSingle) m_out += "(?:";
        if (!Parts(node.parts, isRepeated || !isOptional)) return false;
        if (!isSingle) m_out += ')';
        m_out += '{' + std::to_string(node.min) + ',';
        if (isBounded) m_out += std::to_string(node.max);
        m_out += node.isGreedy ? "}" : "}?";
        return true;
    }

    void AddBytes(const RegexBytes& bytes) {
        if (bytes.all()) {
            m_out += '.';
        } else if (bytes.count() == 1 || (m_ignoresCase && IsOneLetter(bytes))) {
            AddByte(FirstOf(bytes));
        } else {
            AddSet(bytes);
        }
    }

    void AddSet(const RegexBytes& bytes) {
        const bool isMost = bytes.count() > bytes.size() / 2;
        m_out += isMost ? "[^" : "[";
        const auto listed = isMost ? ~bytes : bytes;
        for (std::size_t begin = 0; begin < listed.size(); ++begin) {
            if (!listed[begin]) continue;
            auto end = begin;
            while (end + 1 < listed.size() && listed[end + 1]) ++end;
            AddByte(begin);
            if (end > begin) {
                m_out += '-';
                AddByte(end);
            }
            begin = end;
        }
        m_out += ']';
    }

    void AddByte(std::size_t byte) {
        constexpr std::string_view digits = "0123456789abcdef";
        m_out += "\\x";
        m_out += digits[byte / digits.size()];
        m_out += digits[byte % digits.size()];
    }

    std::string m_out;
    int m_groups = 0;
    bool m_ignoresCase = false;
};

struct FreeCode {
    void operator()(pcre2_code* code) const { pcre2_code_free(code); }
};
struct FreeMatch {
    void operator()(pcre2_match_data* match) const { pcre2_match_data_free(match); }
};

}  // namespace

struct CRegexJitMatch::Impl {
    std::unique_ptr<pcre2_match_data, FreeMatch> data;
    const PCRE2_SIZE* places = nullptr;
};

CRegexJitMatch::CRegexJitMatch() : m_impl(std::make_unique<Impl>()) {}
CRegexJitMatch::~CRegexJitMatch() = default;
CRegexJitMatch::CRegexJitMatch(CRegexJitMatch&&) noexcept = default;
CRegexJitMatch& CRegexJitMatch::operator=(CRegexJitMatch&&) noexcept = default;

std::ptrdiff_t CRegexJitMatch::Begin(int group) const noexcept {
    const auto place = m_impl->places[2 * static_cast<std::size_t>(group)];
    return place == PCRE2_UNSET ? -1 : static_cast<std::ptrdiff_t>(place);
}

std::ptrdiff_t CRegexJitMatch::End(int group) const noexcept {
    const auto place = m_impl->places[2 * static_cast<std::size_t>(group) + 1];
    return place == PCRE2_UNSET ? -1 : static_cast<std::ptrdiff_t>(place);
}

struct alignas(CacheLine) CRegexJit::Impl {
    std::unique_ptr<pcre2_code, FreeCode> code;
    int groups = 0;
};

CRegexJit::CRegexJit(std::unique_ptr<Impl> impl) : m_impl(std::move(impl)) {}
CRegexJit::~CRegexJit() = default;

std::string CRegexJit::Translate(const RegexTree& tree) {
    return CTranslation().Make(tree);
}

std::unique_ptr<const CRegexJit> CRegexJit::Make(const RegexTree& tree) {
    CTranslation translation;
    const auto expression = translation.Make(tree);
    if (expression.empty()) return nullptr;
    auto options = PCRE2_DOTALL | PCRE2_NEVER_UTF | PCRE2_NEVER_UCP;
    if (translation.IgnoresCase()) options |= PCRE2_CASELESS;
    auto impl = std::make_unique<Impl>();
    int error = 0;
    PCRE2_SIZE offset = 0;
    const auto* text = static_cast<PCRE2_SPTR>(static_cast<const void*>(expression.data()));
    impl->code.reset(pcre2_compile(text, expression.size(), options, &error, &offset, nullptr));
    if (!impl->code || pcre2_jit_compile(impl->code.get(), PCRE2_JIT_COMPLETE) != 0) return nullptr;
    std::uint32_t groups = 0;
    pcre2_pattern_info(impl->code.get(), PCRE2_INFO_CAPTURECOUNT, &groups);
    impl->groups = static_cast<int>(groups);
    return std::unique_ptr<const CRegexJit>(new CRegexJit(std::move(impl)));
}

int CRegexJit::GroupCount() const noexcept {
    return m_impl->groups;
}

std::optional<bool> CRegexJit::Search(std::string_view text, CRegexJitMatch& match) const noexcept {
    auto& found = *match.m_impl;
    if (!found.data) {
        found.data.reset(pcre2_match_data_create(MaxGroups + 1, nullptr));
        if (!found.data) return std::nullopt;
        found.places = pcre2_get_ovector_pointer(found.data.get());
    }
    const auto* begin = static_cast<PCRE2_SPTR>(static_cast<const void*>(text.data()));
    const int result =
        pcre2_jit_match(m_impl->code.get(), begin, text.size(), 0, 0, found.data.get(), nullptr);
    if (result > 0) return true;
    if (result == PCRE2_ERROR_NOMATCH) return false;
    return std::nullopt;
}
