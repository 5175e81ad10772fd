#pragma once

// CTzNonCryptographicChecksum is the digest by which the engine tells texts and table contents
// apart: 128 bits of XXH3, as text. It is as fast as memory can be read, and equal bytes give the
// equal text on every machine, in every process and however they were cut into pieces. It is no
// protection against somebody who wants two texts to have the same digest.
//
//     CTzNonCryptographicChecksum checksum;
//     checksum.Update("abc", 3);
//     checksum.Update(row.data(), row.size());
//     std::string digest = checksum.Final();   // 32 lower-case hexadecimal digits
//
// An object is used by one thread at a time; different objects share nothing.

#include "host/runtime/tzexport.h"

#include <cstddef>
#include <memory>
#include <string>

struct XXH3_state_s;

class TZPARSER_API CTzNonCryptographicChecksum {
public:
    // The digest of nothing fed yet. Throws std::bad_alloc when there is no memory for the state
    // (some 600 bytes); no other operation fails.
    CTzNonCryptographicChecksum();
    ~CTzNonCryptographicChecksum();
    CTzNonCryptographicChecksum(const CTzNonCryptographicChecksum&) = delete;
    CTzNonCryptographicChecksum& operator=(const CTzNonCryptographicChecksum&) = delete;

    // Feeds `length` bytes of any value, NUL included. A length of 0 changes nothing, and `bytes`
    // may then be null. The bytes aren't needed any more after the call.
    void Update(const void* bytes, std::size_t length) noexcept;

    // The digest of all bytes fed so far: 32 lower-case hexadecimal digits, most significant first.
    // Changes nothing, so feeding may go on.
    std::string Final() const;

    // The same for one piece of bytes, faster than an object for short ones.
    static std::string GetChecksum(const void* bytes, std::size_t length);

private:
    struct StateFree {
        void operator()(XXH3_state_s* state) const noexcept;
    };
    std::unique_ptr<XXH3_state_s, StateFree> m_state;
};
