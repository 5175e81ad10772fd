#pragma once

// The packer of records, for the sources of this folder: msgpack's own over bytes in memory.

#include "tzparser/engine/parserhelper.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include <msgpack/pack.hpp>

// What msgpack's packer writes to.
class CParserHelperBytes {
public:
    void write(const char* bytes, std::size_t length) { m_bytes.append(bytes, length); }

protected:
    std::string m_bytes;
};

class CParserHelper::CPacker : private CParserHelperBytes,
                               public msgpack::packer<CParserHelperBytes> {
public:
    CPacker() : msgpack::packer<CParserHelperBytes>(static_cast<CParserHelperBytes&>(*this)) {}

    const std::string& Bytes() const { return m_bytes; }
    // Moves the bytes out.
    std::string Take() { return std::move(m_bytes); }

    // The header of a node with so many elements.
    void PackArrayHeader(std::size_t count) { pack_array(Length(count)); }
    void PackText(std::string_view text) {
        const auto length = Length(text.size());
        pack_str(length).pack_str_body(text.data(), length);
    }

    // Always as float 64: the packer's own operation makes an integer of a real without a fraction.
    void PackReal(double number) {
        static_assert(std::numeric_limits<double>::is_iec559);
        std::uint64_t bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        char bytes[1 + sizeof bits] = {'\xCB'};
        for (std::size_t i = sizeof bits; i > 0; --i, bits >>= 8)
            bytes[i] = static_cast<char>(bits & 0xFF);
        write(bytes, sizeof bytes);
    }

private:
    static std::uint32_t Length(std::size_t length) {
        constexpr std::size_t longest = std::numeric_limits<std::uint32_t>::max();
        return static_cast<std::uint32_t>(std::min(length, longest));
    }
};
