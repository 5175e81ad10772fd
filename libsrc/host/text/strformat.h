#pragma once

// StrFormat: a text with numbered placeholders and the arguments that fill them.
//
//     StrFormat format("Cannot get diff text. start line:{0}, end line:{1}.");
//     format << 12 << 40;
//     std::string words = format.str();       // "... start line:12, end line:40."
//     format.ClearParams();                   // the same format again
//     std::string key = StrFormat("#ph{0}hp#") << 1000;
//
// The first argument fills every "{0}", the second every "{1}" and so on. A placeholder without an
// argument stays as it stands, arguments without a placeholder go unused, and an argument that
// itself holds "{0}" is put in as text. Numbers are written in decimal, whatever the locale.
// Objects are for one thread at a time.

#include "host/runtime/tzexport.h"

#include <string>
#include <string_view>
#include <vector>

// The format text and the arguments given so far.
class TZPARSER_API CFormatBase {
public:
    explicit CFormatBase(std::string format);
    virtual ~CFormatBase();
    CFormatBase(const CFormatBase&) = default;
    CFormatBase(CFormatBase&&) = default;
    CFormatBase& operator=(const CFormatBase&) = default;
    CFormatBase& operator=(CFormatBase&&) = default;

    // The text with the arguments so far filled in. May be called at any time, any number of times.
    std::string str() const;
    operator std::string() const { return str(); }

    // Forgets the arguments, so that the next one is again number 0. The format stays.
    void ClearParams() { m_params.clear(); }

protected:
    void AddParam(std::string param) { m_params.push_back(std::move(param)); }

private:
    std::string m_format;
    std::vector<std::string> m_params;
};

// Each operator<< adds the next numbered argument.
class TZPARSER_API StrFormat : public CFormatBase {
public:
    explicit StrFormat(std::string format) : CFormatBase(std::move(format)) {}

    StrFormat& operator<<(const std::string& param);
    StrFormat& operator<<(std::string_view param);
    StrFormat& operator<<(const char* param);  // null counts as ""
    StrFormat& operator<<(int param);
    StrFormat& operator<<(long param);
    StrFormat& operator<<(long long param);
    StrFormat& operator<<(unsigned param);
    StrFormat& operator<<(unsigned long param);
    StrFormat& operator<<(unsigned long long param);
};
