// Choosing and finding the string.
//
// 1. Strings are runs of single bytes (or letters in both cases) that a match can't do without: in
//    the expression itself, its groups, and repeats of at least once. Of these the longest is
//    taken, and of equally long ones that of the rarer bytes.
// 2. Sixteen places of the text are tried at once, by two bytes of the string; only where both are
//    found the whole is compared.
#include "tzparser/regex/regexscreen.h"

#include <algorithm>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

constexpr std::size_t Block = 16;
constexpr char CaseBit = 0x20;
// What device texts hold most, most frequent first; anything else is rarer.
constexpr std::string_view Frequent = " e0tiasnor1c2dlpu,.m-:5g3fhb/4vy";

std::size_t Rareness(char byte) {
    return std::min(Frequent.find(byte), Frequent.size());
}

}  // namespace

struct CRegexScreen::Candidate {
    std::array<char, MaxLength> bytes{};
    std::array<char, MaxLength> fold{};
    std::size_t length = 0;
    std::size_t rareness = 0;

    // Whether the set is one byte or one letter; then it is added.
    bool Add(const RegexBytes& set) {
        const auto count = set.count();
        if (count == 0 || count > 2 || length == MaxLength) return false;
        const auto first = set._Find_first();
        const auto last = count == 2 ? set._Find_next(first) : first;
        const auto byte = static_cast<char>(static_cast<unsigned char>(last));
        if (count == 2 && (byte < 'a' || byte > 'z' || last - first != CaseBit)) return false;
        bytes[length] = byte;
        fold[length] = count == 2 ? CaseBit : '\0';
        rareness += Rareness(byte);
        ++length;
        return true;
    }

    bool IsBetterThan(const Candidate& other) const {
        // Beyond this length rareness counts more.
        constexpr std::size_t longEnough = 5;
        const auto mine = std::min(length, longEnough);
        const auto its = std::min(other.length, longEnough);
        return mine != its ? mine > its : rareness > other.rareness;
    }
};

class CRegexScreen::CChooser {
public:
    void Walk(const std::vector<RegexNode>& parts) {
        for (const auto& part : parts) {
            if (part.kind == RegexNode_Bytes) {
                Take(part.bytes);
            } else if (part.kind == RegexNode_Group) {
                Walk(part.parts);
            } else if (part.kind != RegexNode_Assert) {
                End();
                if (part.kind == RegexNode_Repeat && part.min > 0) {
                    Walk(part.parts);
                    End();
                }
            }
        }
    }

    const Candidate& Best() {
        End();
        return m_best;
    }

private:
    void Take(const RegexBytes& set) {
        if (m_current.Add(set)) return;
        End();
        m_current.Add(set);
    }

    void End() {
        if (m_current.IsBetterThan(m_best)) m_best = m_current;
        m_current = Candidate();
    }

    Candidate m_current;
    Candidate m_best;
};

CRegexScreen::CRegexScreen(const RegexTree& tree) {
    CChooser chooser;
    chooser.Walk(tree.root.parts);
    const auto& best = chooser.Best();
    m_bytes = best.bytes;
    m_fold = best.fold;
    m_length = best.length;
    for (std::size_t i = 1; i < m_length; ++i)
        if (Rareness(m_bytes[i]) > Rareness(m_bytes[m_firstProbe])) m_firstProbe = i;
    m_lastProbe = m_firstProbe == 0 && m_length > 1 ? 1 : 0;
    for (std::size_t i = 0; i < m_length; ++i)
        if (i != m_firstProbe && Rareness(m_bytes[i]) > Rareness(m_bytes[m_lastProbe]))
            m_lastProbe = i;
}

bool CRegexScreen::IsAt(const char* at) const noexcept {
    for (std::size_t i = 0; i < m_length; ++i)
        if ((at[i] | m_fold[i]) != m_bytes[i]) return false;
    return true;
}

bool CRegexScreen::Find(std::string_view text) const noexcept {
    if (text.size() < m_length) return false;
    const auto places = text.size() - m_length + 1;
    return places < Block ? FindInShort(text) : FindIn(text.data(), places);
}

// In a copy that may be read past its end.
bool CRegexScreen::FindInShort(std::string_view text) const noexcept {
    std::array<char, Block + MaxLength + Block> copy{};
    std::memcpy(copy.data(), text.data(), text.size());
    return FindIn(copy.data(), text.size() - m_length + 1);
}

#if defined(__SSE2__)

// The last block overlaps the one before it; the only one of a short text reaches into what stands
// behind the text's copy.
bool CRegexScreen::FindIn(const char* begin, std::size_t places) const noexcept {
    const auto load = [](const char* at) {
        __m128i block;
        std::memcpy(&block, at, sizeof(block));
        return block;
    };
    const auto first = _mm_set1_epi8(m_bytes[m_firstProbe]);
    const auto firstFold = _mm_set1_epi8(m_fold[m_firstProbe]);
    const auto last = _mm_set1_epi8(m_bytes[m_lastProbe]);
    const auto lastFold = _mm_set1_epi8(m_fold[m_lastProbe]);
    const auto lastStart = places < Block ? 0 : places - Block;
    for (std::size_t at = 0; at < places; at += Block) {
        const auto start = std::min(at, lastStart);
        const char* const block = begin + start;
        const auto isFirst =
            _mm_cmpeq_epi8(_mm_or_si128(load(block + m_firstProbe), firstFold), first);
        const auto isLast = _mm_cmpeq_epi8(_mm_or_si128(load(block + m_lastProbe), lastFold), last);
        auto hits = static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(isFirst, isLast)));
        for (; hits != 0; hits &= hits - 1) {
            const auto place = start + static_cast<std::size_t>(__builtin_ctz(hits));
            if (place < places && IsAt(begin + place)) return true;
        }
    }
    return false;
}

#else

bool CRegexScreen::FindIn(const char* begin, std::size_t places) const noexcept {
    for (std::size_t place = 0; place < places; ++place)
        if ((begin[place + m_firstProbe] | m_fold[m_firstProbe]) == m_bytes[m_firstProbe] &&
            IsAt(begin + place))
            return true;
    return false;
}

#endif
