#include "tzparser/python/appmac.h"

#include "host/text/addresstext.h"
#include "host/text/stlhelper.h"
#include "tzparser/python/addressobject.h"

namespace {

constexpr int PythonMac = 4;
constexpr int MacFormat = 4;

}  // namespace

CAppMac::CAppMac(const std::string& text) {
    if (IsMacAddress(text)) m_address = MacAddress(text);
}

bool CAppMac::IsValid() const {
    return m_address.Value() != 0;
}

std::string CAppMac::MacStr() const {
    return m_address.TextForm(MacFormat);
}

bool CAppMac::IsMacAddress(const std::string& text) {
    std::string trimmed = text;
    return StrIsMac(StlHelper::trim(trimmed, " \t\n\r"));
}

PyObject* CAppMac::GetPyObject() {
    return MakeAddressObject<CAppMac>(PythonMac, [](CAppMac&) {});
}

PyObject* CAppMac::GetPyObject(const std::string& text) {
    return MakeAddressObject<CAppMac>(PythonMac,
                                      [&](CAppMac& mac) { mac.m_address = MacAddress(text); });
}
