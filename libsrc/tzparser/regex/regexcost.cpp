// A bound for the states that the plain matcher visits.
//
// The walk goes through the expression as the matcher would and keeps, as a polynomial of the
// text's length n, how many times at most each place is arrived at, going back and trying anew
// included. One search arrives at the beginning n + 1 times. A repeated byte class hands each
// arrival on at up to n + 1 places, and the places multiply, but for two things that keep ordinary
// expressions cheap:
//   - what follows can't begin with a byte of the class: then all places but the last fail at once
//     ("\d+" before "%"),
//   - what follows is a fixed string: it stands at most n / (its length) times in the text.
// So a flow knows, beside its arrivals, the arrivals at the place where its last spreading began.
// A repeated group is followed only when each of its rounds can end in one way; otherwise the
// number of ways may grow exponentially and nothing is promised.
//
// The matcher gives up for memory too: its stack of places to go back to is made of blocks, and it
// counts each time that it goes on to another block but not when it comes back from one. A search
// that goes to and fro over a block's end, or once from each beginning, so runs out of blocks that
// it doesn't hold. Hence the stack has to stay within the first block.
#include "tzparser/regex/regexcost.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t MaxNodes = 400;
constexpr double Margin = 2;         // for states that the walk may not see
constexpr double LeastLimit = 1e5;   // of states, whatever the lengths
constexpr double MostLimit = 1e8;    // of the part that grows with the square of the text's length
constexpr double FirstBlock = 4080;  // bytes for entries in the first block of the matcher's stack
constexpr std::size_t LongestTrusted = std::size_t{1} << 24U;

// A polynomial of the text's length, with no negative factor.
struct Poly {
    std::array<double, 7> factors{};
    bool isInfinite = false;

    static Poly Linear(double constant, double slope) {
        Poly poly;
        poly.factors[0] = constant;
        poly.factors[1] = slope;
        return poly;
    }

    double At(double n) const {
        double value = 0;
        for (auto factor = factors.rbegin(); factor != factors.rend(); ++factor)
            value = value * n + *factor;
        return value;
    }
};

const Poly One = Poly::Linear(1, 0);

Poly operator+(Poly left, const Poly& right) {
    left.isInfinite = left.isInfinite || right.isInfinite;
    for (std::size_t i = 0; i < left.factors.size(); ++i) left.factors[i] += right.factors[i];
    return left;
}

Poly operator*(const Poly& left, const Poly& right) {
    Poly product;
    product.isInfinite = left.isInfinite || right.isInfinite;
    for (std::size_t i = 0; i < left.factors.size(); ++i) {
        for (std::size_t j = 0; j < right.factors.size(); ++j) {
            const auto factor = left.factors[i] * right.factors[j];
            if (factor == 0) continue;
            if (i + j < product.factors.size())
                product.factors[i + j] += factor;
            else
                product.isInfinite = true;
        }
    }
    return product;
}

Poly Most(Poly left, const Poly& right) {
    left.isInfinite = left.isInfinite || right.isInfinite;
    for (std::size_t i = 0; i < left.factors.size(); ++i)
        left.factors[i] = std::max(left.factors[i], right.factors[i]);
    return left;
}

// For the bounds here the smaller at a length of a hundred, which keeps both valid.
const Poly& Least(const Poly& left, const Poly& right) {
    constexpr double typical = 100;
    if (left.isInfinite || right.isInfinite) return left.isInfinite ? right : left;
    return left.At(typical) <= right.At(typical) ? left : right;
}

bool IsAtMostOne(const Poly& poly) {
    return !poly.isInfinite && poly.factors[0] <= 1 &&
           std::all_of(poly.factors.begin() + 1, poly.factors.end(),
                       [](double factor) { return factor == 0; });
}

// Arrivals at one place of the expression.
struct Flow {
    Poly arrivals;
    // Arrivals where the last spreading began. Those that came from one of them stand at different
    // places of the text, and at most one of them doesn't see a byte of `spread` next.
    Poly roots;
    RegexBytes spread;
};

// What comes behind a place of the expression.
struct Follow {
    RegexBytes bytes;
    bool canBeAnything = true;
    // All that comes can be empty: whoever arrives has matched, and nothing is tried anew.
    bool isSuccess = true;
};

// Whether nothing that comes can make the match fail.
bool IsSure(const RegexNode& node) {
    switch (node.kind) {
        case RegexNode_Repeat:
            return node.min == 0;
        case RegexNode_Group:
            return std::all_of(node.parts.begin(), node.parts.end(), IsSure);
        case RegexNode_Choice:
            return std::any_of(node.parts.begin(), node.parts.end(), IsSure);
        default:
            return false;
    }
}

