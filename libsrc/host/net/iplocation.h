#pragma once

#include "host/net/ipaddress.h"
#include "host/runtime/tzexport.h"

#include <cstdint>
#include <string>
#include <string_view>

// IpLocation is an IPv4 address with the mask of the network that it lies in, as an interface or a
// route has them. The address keeps its host bits.
//
//     const IpLocation location("192.0.2.7 255.255.255.0");
//     location.textFormByMaskLen();                        // "192.0.2.7/24"
//     location.inSameNet(IpLocation("192.0.2.99"));        // true
//     location.isSummarynet(IpLocation("192.0.0.0/16"));   // true: the other contains this one
//
// Masks may have gaps (255.0.255.0): then the network is the address's bits under the mask, as
// devices take it, the length is the number of set bits, and the text in address/length form has
// the dotted mask behind the slash, since no length says it.
//
// A plain value of two fields that anybody may set; const operations may run on several threads at
// once, none throws but for want of memory, and none depends on the locale. Both fields hold the
// first byte of the dotted text in their most significant byte.
class TZPARSER_API IpLocation {
public:
    // Address 0 with the mask 0.
    IpLocation() = default;
    // Reads a text, see Read; what can't be read gives address 0 with the mask 0.
    explicit IpLocation(const std::string& text);
    // Reads an address and a mask in any notation of ReadIpMask; a "/" before the mask is skipped,
    // and an empty mask is that of a single host. Unless both can be read, address and mask are 0.
    // With `asNetwork` the host bits of the address are cleared.
    IpLocation(const std::string& ip, const std::string& mask, bool asNetwork);

    // Reads the whole of a text, blanks and tabs around it aside: an address alone, which gets the
    // mask of a single host, or an address with a mask in any notation of ReadIpMask behind a "/"
    // or blanks: "192.0.2.7/24", "192.0.2.7 255.255.255.0", "192.0.2.7/0xffffff00", "192.0.2.7
    // 0.0.0.255". On failure the location stays as it was.
    bool Read(std::string_view text);

    // Whether the two addresses lie in one network, told by the bits that both masks have: by the
    // wider of the two networks. The same whichever is asked, and true when one mask is 0.
    bool inSameNet(const IpLocation& other) const;
    // Whether the other's network is this one's or contains it, so that it could stand for it in a
    // table of routes. A network with the mask 0 contains every other.
    bool isSummarynet(const IpLocation& other) const;
    // Whether the mask has fewer of the leading bits than the class mask, or more. Both false for
    // the class mask itself, for masks that are neither inside it nor around it, and for addresses
    // from 224.0.0.0 on, which belong to no class with networks.
    bool isSupernet() const;
    bool isSubnet() const;

    // The number of set bits of the mask, 0 to 32.
    int getMaskLen() const;
    // "255.255.255.0".
    std::string maskTextFrom() const;
    // "192.0.2.7 255.255.255.0"; with `shortForm` the address alone for a single host.
    std::string textForm(bool shortForm) const;
    // "192.0.2.7/24"; with a mask that has gaps, "192.0.2.7/255.0.255.0".
    std::string textFormByMaskLen() const;
    // The mask of the address's class: 255.0.0.0 up to 127.255.255.255, 255.255.0.0 up to
    // 191.255.255.255, 255.255.255.0 up to 223.255.255.255, then 255.255.255.255.
    IpAddress classMask() const;
    // The address alone, with its host bits.
    IpAddress unmaskedAddress() const { return IpAddress(m_address); }

    bool operator==(const IpLocation& other) const {
        return m_address == other.m_address && m_mask == other.m_mask;
    }
    bool operator!=(const IpLocation& other) const { return !(*this == other); }

    std::uint32_t m_address = 0;
    std::uint32_t m_mask = 0;

private:
    bool ReadParts(std::string_view ip, std::string_view mask);
};
