#pragma once

// The packer of records, for the sources of this folder: msgpack's own over bytes in memory.

#include "tzparser/engine/parserhelper.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

#include <msgpack/pack.hpp>
#include <msgpack/sbuffer.hpp>

// The buffer grows by reallocation, which moves the pages of a large record and copies nothing.
class CParserHelper::CPacker : private msgpack::sbuffer, public msgpack::packer<msgpack::sbuffer> {
public:
    CPacker() : msgpack::packer<msgpack::sbuffer>(static_cast<msgpack::sbuffer&>(*this)) {}

    // All that was packed; valid until more is.
    std::string_view Bytes() const { return {data(), size()}; }

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
