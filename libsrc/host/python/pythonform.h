#pragma once

#include <string>

struct _object;

// PythonForm makes the Python objects of one kind of value whose class stands in a floor above this
// one; see TzP3TypeObject for the codes. It is a constant of a source, which enters itself into a
// list while the library is loaded.
//
//     const PythonForm Form(1, &MakeIp);
//     PythonForm::Make make = PythonForm::Find(1);    // &MakeIp
//
class PythonForm {
public:
    // Makes the object of a value's text: a new reference, or null when the text is no such value;
    // an error may then be pending. Called with the interpreter held.
    using Make = _object* (*)(const std::string& text);

    PythonForm(int code, Make make) noexcept : m_code(code), m_make(make), m_next(First) {
        First = this;
    }
    PythonForm(const PythonForm&) = delete;
    PythonForm& operator=(const PythonForm&) = delete;

    // Null for a code that no floor serves.
    static Make Find(int code) noexcept {
        for (const PythonForm* form = First; form != nullptr; form = form->m_next)
            if (form->m_code == code) return form->m_make;
        return nullptr;
    }

private:
    static const PythonForm* First;

    int m_code;
    Make m_make;
    const PythonForm* m_next;
};
