#include "tzparser/engine/tzparser.h"

#include "tzparser/engine/enginekeys.h"
#include "tzparser/engine/tzparsersample.h"
#include "tzparser/rule/appparserule.h"

#include <algorithm>
#include <exception>

namespace {

constexpr const char* NoParser = "cannot find matched parser.";
constexpr const char* NoClone = "parse failed when parser clone.";
constexpr const char* RulesFailed = "parse failed when using parser rules. reseason:";

}  // namespace

CTzParser::CTzParser() = default;
CTzParser::~CTzParser() = default;

bool CTzParser::SetParser(const hxJson::Value& definition) {
    try {
        LoadSamples(definition);
        m_varTree = CreateVarTree();
        m_frozenTree.reset(m_varTree->Copy(true));
        m_isTreeHandedOut = false;
        return !m_samples.empty();
    } catch (const std::exception&) {
        return false;
    }
}

void CTzParser::LoadSamples(const hxJson::Value& definition) {
    const auto& access = definition[EngineKey::AccessType];
    m_extendedAccess = access.isInt() && access.asInt() == EngineKey::ExtendedAccess;
    m_sequences.clear();
    const auto& sequences = definition[EngineKey::Sequences];
    if (sequences.isArray())
        for (const auto& index : sequences) m_sequences.push_back(index.asInt());
    m_samples.clear();
    const auto& samples = definition[EngineKey::Samples];
    if (!samples.isArray()) return;
    for (const auto& element : samples) {
        auto sample = std::make_shared<CTzParserSample>();
        if (sample->LoadSample(element)) m_samples.push_back(std::move(sample));
    }
}

// Samples carry no conditions yet that a text could fail, so the catch-all serves every text: the
// last sample.
std::shared_ptr<CTzParserSample> CTzParser::GetMatchedSample(const std::string&) const {
    return m_samples.empty() ? nullptr : m_samples.back();
}

std::shared_ptr<CTzParserSample> CTzParser::GetSampleByIndex(int index) const {
    const auto at = std::find_if(m_samples.begin(), m_samples.end(), [index](const auto& sample) {
        return sample->GetIndex() == index;
    });
    return at != m_samples.end() ? *at : nullptr;
}

std::unique_ptr<CAppParseRule> CTzParser::MakeClone(const std::string& text,
                                                    std::string& error) const {
    const auto sample = GetMatchedSample(text);
    if (!sample) {
        error = NoParser;
        return nullptr;
    }
    std::unique_ptr<CAppParseRule> clone;
    try {
        clone.reset(sample->CloneRule());
    } catch (const std::exception&) {
        clone.reset();
    }
    if (!clone) error = NoClone;
    return clone;
}

std::shared_ptr<CAppVariableValue> CTzParser::Parse(const std::string& text, std::string& error) {
    try {
        return RunRules(text, error);
    } catch (const std::exception& exception) {
        error = std::string(RulesFailed) + exception.what();
    } catch (...) {
        error = std::string(RulesFailed) + "unknown exception";
    }
    return nullptr;
}

std::shared_ptr<CAppVariableValue> CTzParser::RunRules(const std::string& text,
                                                       std::string& error) const {
    const auto clone = MakeClone(text, error);
    if (!clone) return nullptr;
    if (!clone->Parse(text, 0, -1, nullptr)) {
        error = RulesFailed + clone->GetLastError();
        return nullptr;
    }
    return MakeValue(*clone);
}

std::shared_ptr<CAppVariableValue> CTzParser::MakeValue(CAppParseRule& rule) const {
    if (m_isTreeHandedOut)
        return std::make_shared<CAppVariableValue>(m_varTree.get(), true, &rule, nullptr,
                                                   m_tableRowCountLimitForHash);
    return std::make_shared<CAppVariableValue>(m_frozenTree, &rule, m_tableRowCountLimitForHash);
}

std::shared_ptr<CAppParseRule> CTzParser::GetSampleParseRuleClone(const std::string& text,
                                                                  std::string& error) {
    return MakeClone(text, error);
}

std::shared_ptr<CAppVariableDef> CTzParser::GetVariableTree() const {
    if (m_varTree) m_isTreeHandedOut = true;
    return m_varTree;
}
