// The values that are objects of the library's own classes.
#include "host/python/pythonapi.h"
#include "host/python/pythonlib.h"
#include "tzparser/python/appip.h"
#include "tzparser/python/appmac.h"
#include "tzparser/script/appparserulescript.h"

#include <cstring>

#include <boost/python/converter/from_python.hpp>
#include <boost/python/converter/registered.hpp>

namespace {

// The address in an object; null for an object that only has the name of the class.
template <class Address>
const Address* AddressIn(PyObject* object) {
    namespace converter = boost::python::converter;
    return static_cast<const Address*>(
        converter::get_lvalue_from_python(object, converter::registered<Address>::converters));
}

}  // namespace

// By the exact name of the object's type. The words of a configlet whose method fails are empty.
bool CAppParseRuleScript::ExtractSingleObjectInfo(PyObject* object, AppDataType_e& type,
                                                  std::string& text) {
    const char* const name = Py_TYPE(object)->tp_name;
    if (std::strcmp(name, "PyIP") == 0) {
        const auto* const ip = AddressIn<CAppIP>(object);
        if (ip == nullptr) return false;
        type = AppDataType_IP;
        text = ip->m_location.textFormByMaskLen();
    } else if (std::strcmp(name, "PyMac") == 0) {
        const auto* const mac = AddressIn<CAppMac>(object);
        if (mac == nullptr) return false;
        type = AppDataType_Mac;
        text = mac->m_address.TextForm(4);
    } else if (std::strcmp(name, "PyConfigLet") == 0) {
        const PyRef value(PyObject_CallMethod(object, "GetStrValue", nullptr));
        PyErr_Clear();
        type = AppDataType_ConfigLet;
        text = PyObject_AsString(value.Get());
    } else {
        return false;
    }
    return true;
}
