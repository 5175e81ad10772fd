#pragma once

#include "tzparser/identify/canvasnodecmdsampleidentify.h"
#include "tzparser/identify/canvasnodecmdsampleidentifyconditionstr.h"
#include "tzparser/identify/stringfinder.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// CSampleChooser finds the first of several samples that a text fits, with the answers of their
// IsMatch and at less cost where they have many strings: all of them are searched in one pass over
// the text, and a sample whose strings fail isn't asked for its expressions.
//
//     const CSampleChooser chooser({&first, &second});
//     if (chooser.Choose(text) == 1) ...                   // it doesn't fit the first
//
// The samples belong to the caller, outlive the chooser and aren't changed. Any number of threads
// may choose with one object at once.
class TZPARSER_API CSampleChooser {
public:
    static constexpr std::size_t None = static_cast<std::size_t>(-1);
    // With fewer strings in all, each is searched by itself.
    static constexpr std::size_t FewStrings = 16;

    explicit CSampleChooser(const std::vector<const CCanvasNodeCmdSampleIdentify*>& samples);

    // The place of the first sample that fits; None when there is none.
    std::size_t Choose(const std::string& text) const;

private:
    // A condition on strings, which it names by their places in m_strings.
    struct StringCondition {
        StringNeed_e need;
        std::vector<std::uint32_t> strings;
    };
    struct Candidate {
        std::vector<StringCondition> stringConditions;
        std::vector<const CCanvasNodeCmdSampleIdentifyConditionBase*> others;
    };
    class Holdings;

    void AddConditions(const CCanvasNodeCmdSampleIdentify::ConditionMap& conditions,
                       Candidate& candidate);
    StringCondition NumberStrings(const CCanvasNodeCmdSampleIdentifyConditionStr& condition);
    bool Fits(const Candidate& candidate, const std::string& text, Holdings& holdings) const;

    std::vector<Candidate> m_candidates;
    std::vector<std::string_view> m_strings;  // views into the conditions' own
    std::unordered_map<std::string_view, std::uint32_t> m_numbers;
    std::unique_ptr<const CStringFinder> m_finder;  // null with few strings
};
