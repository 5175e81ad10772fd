#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// CTextSlots finds the number that its user gave to a text. The texts stay with the user, who tells
// the text of a number when it is asked for:
//
//     std::vector<std::string_view> texts;
//     const auto textOf = [&](int number) { return texts[static_cast<std::size_t>(number)]; };
//     CTextSlots slots(most);
//     const int number = slots.Add(line, static_cast<int>(texts.size()), textOf);
//     if (number == static_cast<int>(texts.size())) texts.push_back(line);
//
// A number takes eight bytes, twice that at most with the free ones beside it; a search goes to one
// place in memory, however many numbers there are, and then to the text. Numbers never depend on
// hashes, whose seed is the process's own, so that no text can be made to be slow.
//
// One thread at a time adds; any number may search at once.
class CTextSlots {
public:
    static constexpr int NoNumber = -1;

    // With room for so many texts; more of them make it grow.
    explicit CTextSlots(std::size_t texts = 0);

    // The number of a text; NoNumber when it has none.
    template <class TextOf>
    int Find(std::string_view text, const TextOf& textOf) const {
        return m_slots[SlotOf(text, HashOf(text), textOf)].number;
    }

    // The number of a text: the given one, which isn't negative, when it had none before. `textOf`
    // is never asked for the given number.
    template <class TextOf>
    int Add(std::string_view text, int number, const TextOf& textOf) {
        const auto hash = HashOf(text);
        auto& slot = m_slots[SlotOf(text, hash, textOf)];
        if (slot.number != NoNumber) return slot.number;
        slot = {hash, number};
        if (++m_count * 2 > m_slots.size()) Grow();
        return number;
    }

private:
    struct Slot {
        std::uint32_t hash;
        int number;
    };

    static std::uint32_t HashOf(std::string_view text);

    // The slot that holds the text, or the free one where it belongs.
    template <class TextOf>
    std::size_t SlotOf(std::string_view text, std::uint32_t hash, const TextOf& textOf) const {
        const auto mask = m_slots.size() - 1;
        for (auto at = std::size_t{hash} & mask;; at = (at + 1) & mask) {
            const auto& slot = m_slots[at];
            if (slot.number == NoNumber) return at;
            if (slot.hash == hash && textOf(slot.number) == text) return at;
        }
    }

    void Grow();

    std::vector<Slot> m_slots;  // by hash; a power of two, at most half of them taken
    std::size_t m_count = 0;
};
