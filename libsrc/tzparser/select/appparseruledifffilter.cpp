// The rule as a definition, and what it says of a run.
#include "tzparser/select/appparseruledifffilter.h"

#include "tzparser/rule/rulekeys.h"
#include "tzparser/select/difffilterkeys.h"
#include "tzparser/variable/appdatatypehelper.h"
#include "tzparser/variable/appvariabledef.h"

#include <limits>

namespace {

// The data type of the rule's node in the tree of its sample, a number without a name.
constexpr auto NodeType = static_cast<AppDataType_e>(27);

template <class Use>
void ForEachOpenLine(const CAppLineStatus& status, Use use) {
    for (int line = status.NextOpen(0); line < status.Count(); line = status.NextOpen(line + 1))
        use(line);
}

}  // namespace

CAppParseRuleDiffFilter::CAppParseRuleDiffFilter(CAppParseRule* parent)
    : CAppParseRule(RuleType_DiffFilter, parent) {}

CAppParseRuleDiffFilter::~CAppParseRuleDiffFilter() = default;

CAppParseRule* CAppParseRuleDiffFilter::CreateObject(CAppParseRule* parent) {
    return new CAppParseRuleDiffFilter(parent);
}

bool CAppParseRuleDiffFilter::OnCopyTo(CAppParseRule* target) {
    auto* other = dynamic_cast<CAppParseRuleDiffFilter*>(target);
    if (other == nullptr) return false;
    other->m_definition = m_definition;
    other->m_lineMapping = m_lineMapping;
    return true;
}

void CAppParseRuleDiffFilter::SetName(const std::string& name) {
    m_definition.Edit().name = name;
    SetRuleModify();
}

void CAppParseRuleDiffFilter::SetLines(AppDiffLines lines) {
    m_definition.Edit().lines = std::move(lines);
    PrepareBaseline();
    SetRuleModify();
}

// The largest row number is never in a range, whose end is exclusive.
void CAppParseRuleDiffFilter::PrepareBaseline() {
    auto& definition = m_definition.Edit();
    definition.baseline = std::make_shared<const CDiffBaseline>(
        definition.lines, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
}

// Rows are added to those that the rule already holds. A later row of a number replaces the text of
// an earlier one, but an added row stays added.
bool CAppParseRuleDiffFilter::LoadParseRule(const hxJson::Value& node) {
    auto& definition = m_definition.Edit();
    definition.name = node[DiffFilterKey::Name].asString();
    SetRuleModify();
    const auto& lines = node[DiffFilterKey::Lines];
    if (!lines.isArray()) return false;
    for (const auto& line : lines) {
        if (!line.isObject()) continue;
        const int row = line[DiffFilterKey::Row].asInt();
        definition.lines.m_rows[row] = line[DiffFilterKey::Text].asString();
        const auto& added = line[DiffFilterKey::Added];
        if ((added.isInt() || added.isBool()) && added.asBool())
            definition.lines.m_addedRows.insert(row);
    }
    PrepareBaseline();
    return true;
}

bool CAppParseRuleDiffFilter::SaveParseRule(hxJson::Value& node) {
    node[DiffFilterKey::Name] = m_definition->name;
    auto& lines = node[DiffFilterKey::Lines];
    lines = hxJson::Value(hxJson::arrayValue, false);
    for (const auto& [row, text] : m_definition->lines.m_rows) {
        auto& line = lines.append(hxJson::Value());
        line[DiffFilterKey::Row] = row;
        line[DiffFilterKey::Text] = text;
        if (m_definition->lines.m_addedRows.count(row) != 0) line[DiffFilterKey::Added] = true;
    }
    return true;
}

// The variables of the children stand below the rule's own; when the name is taken, below the one
// that has it.
bool CAppParseRuleDiffFilter::AddToVariableTree(CAppVariableDef* def) {
    const auto name = "$" + m_definition->name;
    auto made = std::make_unique<CAppVariableDef>(def, name, NodeType, AppVariableType_Parser, "");
    auto* node = made.get();
    if (def->AddChild(node))
        made.release();
    else
        node = def->GetChild(name);
    if (node == nullptr) return true;
    for (const auto& child : Children()) child->AddToVariableTree(node);
    return true;
}

std::vector<CAppTextLet> CAppParseRuleDiffFilter::GetVariableValue(const std::string& name) {
    const auto& own = m_definition->name;
    const bool isOwn = name.size() >= own.size() && name.size() - own.size() <= 1 &&
                       name.compare(name.size() - own.size(), own.size(), own) == 0;
    if (!isOwn) return CAppParseRule::GetVariableValue(name);
    std::string text;
    bool isFirst = true;
    ForEachOpenLine(m_lineStatus, [&](int line) {
        if (!isFirst) text += '\n';
        isFirst = false;
        text += OriginalLineView(line);
    });
    return {CAppTextLet(0, 0, 0, 0, text)};
}

void CAppParseRuleDiffFilter::GetAllVarLineNums(std::set<int>& varLines,
                                                std::set<int>& extendLines) const {
    ForEachOpenLine(m_lineStatus, [&](int line) { varLines.insert(varLines.end(), line); });
    CAppParseRule::GetAllVarLineNums(varLines, extendLines);
}

void CAppParseRuleDiffFilter::SaveResultAsXML(CMarkup&) {}

bool CAppParseRuleDiffFilter::SaveResultAsJson(hxJson::Value& node) {
    auto& result = node[ResultKey::ParseResult];
    result[DiffFilterKey::ParserName] = m_definition->name;
    result[ResultKey::ParserType] = static_cast<int>(GetRuleType());
    result[ResultKey::ValueType] = CAppDataTypeHelper::GetDataTypeStr(AppDataType_String);
    auto& lines = result[DiffFilterKey::Lines];
    lines = hxJson::Value(hxJson::arrayValue, false);
    ForEachOpenLine(LineStatus(), [&lines](int line) { lines.append(hxJson::Value(line)); });
    if (GetSaveExBuiltInInfo()) {
        auto& mapping = result[DiffFilterKey::LineMapping];
        mapping = hxJson::Value(hxJson::arrayValue, false);
        for (const auto& [line, row] : m_lineMapping) {
            auto& pair = mapping.append(hxJson::Value(hxJson::arrayValue, false));
            pair.append(hxJson::Value(row));
            pair.append(hxJson::Value(line));
        }
    }
    return CAppParseRule::SaveResultAsJson(result);
}
