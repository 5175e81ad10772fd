// A hash table with open addressing. Slots know the hashes, so growing reads no text.
#include "host/diff/textslots.h"

#include <exception>
#include <random>
#include <utility>

#include <xxhash.h>

namespace {

constexpr std::size_t FewestSlots = 64;

std::uint64_t MakeSeed() {
    try {
        std::random_device device;
        return (std::uint64_t{device()} << 32) | device();
    } catch (const std::exception&) {
        return 0x9E3779B97F4A7C15U;
    }
}

std::size_t SlotsFor(std::size_t texts) {
    auto slots = FewestSlots;
    while (slots / 2 < texts) slots *= 2;
    return slots;
}

}  // namespace

CTextSlots::CTextSlots(std::size_t texts) : m_slots(SlotsFor(texts), Slot{0, NoNumber}) {}

std::uint32_t CTextSlots::HashOf(std::string_view text) {
    static const std::uint64_t seed = MakeSeed();
    return static_cast<std::uint32_t>(XXH3_64bits_withSeed(text.data(), text.size(), seed));
}

void CTextSlots::Grow() {
    const auto slots = std::move(m_slots);
    m_slots.assign(slots.size() * 2, Slot{0, NoNumber});
    const auto mask = m_slots.size() - 1;
    for (const auto& slot : slots) {
        if (slot.number == NoNumber) continue;
        auto at = std::size_t{slot.hash} & mask;
        while (m_slots[at].number != NoNumber) at = (at + 1) & mask;
        m_slots[at] = slot;
    }
}