bool AreSure(const std::vector<RegexNode>& parts, std::size_t from) {
    return std::all_of(parts.begin() + static_cast<std::ptrdiff_t>(from), parts.end(), IsSure);
}

const RegexBytes& Blanks() {
    static const auto blanks = [] {
        RegexBytes bytes;
        for (const char c : {' ', '\t', '\n', '\v', '\f', '\r'})
            bytes.set(static_cast<unsigned char>(c));
        return bytes;
    }();
    return blanks;
}

class CCostWalk {
public:
    explicit CCostWalk(bool areBlanksFew) : m_areBlanksFew(areBlanksFew) {}

    Poly Total(const RegexTree& tree) {
        Flow start;
        start.arrivals = Poly::Linear(1, 1);
        start.roots = One;
        start.spread.set();
        Parts(tree.root.parts, start, Follow());
        return m_total;
    }
    bool SeesLines() const { return m_seesLines; }

private:
    static Follow FollowOf(const std::vector<RegexNode>& parts, std::size_t from,
                           const Follow& behind) {
        const bool isSuccess = behind.isSuccess && AreSure(parts, from);
        // Only line ends follow "$". Behind other assertions everything counts as possible.
        if (from < parts.size() && parts[from].kind == RegexNode_Assert &&
            parts[from].assertion == RegexAssert_LineEnd)
            return {LineEndBytes(), false, false};
        const auto first = FirstOfParts(parts, from);
        Follow follow{first.bytes, false, isSuccess};
        if (first.canBeEmpty) {
            follow.bytes |= behind.bytes;
            follow.canBeAnything = behind.canBeAnything;
        }
        return follow;
    }

    // How many arrivals can take a byte of `bytes`.
    static const Poly& Passing(const Flow& flow, const RegexBytes& bytes) {
        return (flow.spread & bytes).none() ? Least(flow.roots, flow.arrivals) : flow.arrivals;
    }

    static const Poly& Passing(const Flow& flow, const Follow& follow) {
        return follow.canBeAnything ? flow.arrivals : Passing(flow, follow.bytes);
    }

    Flow Parts(const std::vector<RegexNode>& parts, Flow flow, const Follow& behind) {
        for (std::size_t at = 0; at < parts.size();) {
            auto end = at + 1;
            if (parts[at].kind == RegexNode_Bytes) {
                while (end < parts.size() && parts[end].kind == RegexNode_Bytes) ++end;
                String(parts, at, end, flow);
            } else {
                // Arrivals that can't go on may still be handed through what can be empty.
                m_total = m_total + flow.arrivals * Poly::Linear(EmptyParts(parts, at) + 2, 0);
                flow = Part(parts[at], flow, FollowOf(parts, end, behind));
            }
            at = end;
            if (behind.isSuccess && AreSure(parts, at)) flow = Rooted(One);
        }
        return flow;
    }

    static double EmptyParts(const std::vector<RegexNode>& parts, std::size_t from) {
        double count = 0;
        for (; from < parts.size() && FirstOfNode(parts[from]).canBeEmpty; ++from) ++count;
        return count;
    }

    Flow Part(const RegexNode& part, const Flow& flow, const Follow& behind) {
        switch (part.kind) {
            case RegexNode_Assert:
                return Assert(part, flow);
            case RegexNode_Choice:
                return Choice(part, flow, behind);
            case RegexNode_Repeat:
                return Repeat(part, flow, behind);
            default:
                return Group(part, flow, behind);
        }
    }

    Flow Group(const RegexNode& part, const Flow& flow, const Follow& behind) {
        auto out = Parts(part.parts, flow, behind);
        m_total = m_total + out.arrivals;
        return out;
    }

    void String(const std::vector<RegexNode>& parts, std::size_t begin, std::size_t end,
                Flow& flow) {
        const auto length = end - begin;
        const auto passing = Passing(flow, parts[begin].bytes);
        m_total = m_total + flow.arrivals + passing * Poly::Linear(static_cast<double>(length), 0);
        const auto period = static_cast<double>(Period(parts, begin, end));
        flow.arrivals = Least(passing, flow.roots * Poly::Linear(1, 1 / period));
        flow.spread.set();
    }

    // By how much a string must be moved at least to fit over itself.
    static std::size_t Period(const std::vector<RegexNode>& parts, std::size_t begin,
                              std::size_t end) {
        for (std::size_t period = 1; period < end - begin; ++period) {
            bool fits = true;
            for (auto at = begin; fits && at + period < end; ++at)
                fits = (parts[at].bytes & parts[at + period].bytes).any();
            if (fits) return period;
        }
        return end - begin;
    }

