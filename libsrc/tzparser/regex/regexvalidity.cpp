// A grammar of the expressions that statements are made of, smaller than what compiles: printable
// characters, the common escapes, simple sets, groups with and without capture, one repeat behind
// what can be repeated, no empty branch.
#include "tzparser/regex/regexvalidity.h"

#include "host/text/charset.h"

#include <cstddef>

namespace {

constexpr std::size_t MaxLength = 2000;
constexpr int MaxDepth = 40;
constexpr int MaxCount = 999;

constexpr CharSet NoAtoms("?*+{}[]");
constexpr CharSet Escaped("dDsSwWnrt.^$|()[]{}*+?\\/-,:;\"#%&!@~= ");
constexpr CharSet NoSetParts("[^-");
constexpr CharSet Repeats("*+?{");

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

enum Kind_e { Kind_Digit, Kind_Capital, Kind_Small, Kind_Other };

Kind_e KindOf(char c) {
    if (IsDigit(c)) return Kind_Digit;
    if (c >= 'A' && c <= 'Z') return Kind_Capital;
    return c >= 'a' && c <= 'z' ? Kind_Small : Kind_Other;
}

class CValidity {
public:
    explicit CValidity(std::string_view text) : m_text(text) {}

    bool Check() { return m_text.size() <= MaxLength && Branches(0) && m_at == m_text.size(); }

private:
    bool AtEnd() const { return m_at == m_text.size(); }
    char Peek() const { return AtEnd() ? '\0' : m_text[m_at]; }

    bool Take(char c) {
        if (AtEnd() || m_text[m_at] != c) return false;
        ++m_at;
        return true;
    }

    bool Branches(int depth) {
        if (depth > MaxDepth) return false;
        do {
            if (!Branch(depth)) return false;
        } while (Take('|'));
        return true;
    }

    bool Branch(int depth) {
        const auto begin = m_at;
        while (!AtEnd() && Peek() != '|' && Peek() != ')') {
            if (Take('^') || Take('$')) continue;
            if (!Atom(depth) || !Repeat()) return false;
        }
        return m_at != begin;
    }

    bool Atom(int depth) {
        if (Take('(')) return Group(depth);
        if (Take('[')) return Set();
        if (Take('\\')) return Escape();
        const char c = Peek();
        if (c < ' ' || c > '~' || NoAtoms.Has(c)) return false;
        ++m_at;
        return true;
    }

    bool Group(int depth) {
        if (Take('?') && !Take(':')) return false;
        return Branches(depth + 1) && Take(')');
    }

    bool Escape() {
        const char c = Peek();
        if (!Escaped.Has(c)) return false;
        ++m_at;
        return true;
    }

    bool Set() {
        Take('^');
        const auto begin = m_at;
        while (!AtEnd() && Peek() != ']')
            if (!SetPart()) return false;
        return m_at != begin && Take(']');
    }

    bool SetPart() {
        if (Take('\\')) return Escape() && Peek() != '-';
        const char first = Peek();
        if (first < ' ' || first > '~' || NoSetParts.Has(first)) return false;
        ++m_at;
        if (!Take('-')) return true;
        const char last = Peek();
        // Without case a range over both cases may be upside down.
        if (KindOf(first) == Kind_Other || KindOf(first) != KindOf(last) || last < first)
            return false;
        ++m_at;
        return Peek() != '-';
    }

    bool Repeat() {
        if (!Take('*') && !Take('+') && !Take('?')) {
            if (!Take('{')) return true;
            if (!Counts()) return false;
        }
        Take('?');
        return !Repeats.Has(Peek()) || AtEnd();
    }

    bool Counts() {
        int min = 0;
        if (!Number(min)) return false;
        int max = min;
        if (Take(',') && IsDigit(Peek()) && !Number(max)) return false;
        return min <= max && Take('}');
    }

    bool Number(int& value) {
        if (!IsDigit(Peek())) return false;
        value = 0;
        for (; IsDigit(Peek()) && value <= MaxCount; ++m_at) value = value * 10 + (Peek() - '0');
        return value <= MaxCount;
    }

    std::string_view m_text;
    std::size_t m_at = 0;
};

}  // namespace

bool IsSurelyValidRegex(std::string_view expression) {
    return CValidity(expression).Check();
}
