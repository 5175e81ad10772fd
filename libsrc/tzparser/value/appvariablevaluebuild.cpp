// Building a tree from the rules, and taking it down. Neither recurses: a definition may be as deep
// as it likes.
#include "host/json/hxjson.h"
#include "tzparser/rule/appparserulesample.h"
#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appvariabledef.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

// What the built-in properties are computed of.
struct OriginalText {
    std::string text;
    std::set<int> lines;
    std::set<int> extendLines;
};

using ResultSaver = bool (CAppParseRule::*)(hxJson::Value&);

std::string SaveResult(CAppParseRuleSample& sample, ResultSaver save) {
    hxJson::Value result(hxJson::objectValue, false);
    return (sample.*save)(result) ? result.toString(false) : std::string();
}

std::string Join(const std::set<int>& numbers) {
    std::string joined;
    for (const int number : numbers) {
        if (!joined.empty()) joined.push_back(',');
        joined += std::to_string(number);
    }
    return joined;
}

struct BuiltInProperty {
    std::string_view name;
    bool needsOriginalText;
    std::string (*make)(CAppParseRuleSample&, const OriginalText&);
};

constexpr std::array<BuiltInProperty, 5> BuiltInProperties = {{
    {"__allPosInfo", false,
     [](CAppParseRuleSample& sample, const OriginalText&) {
         return SaveResult(sample, &CAppParseRule::SaveResultAsJson);
     }},
    {"__allOriInfo", false,
     [](CAppParseRuleSample& sample, const OriginalText&) {
         return SaveResult(sample, &CAppParseRule::SaveLineNumberAndResult);
     }},
    {"__allOriText", true,
     [](CAppParseRuleSample&, const OriginalText& text) { return text.text; }},
    {"__allOriTextLineNums", true,
     [](CAppParseRuleSample&, const OriginalText& text) { return Join(text.lines); }},
    {"__allExtendLineNums", true,
     [](CAppParseRuleSample&, const OriginalText& text) { return Join(text.extendLines); }},
}};

const BuiltInProperty* FindBuiltIn(const std::string& name) {
    for (const auto& row : BuiltInProperties)
        if (row.name == name) return &row;
    return nullptr;
}

}  // namespace

CAppVariableValue::CAppVariableValue() = default;

CAppVariableValue::CAppVariableValue(CAppVariableDef* def, bool bCopyDef, CAppParseRule* rule,
                                     CAppVariableValue* parent, int rowCountLimitForHash)
    : m_varDef(def), m_parentValue(parent) {
    if (parent == nullptr && bCopyDef && def != nullptr) {
        m_ownDef.reset(def->Copy(true));
        m_varDef = m_ownDef.get();
    }
    BuildBelow(rule);
    m_rowCountLimitForHash = rowCountLimitForHash;
    if (m_ownDef && rule != nullptr && rule->GetSaveExBuiltInInfo()) BuildBuiltInProperties(rule);
}

CAppVariableValue::CAppVariableValue(std::shared_ptr<const CAppVariableDef> def,
                                     CAppParseRule* rule, int rowCountLimitForHash)
    : m_varDef(def.get()), m_sharedDef(std::move(def)) {
    BuildBelow(rule);
    m_rowCountLimitForHash = rowCountLimitForHash;
    if (m_sharedDef && rule != nullptr && rule->GetSaveExBuiltInInfo())
        BuildBuiltInProperties(rule);
}

CAppVariableValue::~CAppVariableValue() {
    DestroyBelow();
}

void CAppVariableValue::DestroyBelow() noexcept {
    Nodes pending = std::move(m_childValues);
    while (!pending.empty()) {
        const auto node = std::move(pending.back());
        pending.pop_back();
        std::move(node->m_childValues.begin(), node->m_childValues.end(),
                  std::back_inserter(pending));
        node->m_childValues.clear();
    }
}

std::unique_ptr<CAppVariableValue> CAppVariableValue::MakeNode(const CAppVariableDef* def,
                                                               CAppVariableValue* parent) {
    std::unique_ptr<CAppVariableValue> node(new CAppVariableValue);
    node->m_varDef = def;
    node->m_parentValue = parent;
    return node;
}

void CAppVariableValue::BuildBelow(CAppParseRule* rule) {
    if (m_varDef == nullptr) return;
    std::vector<CAppVariableValue*> pending{this};
    while (!pending.empty()) {
        auto* node = pending.back();
        pending.pop_back();
        const auto& children = node->m_varDef->GetChildren();
        node->m_childValues.reserve(children.size());
        for (const auto& child : children) {
            node->m_childValues.push_back(MakeNode(child.get(), node));
            pending.push_back(node->m_childValues.back().get());
        }
        node->TakeValues(rule);
    }
    if (rule != nullptr) LeaveLargeText();
}

// A table asks no rule; its columns do.
void CAppVariableValue::TakeValues(CAppParseRule* rule) {
    if (rule != nullptr && GetDataType() != AppDataType_Table)
        m_values = rule->FindValues(GetVariableFullName());
}

// Values that are places in a text keep it alive. When they need much less than the text does, they
// take their texts with them instead. Small texts aren't worth the look.
void CAppVariableValue::LeaveLargeText() {
    constexpr std::size_t smallText = 1 << 14;
    constexpr std::size_t share = 4;
    std::size_t textSize = 0;
    std::size_t bytes = 0;
    std::vector<CAppVariableValue*> nodes{this};
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        auto& values = nodes[i]->m_values;
        if (const auto* text = values.SourceText()) {
            if (text->size() <= smallText) return;
            textSize = std::max(textSize, text->size());
            bytes += values.Bytes();
        }
        for (const auto& child : nodes[i]->m_childValues) nodes.push_back(child.get());
    }
    if (bytes >= textSize / share) return;
    for (auto* node : nodes) node->m_values.LeaveSourceText();
}

void CAppVariableValue::BuildBuiltInProperties(CAppParseRule* rule) {
    auto* sample = dynamic_cast<CAppParseRuleSample*>(rule->GetRootParentRule());
    if (sample == nullptr) return;
    const auto definitions = m_varDef->GetBuiltInProperties();
    OriginalText original;
    for (const auto* def : definitions) {
        const auto* row = FindBuiltIn(def->GetName());
        if (row == nullptr || !row->needsOriginalText) continue;
        original.text = sample->GetOriTextInfo(original.lines, original.extendLines);
        break;
    }
    for (const auto* def : definitions) {
        const auto* row = FindBuiltIn(def->GetName());
        if (row == nullptr) continue;
        auto property = MakeNode(def, this);
        property->m_values.Lets().emplace_back(row->make(*sample, original));
        m_builtInProperties.push_back(std::move(property));
    }
}
