#include "tzparser/python/appip.h"

#include "tzparser/python/addressobject.h"

namespace {

constexpr int PythonIp = 3;

const char* const NoAddress = "0.0.0.0";
const char* const FullMask = "255.255.255.255";

const IpLocation& InvalidLocation() {
    static const IpLocation invalid(NoAddress, "255.0.0.0", false);
    return invalid;
}

// All locations with the address 0 are one, the invalid one; those that mean something are set
// afterwards.
IpLocation Normalised(const IpLocation& location) {
    return location.m_address == 0 ? InvalidLocation() : location;
}

bool ContainsAll(const CAppIP& ip) {
    return ip.IsNull() && ip.GetMaskLen() == 0;
}

}  // namespace

CAppIP::CAppIP() : m_location(Normalised(IpLocation())) {}

CAppIP::CAppIP(const std::string& ip, const std::string& mask)
    : m_location(Normalised(IpLocation(ip, mask, false))) {
    if (ip == NoAddress && (mask == NoAddress || mask == FullMask))
        m_location = IpLocation(ip, mask, false);
}

CAppIP::CAppIP(const std::string& text) : m_location(Normalised(IpLocation(text))) {
    if (text == "0.0.0.0/0" || text == "0.0.0.0/32") m_location = IpLocation(text);
}

std::string CAppIP::Network() const {
    return IpAddress(m_location.m_address & m_location.m_mask).textForm();
}

std::string CAppIP::Mask() const {
    return m_location.maskTextFrom();
}

std::string CAppIP::ClassMask() const {
    return m_location.classMask().textForm();
}

std::string CAppIP::GetIPAddress() const {
    return m_location.unmaskedAddress().textForm();
}

std::string CAppIP::IPMaskLen() const {
    return m_location.textFormByMaskLen();
}

std::string CAppIP::IpMask() const {
    return m_location.textForm(false);
}

int CAppIP::GetMaskLen() const {
    return m_location.getMaskLen();
}

bool CAppIP::IsSupernet() const {
    return m_location.isSupernet();
}

bool CAppIP::IsSubnet() const {
    return m_location.isSubnet();
}

bool CAppIP::IsValid() const {
    return m_location != InvalidLocation();
}

bool CAppIP::IsNull() const {
    return m_location.m_address == 0;
}

bool CAppIP::IsFullMask() const {
    return m_location.m_mask == 0xffffffff;
}

bool CAppIP::IsSamesSubnet(PyObject* other) const {
    const CAppIP* const ip = TakeAddressObject<CAppIP>(other);
    if (ip == nullptr || !ip->IsValid() || !IsValid()) return false;
    return ContainsAll(*ip) || m_location.inSameNet(ip->m_location);
}

bool CAppIP::IsSummarynet(PyObject* other) const {
    const CAppIP* const ip = TakeAddressObject<CAppIP>(other);
    if (ip == nullptr || !ip->IsValid() || !IsValid()) return false;
    return ContainsAll(*ip) || m_location.isSummarynet(ip->m_location);
}

PyObject* CAppIP::GetPyObject() {
    return MakeAddressObject<CAppIP>(PythonIp, [](CAppIP&) {});
}

PyObject* CAppIP::GetPyObject(const std::string& text) {
    return MakeAddressObject<CAppIP>(PythonIp,
                                     [&](CAppIP& ip) { ip.m_location = IpLocation(text); });
}
