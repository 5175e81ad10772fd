#include "host/xml/markupscan.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <system_error>

namespace {

constexpr char Bom[] = "\xEF\xBB\xBF";

// Whether the digits of a numeric reference, "38" or "x26", name a character that can stand in a
// text. Something else than digits is no reference at all and stays as it is written.
bool IsCharacter(const char* begin, const char* end) {
    const bool hex = begin != end && *begin == 'x';
    if (hex) ++begin;
    std::uint32_t code = 0;
    const auto [stop, status] = std::from_chars(begin, end, code, hex ? 16 : 10);
    if (stop != end || begin == end) return true;
    if (status != std::errc()) return false;
    return code != 0 && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

}  // namespace

bool MarkupScan::Run() {
    const std::size_t nul = m_text.find('\0');
    if (nul != std::string::npos) return Fail("The text holds a NUL", nul);
    if (StartsWith(Bom)) m_pos = sizeof Bom - 1;
    while (m_pos < m_text.size()) {
        const std::size_t open = std::min(m_text.find('<', m_pos), m_text.size());
        if (!Data(open)) return false;
        m_pos = open;
        if (open < m_text.size() && !Markup()) return false;
    }
    return true;
}

bool MarkupScan::Fail(const char* reason, std::size_t offset) {
    m_reason = reason;
    m_offset = offset;
    return false;
}

bool MarkupScan::Markup() {
    if (StartsWith("<!--")) return SkipTo("-->", m_pos + 4);
    if (StartsWith("<![CDATA[")) {
        if (m_depth == 0) return Fail("Text outside the elements", m_pos);
        return SkipTo("]]>", m_pos + 9);
    }
    if (StartsWith("<!")) return Fail("Document type declarations aren't accepted", m_pos);
    if (StartsWith("<?")) return SkipTo("?>", m_pos + 2);
    if (StartsWith("</")) return EndTag();
    return StartTag();
}

bool MarkupScan::StartTag() {
    const std::size_t begin = m_pos;
    std::size_t pos = begin + 1;
    while (true) {
        pos = m_text.find_first_of("\"'>", pos);
        if (pos == std::string::npos) return Fail("The tag doesn't end", begin);
        if (m_text[pos] == '>') break;
        const std::size_t close = m_text.find(m_text[pos], pos + 1);
        if (close == std::string::npos) return Fail("The attribute's value doesn't end", pos);
        if (!References(pos + 1, close)) return false;
        pos = close + 1;
    }
    m_pos = pos + 1;
    if (m_depth == m_maxDepth) return Fail("The elements are nested too deep", begin);
    if (m_text[pos - 1] != '/') ++m_depth;
    return true;
}

bool MarkupScan::EndTag() {
    if (m_depth == 0) return Fail("An end tag without a start tag", m_pos);
    --m_depth;
    return SkipTo(">", m_pos + 2);
}

bool MarkupScan::SkipTo(const char* terminator, std::size_t from) {
    const std::size_t at = m_text.find(terminator, from);
    if (at == std::string::npos) return Fail("The markup doesn't end", m_pos);
    m_pos = at + std::strlen(terminator);
    return true;
}

bool MarkupScan::Data(std::size_t end) {
    if (m_depth > 0) return References(m_pos, end);
    const std::size_t other = m_text.find_first_not_of(" \t\r\n", m_pos);
    return other >= end || Fail("Text outside the elements", other);
}

bool MarkupScan::References(std::size_t begin, std::size_t end) {
    const std::string_view part(m_text.data() + begin, end - begin);
    for (std::size_t at = part.find("&#"); at != std::string_view::npos;
         at = part.find("&#", at + 2)) {
        const std::size_t stop = part.find_first_not_of("0123456789abcdefABCDEFx", at + 2);
        if (stop == std::string_view::npos || part[stop] != ';') continue;
        if (!IsCharacter(part.data() + at + 2, part.data() + stop))
            return Fail("A reference to a character that doesn't exist", begin + at);
    }
    return true;
}

bool MarkupScan::StartsWith(const char* word) const {
    return m_text.compare(m_pos, std::strlen(word), word) == 0;
}
