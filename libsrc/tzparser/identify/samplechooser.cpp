#include "tzparser/identify/samplechooser.h"

#include <algorithm>
#include <optional>

// What is known of one text; it is searched when the first string is asked for.
class CSampleChooser::Holdings {
public:
    Holdings(const CSampleChooser& chooser, std::string_view text)
        : m_chooser(chooser), m_text(text) {}

    bool Has(std::uint32_t string) {
        if (!m_chooser.m_finder)
            return CCanvasNodeCmdSampleIdentifyConditionStr::IsFound(m_text,
                                                                     m_chooser.m_strings[string]);
        if (!m_found) m_found = m_chooser.m_finder->Find(m_text);
        return m_found->Has(string);
    }

private:
    const CSampleChooser& m_chooser;
    std::string_view m_text;
    std::optional<CStringFinder::Found> m_found;
};

CSampleChooser::CSampleChooser(const std::vector<const CCanvasNodeCmdSampleIdentify*>& samples) {
    m_candidates.reserve(samples.size());
    for (const auto* sample : samples) {
        auto& candidate = m_candidates.emplace_back();
        AddConditions(sample->GetMustConditions(), candidate);
        AddConditions(sample->GetOptionalConditions(), candidate);
    }
    if (m_strings.size() >= FewStrings) m_finder = std::make_unique<const CStringFinder>(m_strings);
    m_numbers.clear();
}

void CSampleChooser::AddConditions(const CCanvasNodeCmdSampleIdentify::ConditionMap& conditions,
                                   Candidate& candidate) {
    for (const auto& entry : conditions) {
        const auto* condition = entry.second.get();
        const auto* onStrings =
            dynamic_cast<const CCanvasNodeCmdSampleIdentifyConditionStr*>(condition);
        if (onStrings != nullptr)
            candidate.stringConditions.push_back(NumberStrings(*onStrings));
        else
            candidate.others.push_back(condition);
    }
}

CSampleChooser::StringCondition CSampleChooser::NumberStrings(
    const CCanvasNodeCmdSampleIdentifyConditionStr& condition) {
    StringCondition numbered{condition.GetNeed(), {}};
    for (const auto& string : condition.GetStrings()) {
        const auto next = static_cast<std::uint32_t>(m_strings.size());
        const auto [at, isNew] = m_numbers.emplace(string, next);
        if (isNew) m_strings.push_back(at->first);
        numbered.strings.push_back(at->second);
    }
    return numbered;
}

std::size_t CSampleChooser::Choose(const std::string& text) const {
    Holdings holdings(*this, text);
    for (std::size_t i = 0; i < m_candidates.size(); ++i)
        if (Fits(m_candidates[i], text, holdings)) return i;
    return None;
}

bool CSampleChooser::Fits(const Candidate& candidate, const std::string& text,
                          Holdings& holdings) const {
    const auto hasString = [&holdings](std::uint32_t string) { return holdings.Has(string); };
    return std::all_of(candidate.stringConditions.begin(), candidate.stringConditions.end(),
                       [&hasString](const StringCondition& condition) {
                           return IsNeedMet(condition.need, condition.strings, hasString);
                       }) &&
           std::all_of(candidate.others.begin(), candidate.others.end(),
                       [&text](const auto* condition) { return condition->IsMatch(text); });
}
