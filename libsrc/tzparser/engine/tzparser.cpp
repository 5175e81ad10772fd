#include "tzparser/engine/tzparser.h"

#include "tzparser/engine/enginekeys.h"
#include "tzparser/engine/tzparsersample.h"
#include "tzparser/identify/samplechooser.h"
#include "tzparser/rule/appparserulesample.h"

#include <exception>
#include <unordered_set>

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
        MakeTrialOrder();
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
    m_chooser.reset();
    m_trialOrder.clear();
    m_sampleByIndex.clear();
    m_samples.clear();
    const auto& samples = definition[EngineKey::Samples];
    if (!samples.isArray()) return;
    for (const auto& element : samples) {
        auto sample = std::make_shared<CTzParserSample>();
        if (!sample->LoadSample(element)) continue;
        m_sampleByIndex.emplace(sample->GetIndex(), sample);
        m_samples.push_back(std::move(sample));
    }
}

// What "sequences" names in vain is skipped, and so is what it names again: a sample that failed
// once fails again.
void CTzParser::MakeTrialOrder() {
    std::unordered_set<int> named;
    std::vector<const CCanvasNodeCmdSampleIdentify*> conditions;
    for (const int index : m_sequences) {
        const auto sample = GetSampleByIndex(index);
        if (!sample || !named.insert(index).second) continue;
        m_trialOrder.push_back(sample);
        conditions.push_back(sample.get());
    }
    m_chooser = std::make_unique<const CSampleChooser>(conditions);
}

// Without a sample that fits, the last one serves untested: it is the catch-all.
std::shared_ptr<CTzParserSample> CTzParser::GetMatchedSample(const std::string& text) const {
    const auto place = m_chooser ? m_chooser->Choose(text) : CSampleChooser::None;
    if (place != CSampleChooser::None) return m_trialOrder[place];
    return m_samples.empty() ? nullptr : m_samples.back();
}

std::shared_ptr<CTzParserSample> CTzParser::GetSampleByIndex(int index) const {
    const auto at = m_sampleByIndex.find(index);
    return at != m_sampleByIndex.end() ? at->second : nullptr;
}

SampleChoice CTzParser::Identify(const std::string& text) const {
    SampleChoice choice;
    for (const auto& sample : m_trialOrder) {
        const auto failure = sample->FindFailure(text);
        auto& trial = choice.trials.emplace_back();
        trial.index = sample->GetIndex();
        if (failure.condition == nullptr) {
            choice.reason = SampleChoice_Matched;
            choice.index = sample->GetIndex();
            return choice;
        }
        trial.failed =
            FailedCondition{failure.isOptional, failure.index, failure.condition->GetType(),
                            failure.condition->GetTypeName(), failure.condition->GetValue()};
    }
    if (m_samples.empty()) return choice;
    choice.reason = m_samples.size() == 1 ? SampleChoice_Only : SampleChoice_CatchAll;
    choice.index = m_samples.back()->GetIndex();
    return choice;
}

std::unique_ptr<CAppParseRule> CTzParser::MakeClone(const std::string& text,
                                                    std::string& error) const {
    std::unique_ptr<CAppParseRule> clone;
    try {
        const auto sample = GetMatchedSample(text);
        if (!sample) {
            error = NoParser;
            return nullptr;
        }
        clone.reset(sample->CloneRule());
        if (auto* root = dynamic_cast<CAppParseRuleSample*>(clone.get()))
            root->SetScriptTimeLimit(m_scriptTimeLimit);
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