    // On a text of one line the line's ends are the text's.
    Flow Assert(const RegexNode& part, Flow flow) {
        const bool isLine =
            part.assertion == RegexAssert_LineStart || part.assertion == RegexAssert_LineEnd;
        m_seesLines = m_seesLines || isLine;
        if (isLine || part.assertion == RegexAssert_TextStart ||
            part.assertion == RegexAssert_TextEnd)
            flow.arrivals = Least(flow.roots, flow.arrivals);
        return flow;
    }

    Flow Choice(const RegexNode& part, const Flow& flow, const Follow& behind) {
        RegexBytes seen;
        bool isEitherOr = true;
        for (const auto& branch : part.parts) {
            const auto first = FirstOfNode(branch);
            isEitherOr = isEitherOr && !first.canBeEmpty && (first.bytes & seen).none();
            seen |= first.bytes;
        }
        const auto in = isEitherOr ? Rooted(Passing(flow, seen)) : flow;
        Flow out;
        for (const auto& branch : part.parts) {
            m_total = m_total + flow.arrivals + flow.arrivals;
            Join(out, Group(branch, in, behind), isEitherOr);
        }
        return out;
    }

    // Each arrival is taken for a root of its own: then shares of it add up to no more than one.
    static Flow Rooted(const Poly& arrivals) { return {arrivals, arrivals, RegexBytes()}; }

    // Where only one of the ways can be gone from an arrival, the larger counts.
    static void Join(Flow& all, const Flow& one, bool isEitherOr) {
        all.arrivals = isEitherOr ? Most(all.arrivals, one.arrivals) : all.arrivals + one.arrivals;
        all.roots = isEitherOr ? Most(all.roots, one.roots) : all.roots + one.roots;
        all.spread |= one.spread;
    }

    Flow Repeat(const RegexNode& part, const Flow& flow, const Follow& behind) {
        if (part.max == 0) return flow;
        if (part.parts.size() == 1 && part.parts[0].kind == RegexNode_Bytes)
            return RepeatByte(part, flow, behind);
        if (part.min == 0 && part.max == 1) return Optional(part, flow, behind);
        return RepeatGroup(part, flow, behind);
    }

    // Those that take no byte of the repeat go on only with one that may follow.
    static const Poly& Entering(const RegexNode& part, const Flow& flow, const RegexBytes& first,
                                const Follow& behind) {
        if (part.min > 0) return Passing(flow, first);
        return behind.canBeAnything ? flow.arrivals : Passing(flow, first | behind.bytes);
    }

    Flow RepeatByte(const RegexNode& part, const Flow& flow, const Follow& behind) {
        const auto& bytes = part.parts[0].bytes;
        const auto passing = Entering(part, flow, bytes, behind);
        if (behind.isSuccess) {
            m_total = m_total + Poly::Linear(1, 1);
            return Rooted(One);
        }
        Flow out = flow;
        if (part.max == part.min) {
            out.arrivals = passing;
            out.spread.set();
        } else {
            out.roots = passing;
            out.arrivals = passing * Ways(part, bytes);
            out.spread = bytes;
        }
        m_total = m_total + out.arrivals;
        return out;
    }

    Poly Ways(const RegexNode& part, const RegexBytes& bytes) const {
        constexpr std::size_t few = 16;
        auto ways = part.max - part.min;
        if (m_areBlanksFew && (bytes & ~Blanks()).none()) ways = std::min(ways, RegexFewBlanks);
        return ways < few ? Poly::Linear(static_cast<double>(ways) + 1, 0) : Poly::Linear(1, 1);
    }

    Flow Optional(const RegexNode& part, const Flow& flow, const Follow& behind) {
        const auto first = FirstOfParts(part.parts, 0);
        const bool isEitherOr =
            !first.canBeEmpty && !behind.canBeAnything && (first.bytes & behind.bytes).none();
        auto out = isEitherOr ? Rooted(Passing(flow, first.bytes | behind.bytes)) : flow;
        const auto taken = Parts(part.parts, out, behind);
        m_total = m_total + taken.arrivals + taken.arrivals;
        Join(out, taken, isEitherOr);
        return out;
    }

    // One round from one arrival is walked by itself.
    Flow RepeatGroup(const RegexNode& part, const Flow& flow, const Follow& behind) {
        const auto first = FirstOfParts(part.parts, 0);
        Flow out = flow;
        const auto before = m_total + flow.arrivals;
        m_total = Poly();
        const Flow single{One, One, RegexBytes()};
        const Follow again{first.bytes | behind.bytes, behind.canBeAnything, false};
        const auto round = Parts(part.parts, single, again);
        const auto cost = m_total;
        const bool isOneWay = !first.canBeEmpty && IsAtMostOne(Passing(round, again));
        const auto entered = Entering(part, flow, first.bytes, behind);
        const auto rounds = entered * RoundsOf(part);
        m_total = before + rounds * (cost + round.arrivals + One + One + One);
        m_total.isInfinite = m_total.isInfinite || !isOneWay;
        out.roots = entered;
        out.arrivals = rounds * Most(round.arrivals, One);
        out.spread = first.bytes | round.spread;
        return out;
    }

