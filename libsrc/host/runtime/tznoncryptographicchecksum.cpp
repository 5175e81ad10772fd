#include "host/runtime/tznoncryptographicchecksum.h"

#include <new>

#include <xxhash.h>

namespace {

std::string HexText(const XXH128_hash_t& hash) {
    constexpr char Digits[] = "0123456789abcdef";
    XXH128_canonical_t canonical;  // most significant byte first, whatever the machine's order
    XXH128_canonicalFromHash(&canonical, hash);
    std::string text;
    text.reserve(2 * sizeof canonical.digest);
    for (const unsigned char byte : canonical.digest) {
        text += Digits[byte >> 4];
        text += Digits[byte & 15];
    }
    return text;
}

}  // namespace

void CTzNonCryptographicChecksum::StateFree::operator()(XXH3_state_s* state) const noexcept {
    XXH3_freeState(state);
}

CTzNonCryptographicChecksum::CTzNonCryptographicChecksum() : m_state(XXH3_createState()) {
    if (m_state == nullptr) throw std::bad_alloc();
    XXH3_128bits_reset(m_state.get());
}

CTzNonCryptographicChecksum::~CTzNonCryptographicChecksum() = default;

void CTzNonCryptographicChecksum::Update(const void* bytes, std::size_t length) noexcept {
    if (length != 0) XXH3_128bits_update(m_state.get(), bytes, length);
}

std::string CTzNonCryptographicChecksum::Final() const {
    return HexText(XXH3_128bits_digest(m_state.get()));
}

std::string CTzNonCryptographicChecksum::GetChecksum(const void* bytes, std::size_t length) {
    return HexText(XXH3_128bits(length == 0 ? "" : bytes, length));
}
