// What a table's node says: headers, their variables, alignment, end condition, keys, exclude
// lines.
#include "tzparser/check/checkshape.h"
#include "tzparser/check/samplecheck.h"
#include "tzparser/check/statementcheck.h"
#include "tzparser/table/appparseruletable.h"
#include "tzparser/table/tablekeys.h"
#include "tzparser/table/tabletext.h"
#include "tzparser/text/appstrutil.h"

#include <algorithm>

namespace {

constexpr const char* ListSeparator = ";";
constexpr const char* HeaderGap = "  ";

std::vector<std::string> ListAt(const hxJson::Value& node, const char* key) {
    return AppStrUtil::StrSplit(node[key].asString(), ListSeparator, false);
}

std::string ElementAt(const std::string& path, std::size_t index) {
    return path + "[" + std::to_string(index) + "]";
}

// A column's variable by its name with "$" in front or without.
bool FeedsVariable(const CAppParseRuleTable& table, const std::string& name) {
    const auto names = table.GetVariableNames();
    return std::any_of(names.begin(), names.end(), [&name](const std::string& known) {
        return known == name || known == "$" + name;
    });
}

}  // namespace

void CSampleCheck::CheckTable(const hxJson::Value& node, const std::string& path) {
    CAppParseRuleTable table(nullptr);
    table.SetHeader(node[TableKey::Headers].asString());
    if (table.Headers().empty()) {
        m_report.Add(path + "." + TableKey::Headers, CheckMessage_TableWithoutHeaders);
        return;
    }
    const auto joined = AppStrUtil::StrJoin(table.Headers(), HeaderGap);
    if (CStatementCheck(joined).IsValid())
        m_report.Add(path + "." + TableKey::Headers, CheckMessage_TableHeadersStatement);
    CheckTableVariables(node, table, path);
    CheckTableAlign(node, table.Headers().size(), path);
    const auto end = node[TableKey::EndLine].asString();
    if (!end.empty())
        CheckPattern(end, path + "." + TableKey::EndLine, CheckMessage_TableEndBroken);
    CheckTableExcludes(node, path);
}

// Each entry goes into the table as loading does it, so that the table's own answer tells what came
// of it.
void CSampleCheck::CheckTableVariables(const hxJson::Value& node, CAppParseRuleTable& table,
                                       const std::string& path) {
    const auto listPath = path + "." + TableKey::HeaderToVariables;
    for (const auto& entry : ListAt(node, TableKey::HeaderToVariables)) {
        if (entry.empty()) continue;
        const auto colon = entry.find(':');
        const auto header = entry.substr(0, colon);
        table.AddHeaderVar(header, colon == std::string::npos ? entry : entry.substr(colon + 1));
        const auto& headers = table.Headers();
        if (std::find(headers.begin(), headers.end(), header) == headers.end())
            m_report.Add(listPath, CheckMessage_TableHeaderUnknown, {header}, entry, 0);
        else if (table.GetHeaderVars().count(header) == 0)
            m_report.Add(listPath, CheckMessage_TableHeaderWithoutVariable, {header}, entry,
                         colon == std::string::npos ? 0 : colon + 1);
    }
    if (table.GetVariableNames().empty())
        m_report.Add(listPath, CheckMessage_TableWithoutVariables);
    for (const char* key : {TableKey::KeyVariables, TableKey::UsePreVars})
        for (const auto& name : ListAt(node, key)) CheckTableColumn(table, name, path + "." + key);
    const auto& columns = node[TableKey::HashColumns];
    const auto columnsPath = path + "." + TableKey::HashColumns;
    if (!HasShape(columns, CheckShape_Array, m_report, columnsPath)) return;
    for (std::size_t i = 0; i < columns.size(); ++i)
        CheckTableColumn(table, columns[i].asString(), ElementAt(columnsPath, i));
}

void CSampleCheck::CheckTableColumn(const CAppParseRuleTable& table, const std::string& name,
                                    const std::string& path) {
    if (!name.empty() && !FeedsVariable(table, name))
        m_report.Add(path, CheckMessage_TableColumnUnknown, {name});
}

void CSampleCheck::CheckTableAlign(const hxJson::Value& node, std::size_t headerCount,
                                   const std::string& path) {
    const int align = TableText::LeadingNumber(node[TableKey::AlignType].asString());
    if (align < TableAlign_Left || align > TableAlign_Tokens) {
        m_report.Add(path + "." + TableKey::AlignType, CheckMessage_TableAlignUnknown,
                     {std::to_string(align)});
        return;
    }
    const auto count = ListAt(node, TableKey::AlignRange).size();
    if (align >= TableAlign_Fixed && count != headerCount)
        m_report.Add(path + "." + TableKey::AlignRange, CheckMessage_TableRangeCount,
                     {std::to_string(headerCount), std::to_string(count)});
}

// A broken expression is left out; of other statements only the alternatives can be broken.
void CSampleCheck::CheckTableExcludes(const hxJson::Value& node, const std::string& path) {
    auto listPath = path;
    const auto* list = ListOf(node, TableKey::ExcludeLines, TableKey::ExcludeLine, listPath);
    if (list == nullptr || !node[TableKey::EnableExcludeLines].asBool()) return;
    for (std::size_t i = 0; i < list->size(); ++i) {
        const CStatementCheck check((*list)[i].asString());
        const bool isText = !check.IsValid() && check.Compiled().GetRegex().empty();
        if (isText) continue;
        const auto fault = check.IsValid() ? check.WhyBroken() : check.WhyInvalid();
        if (!fault.reason.empty())
            m_report.Add(ElementAt(listPath, i), CheckMessage_TableExcludeBroken, {fault.reason},
                         check.Statement(), fault.caret);
    }
}
