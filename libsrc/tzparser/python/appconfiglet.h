#pragma once

#include "host/runtime/tzexport.h"

#include <string>
#include <utility>

// CAppConfigLet is the value of the data type "configlet": a fragment of a configuration, as text.
// The Python class PyConfigLet holds one. A plain value.
//
//     CAppConfigLet("interface Gi0/1\n shutdown\n").GetStrValue();
//
class TZPARSER_API CAppConfigLet {
public:
    CAppConfigLet() = default;
    explicit CAppConfigLet(std::string text) : m_text(std::move(text)) {}

    // The bytes as they were given.
    const std::string& GetStrValue() const { return m_text; }

private:
    std::string m_text;
};