    static Poly RoundsOf(const RegexNode& part) {
        constexpr std::size_t few = 16;
        return part.max < few ? Poly::Linear(static_cast<double>(part.max) + 1, 0)
                              : Poly::Linear(2, 1);
    }

    const bool m_areBlanksFew;
    Poly m_total;
    bool m_seesLines = false;
};

// The fewest bytes that the parts take.
double LeastLength(const std::vector<RegexNode>& parts) {
    double length = 0;
    for (const auto& part : parts) {
        if (part.kind == RegexNode_Bytes) {
            length += 1;
        } else if (part.kind == RegexNode_Choice) {
            double least = LeastLength(part.parts.front().parts);
            for (const auto& branch : part.parts)
                least = std::min(least, LeastLength(branch.parts));
            length += least;
        } else {
            const bool isRepeat = part.kind == RegexNode_Repeat;
            length += LeastLength(part.parts) * (isRepeat ? static_cast<double>(part.min) : 1);
        }
    }
    return length;
}

Poly StackOf(const std::vector<RegexNode>& parts, const Poly& visits);

Poly StackOfRepeat(const RegexNode& repeat, const Poly& visits) {
    constexpr double ofBytes = 32;    // for a repeated byte class, if there is a choice of lengths
    constexpr double ofCounter = 48;  // for each time that a repeated group is come to
    constexpr double ofRound = 24;
    if (repeat.max == 0) return {};
    if (repeat.parts.size() == 1 && repeat.parts[0].kind == RegexNode_Bytes)
        return visits * Poly::Linear(repeat.min == repeat.max ? 0 : ofBytes, 0);
    // Rounds take bytes, so a text has room for so many of them only.
    auto rounds = Poly::Linear(1, 1 / std::max(1.0, LeastLength(repeat.parts)));
    if (repeat.max != RegexNoMaximum)
        rounds = Least(rounds, visits * Poly::Linear(static_cast<double>(repeat.max), 0));
    return visits * Poly::Linear(ofCounter, 0) + rounds * Poly::Linear(ofCounter + ofRound, 0) +
           StackOf(repeat.parts, rounds);
}

// How many bytes the matcher's stack holds at most for parts that a way through the text comes to
// so many times. It holds entries of that way alone: what was tried in vain is taken off.
Poly StackOf(const std::vector<RegexNode>& parts, const Poly& visits) {
    constexpr double ofCapture = 40;
    constexpr double ofChoice = 24;
    Poly stack;
    for (const auto& part : parts) {
        if (part.kind == RegexNode_Repeat) {
            stack = stack + StackOfRepeat(part, visits);
        } else if (part.kind == RegexNode_Choice) {
            Poly most;
            for (const auto& branch : part.parts) most = Most(most, StackOf(branch.parts, visits));
            stack = stack + visits * Poly::Linear(ofChoice, 0) + most;
        } else if (part.kind == RegexNode_Group) {
            if (part.capture != 0) stack = stack + visits * Poly::Linear(ofCapture, 0);
            stack = stack + StackOf(part.parts, visits);
        }
    }
    return stack;
}

// The limit as the matcher makes it.
double LimitAt(double length, double expression) {
    return std::max(LeastLimit + expression * expression * length,
                    std::min(LeastLimit + length * length, MostLimit));
}

std::size_t TrustedLength(const RegexTree& tree, const Poly& total, const Poly& stack) {
    if (total.isInfinite) return 0;
    const auto expression = static_cast<double>(std::max<std::size_t>(tree.length, 1));
    // Both sides grow with the length: a step is right when its end's cost keeps to its beginning's
    // limit.
    std::size_t trusted = 0;
    for (std::size_t length = 16; length <= LongestTrusted; length += length / 4) {
        const auto n = static_cast<double>(length);
        if (Margin * total.At(n) > LimitAt(static_cast<double>(trusted), expression)) break;
        if (stack.At(n) > FirstBlock) break;
        trusted = length;
    }
    return trusted;
}

}  // namespace

RegexTrust TrustOfRegex(const RegexTree& tree) {
    RegexTrust trust;
    if (tree.nodes > MaxNodes) return trust;
    const auto stack = StackOf(tree.root.parts, One);
    CCostWalk walk(false);
    trust.length = TrustedLength(tree, walk.Total(tree), stack);
    trust.isForOneLine = walk.SeesLines();
    CCostWalk walkWithFewBlanks(true);
    trust.lengthWithFewBlanks = TrustedLength(tree, walkWithFewBlanks.Total(tree), stack);
    return trust;
}
