#include "host/net/iplocation.h"

#include "host/net/ipmask.h"

namespace {

constexpr std::uint32_t HostMask = 0xffffffff;
constexpr std::string_view Blanks = " \t";

std::string_view Trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(Blanks);
    if (begin == std::string_view::npos) return std::string_view();
    return text.substr(begin, text.find_last_not_of(Blanks) - begin + 1);
}

std::string_view WithoutSlash(std::string_view mask) {
    if (!mask.empty() && mask[0] == '/') mask.remove_prefix(1);
    return mask;
}

// The first address of each class with the class's mask, the last class first.
constexpr struct {
    std::uint32_t m_first;
    std::uint32_t m_mask;
} ClassRows[] = {
    {0xe0000000, 0xffffffff},
    {0xc0000000, 0xffffff00},
    {0x80000000, 0xffff0000},
    {0x00000000, 0xff000000},
};

// Whether the set bits of one mask are some, but not all, of the other's.
bool IsWider(std::uint32_t mask, std::uint32_t other) {
    return mask != other && (mask & other) == mask;
}

}  // namespace

IpLocation::IpLocation(const std::string& text) {
    Read(text);
}

IpLocation::IpLocation(const std::string& ip, const std::string& mask, bool asNetwork) {
    if (ReadParts(Trimmed(ip), WithoutSlash(Trimmed(mask))) && asNetwork) m_address &= m_mask;
}

bool IpLocation::Read(std::string_view text) {
    text = Trimmed(text);
    const std::size_t end = text.find_first_of("/ \t");
    if (end == std::string_view::npos) return ReadParts(text, std::string_view());
    const std::string_view mask = WithoutSlash(Trimmed(text.substr(end)));
    return !mask.empty() && ReadParts(text.substr(0, end), mask);
}

bool IpLocation::ReadParts(std::string_view ip, std::string_view mask) {
    IpAddress address;
    std::uint32_t bits = HostMask;
    if (!address.Read(ip) || (!mask.empty() && !ReadIpMask(mask, bits))) return false;
    m_address = address.Value();
    m_mask = bits;
    return true;
}

bool IpLocation::inSameNet(const IpLocation& other) const {
    return ((m_address ^ other.m_address) & m_mask & other.m_mask) == 0;
}

bool IpLocation::isSummarynet(const IpLocation& other) const {
    const bool isAsWide = (m_mask & other.m_mask) == other.m_mask;
    return isAsWide && ((m_address ^ other.m_address) & other.m_mask) == 0;
}

bool IpLocation::isSupernet() const {
    const std::uint32_t natural = classMask().Value();
    return natural != HostMask && IsWider(m_mask, natural);
}

bool IpLocation::isSubnet() const {
    const std::uint32_t natural = classMask().Value();
    return natural != HostMask && IsWider(natural, m_mask);
}

int IpLocation::getMaskLen() const {
    return IpMaskLength(m_mask);
}

std::string IpLocation::maskTextFrom() const {
    return IpAddress(m_mask).textForm();
}

std::string IpLocation::textForm(bool shortForm) const {
    const std::string address = unmaskedAddress().textForm();
    return shortForm && m_mask == HostMask ? address : address + " " + maskTextFrom();
}

std::string IpLocation::textFormByMaskLen() const {
    const bool hasLength = IpMaskIsContiguous(m_mask);
    return unmaskedAddress().textForm() + "/" +
           (hasLength ? std::to_string(getMaskLen()) : maskTextFrom());
}

IpAddress IpLocation::classMask() const {
    for (const auto& row : ClassRows)
        if (m_address >= row.m_first) return IpAddress(row.m_mask);
    return IpAddress();
}
