// The search goes forward through the lines once: a line that was found or passed over for a found
// one is never looked at again. A record that isn't there would cost a look at all lines behind the
// last one found, so from the first such record on it is known of each of the others where its text
// stands last, and only those that are still to come are searched.
#include "tzparser/select/appparseruletext.h"

#include "host/diff/textslots.h"
#include "tzparser/rule/appsamplelines.h"
#include "tzparser/rule/rulekeys.h"
#include "tzparser/select/textkeys.h"
#include "tzparser/variable/appdatatypehelper.h"
#include "tzparser/variable/appvariabledef.h"

#include <algorithm>
#include <string_view>

namespace {

// Finds one record behind the other in a range of lines.
class CTextSearch {
public:
    CTextSearch(const CAppSampleLines& lines, int begin, int end,
                const std::vector<TextRecord>& records)
        : m_lines(lines), m_records(records), m_cursor(begin), m_end(end) {}

    // The first line behind the last one found that is equal to a record; -1 when there is none.
    // Records are asked for in order, each once.
    int Find(std::size_t record) {
        if (!IsStillToCome(record)) return -1;
        const std::string_view text = TextOf(record);
        for (int line = m_cursor; line < m_end; ++line)
            if (m_lines.View(line) == text) {
                m_cursor = line + 1;
                return line;
            }
        IndexLast(record + 1);
        return -1;
    }

private:
    std::string_view TextOf(std::size_t record) const { return m_records[record].m_text; }

    // True as long as it isn't known.
    bool IsStillToCome(std::size_t record) const {
        if (m_last.empty()) return true;
        const auto leader = static_cast<std::size_t>(m_leaders[record - m_indexed]);
        return m_last[leader] >= m_cursor;
    }

    // Of the records from one on.
    void IndexLast(std::size_t indexed) {
        if (indexed == m_records.size()) return;
        m_indexed = indexed;
        const auto count = m_records.size() - indexed;
        const auto textOf = [&](int number) {
            return TextOf(m_indexed + static_cast<std::size_t>(number));
        };
        CTextSlots numbers(count);
        m_leaders.reserve(count);
        for (std::size_t i = 0; i < count; ++i)
            m_leaders.push_back(numbers.Add(TextOf(indexed + i), static_cast<int>(i), textOf));
        m_last.assign(count, -1);
        for (int line = m_cursor; line < m_end; ++line) {
            const int number = numbers.Find(m_lines.View(line), textOf);
            if (number >= 0) m_last[static_cast<std::size_t>(number)] = line;
        }
    }

    const CAppSampleLines& m_lines;
    const std::vector<TextRecord>& m_records;
    int m_cursor;
    int m_end;
    std::size_t m_indexed = 0;   // the first record that the lists below know, which count from it
    std::vector<int> m_leaders;  // of each record the first with its text
    std::vector<int> m_last;     // of those, where the text stands last; -1: nowhere
};

}  // namespace

CAppParseRuleText::CAppParseRuleText(CAppParseRule* parent)
    : CAppParseRule(RuleType_Text, parent) {}

CAppParseRuleText::~CAppParseRuleText() = default;

CAppParseRule* CAppParseRuleText::CreateObject(CAppParseRule* parent) {
    return new CAppParseRuleText(parent);
}

bool CAppParseRuleText::LoadParseRule(const hxJson::Value& node) {
    auto& definition = m_definition.Edit();
    definition.name = node[TextKey::Name].asString();
    definition.records.clear();
    const auto& lines = node[TextKey::Lines];
    if (!lines.isArray()) return true;
    for (const auto& line : lines)
        if (line.isObject())
            definition.records.push_back(
                {line[TextKey::Row].asInt(), line[TextKey::Text].asString()});
    return true;
}

bool CAppParseRuleText::SaveParseRule(hxJson::Value& node) {
    node[TextKey::Name] = m_definition->name;
    auto& lines = node[TextKey::Lines] = hxJson::Value(hxJson::arrayValue, false);
    for (const auto& record : m_definition->records) {
        auto& line = lines.append(hxJson::Value());
        line[TextKey::Row] = record.m_row;
        line[TextKey::Text] = record.m_text;
    }
    return true;
}

// What the parse found stays with the rule that ran.
bool CAppParseRuleText::OnCopyTo(CAppParseRule* target) {
    auto* other = dynamic_cast<CAppParseRuleText*>(target);
    if (other == nullptr) return false;
    other->m_definition = m_definition;
    return true;
}

bool CAppParseRuleText::Parse(const std::string&, int startLine, int endLine,
                              IAppVariableCallback*) {
    if (!OnBeginParse(startLine, endLine)) return false;
    m_lineMapping.clear();
    const auto* lines = GetSampleLines();
    if (lines == nullptr) return true;
    const auto& records = m_definition->records;
    CTextSearch search(*lines, std::clamp(GetNIStartLine(), 0, lines->Count()),
                       std::clamp(GetNIEndLine(), 0, lines->Count()), records);
    for (std::size_t i = 0; i < records.size(); ++i) {
        const int line = search.Find(i);
        if (line >= 0) m_lineMapping.emplace_back(line, records[i].m_row);
    }
    return true;
}

bool CAppParseRuleText::AddToVariableTree(CAppVariableDef* def) {
    auto node = std::make_unique<CAppVariableDef>(def, "$" + m_definition->name, AppDataType_String,
                                                  AppVariableType_Parser, "");
    for (const auto& child : Children()) child->AddToVariableTree(node.get());
    if (def->AddChild(node.get())) node.release();
    return true;
}

std::vector<CAppTextLet> CAppParseRuleText::GetVariableValue(const std::string& name) {
    const std::size_t begin = !name.empty() && name.front() == '$' ? 1 : 0;
    const auto& mine = m_definition->name;
    if (name != mine && name.compare(begin, std::string::npos, mine) != 0)
        return CAppParseRule::GetVariableValue(name);
    if (m_lineMapping.empty()) return {};
    std::string text;
    for (const auto& entry : m_lineMapping) text.append(OriginalLineView(entry.first)) += '\n';
    text.erase(text.find_last_not_of("\r\n") + 1);
    return {CAppTextLet(0, 0, 0, 0, text)};
}

void CAppParseRuleText::GetAllVarLineNums(std::set<int>& varLines,
                                          std::set<int>& extendLines) const {
    for (const auto& entry : m_lineMapping) varLines.insert(varLines.end(), entry.first);
    CAppParseRule::GetAllVarLineNums(varLines, extendLines);
}

bool CAppParseRuleText::SaveResultAsJson(hxJson::Value& node) {
    auto& result = node[ResultKey::ParseResult];
    result[ResultKey::ParserName] = m_definition->name;
    result[ResultKey::ParserType] = static_cast<int>(GetRuleType());
    result[ResultKey::ValueType] = CAppDataTypeHelper::GetDataTypeStr(AppDataType_String);
    auto& lines = result[ResultKey::Lines] = hxJson::Value(hxJson::arrayValue, false);
    for (const auto& entry : m_lineMapping) lines.append(hxJson::Value(entry.first));
    return CAppParseRule::SaveResultAsJson(result);
}

// Neither the rule nor those below it have a form in XML results.
void CAppParseRuleText::SaveResultAsXML(CMarkup&) {}
