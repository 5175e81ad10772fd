#pragma once

#include "host/runtime/tzexport.h"

#include <string>

struct TzP3TypeRow;
struct _object;

// TzP3TypeObject stands for one kind of value that scripts know. It is made by the code of the
// kind, tells whether a text is a value of that kind, holds the text of one value and makes the
// Python object of it.
//
//     const std::unique_ptr<TzP3TypeObject> type(TzP3TypeObject::CreateObj(101));
//     type->Check("-17");      // true: 101 is a whole number
//     type->Check("17 days");  // false
//
// The codes, with the texts that Check accepts. The whole text must be the value: no blanks around
// it, no empty text but for 100.
//
//     1    IPv4 address, with or without "/" and a length or a blank and a mask
//     2    MAC address
//     3    percentage: an optional sign, a decimal number, "%"
//     4    IPv6 address, with or without "/" and a length
//     100  text: anything
//     101  whole number: an optional sign and digits, within 64 bits
//     102  finite number: sign, decimal digits with one point at most, exponent
//     103  truth value: 1, 0, true, false in any case
//
// No text is a value of 104 (dictionary), 105 (list), 201 and 202 (the host's structures).
//
// Their Python objects are, in this order: PyIP, PyMac, PyPercent and PyIPv6 of the module
// "pyapplib", str, int, float and bool.
//
// Results depend on the bytes of the text alone, not on the locale. Check may be called from
// several threads at once; SetText is for one thread at a time. No operation throws but for want of
// memory.
class TZPARSER_API TzP3TypeObject {
public:
    virtual ~TzP3TypeObject() = default;
    TzP3TypeObject(const TzP3TypeObject&) = delete;
    TzP3TypeObject& operator=(const TzP3TypeObject&) = delete;

    // A new object for the code, owned by the caller; null for a code that isn't in the list.
    static TzP3TypeObject* CreateObj(int code);

    // The text of the value that the object holds from now on; it isn't checked.
    virtual void SetText(const std::string& text);
    const std::string& GetText() const { return m_text; }

    // Whether the given text, not the one held, is a value of this kind.
    virtual bool Check(const std::string& text) const;

    // The Python object of the text held, a new reference. False, with a null object and no error
    // pending, when the text is no value of the kind; addresses are read as IpLocation and
    // MacAddress read them, and whole numbers may be of any size, both more than Check accepts. The
    // caller holds the interpreter.
    virtual bool GetPythonObject(_object*& object) const;

    int GetCode() const;

protected:
    explicit TzP3TypeObject(const TzP3TypeRow& row) : m_row(row) {}

private:
    const TzP3TypeRow& m_row;
    std::string m_text;
};
