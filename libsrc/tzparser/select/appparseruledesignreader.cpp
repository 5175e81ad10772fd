// A run: the open lines of the range go to the reader, the lines it gives back are looked for among
// them, all others close, and the children run over what is left.
#include "tzparser/select/appparseruledesignreader.h"

#include "host/runtime/diagnostics.h"
#include "host/xml/markup.h"
#include "tzparser/rule/appsamplelines.h"
#include "tzparser/rule/rulekeys.h"
#include "tzparser/select/designreader.h"
#include "tzparser/select/readerkeys.h"
#include "tzparser/select/selectedlines.h"
#include "tzparser/variable/appvariabledef.h"

#include <algorithm>

CAppParseRuleDesignReader::CAppParseRuleDesignReader(CAppParseRule* parent)
    : CAppParseRuleLineSelector(RuleType_DesignReader, parent) {}

CAppParseRuleDesignReader::~CAppParseRuleDesignReader() = default;

CAppParseRule* CAppParseRuleDesignReader::CreateObject(CAppParseRule* parent) {
    return new CAppParseRuleDesignReader(parent);
}

bool CAppParseRuleDesignReader::LoadParseRule(const hxJson::Value& node) {
    auto& definition = m_definition.Edit();
    definition.name = node[ReaderKey::Name].asString();
    definition.readerName = node[ReaderKey::ReaderName].asString();
    definition.readerCode = node[ReaderKey::ReaderCode].asString();
    SetRuleModify();
    return true;
}

bool CAppParseRuleDesignReader::SaveParseRule(hxJson::Value& node) {
    node[ReaderKey::Name] = m_definition->name;
    node[ReaderKey::ReaderName] = m_definition->readerName;
    node[ReaderKey::ReaderCode] = m_definition->readerCode;
    return true;
}

bool CAppParseRuleDesignReader::OnCopyTo(CAppParseRule* target) {
    auto* other = dynamic_cast<CAppParseRuleDesignReader*>(target);
    if (other == nullptr) return false;
    other->m_definition = m_definition;
    other->m_drText = m_drText;
    other->SetRuleModify();
    return true;
}

void CAppParseRuleDesignReader::SetName(const std::string& name) {
    m_definition.Edit().name = name;
    SetRuleModify();
}

void CAppParseRuleDesignReader::SetDRName(const std::string& name) {
    m_definition.Edit().readerName = name;
    SetRuleModify();
}

void CAppParseRuleDesignReader::SetDRCode(const std::string& code) {
    m_definition.Edit().readerCode = code;
    SetRuleModify();
}

void CAppParseRuleDesignReader::Reset() {
    m_definition.Edit() = {};
    ResetKeyWord();
    SetRuleModify();
}

bool CAppParseRuleDesignReader::Parse(const std::string& text, int startLine, int endLine,
                                      IAppVariableCallback* callback) {
    if (auto* parent = GetParentRule()) m_lineStatus = parent->LineStatus();
    startLine = std::clamp(startLine, 0, m_lineStatus.Count());
    endLine = std::clamp(endLine, 0, m_lineStatus.Count());
    m_lineStatus.CloseAllBut(startLine, endLine);
    m_drText.clear();
    std::string selected;
    FilterByDR(TextOf(m_lineStatus), selected);
    m_drText = std::move(selected);
    if (startLine >= endLine) return true;
    KeepLines(startLine, endLine);
    for (const auto& child : Children()) child->Parse(text, startLine, endLine, callback);
    return true;
}

// What a reader wrote before it failed doesn't count.
bool CAppParseRuleDesignReader::FilterByDR(const std::string& text, std::string& selected) {
    const auto reader = GetDesignReader();
    if (!reader) return true;
    std::string answer;
    try {
        if (reader->Select(m_definition->readerName, m_definition->readerCode, text, answer)) {
            selected = std::move(answer);
            return true;
        }
        DiagnosticOutput("The design reader \"" + m_definition->readerName + "\" failed\n");
    } catch (const std::exception& error) {
        DiagnosticOutput("The design reader \"" + m_definition->readerName +
                         "\" failed: " + error.what() + "\n");
    } catch (...) {
        DiagnosticOutput("The design reader \"" + m_definition->readerName + "\" failed\n");
    }
    return false;
}

std::vector<SelectedLine> CAppParseRuleDesignReader::FindLines(const CAppLineStatus& above,
                                                               int startLine, int endLine) const {
    const auto* lines = GetSampleLines();
    if (lines == nullptr) return {};
    return FindSelectedLines(*lines, above, startLine, endLine, m_drText);
}

void CAppParseRuleDesignReader::KeepLines(int startLine, int endLine) {
    std::vector<bool> isKept(static_cast<std::size_t>(endLine - startLine));
    for (const auto& selected : FindLines(m_lineStatus, startLine, endLine))
        if (selected.line >= 0) isKept[static_cast<std::size_t>(selected.line - startLine)] = true;
    int closeFrom = startLine;
    for (int line = startLine; line < endLine; ++line) {
        if (!isKept[static_cast<std::size_t>(line - startLine)]) continue;
        m_lineStatus.Close(closeFrom, line);
        closeFrom = line + 1;
    }
    m_lineStatus.Close(closeFrom, endLine);
}

bool CAppParseRuleDesignReader::AddToVariableTree(CAppVariableDef* def) {
    auto node = std::make_unique<CAppVariableDef>(def, "$" + m_definition->name, AppDataType_Node20,
                                                  AppVariableType_Parser, "");
    if (def->AddChild(node.get())) node.release();
    for (const auto& child : Children()) child->AddToVariableTree(def);
    return true;
}

std::vector<CAppTextLet> CAppParseRuleDesignReader::GetVariableValue(const std::string& name) {
    if (!IsAskedForValue(name)) return CAppParseRule::GetVariableValue(name);
    return {CAppTextLet(0, 0, 0, 0, m_drText)};
}

bool CAppParseRuleDesignReader::IsNoneExist() {
    if (m_drText.empty()) return true;
    return std::any_of(Children().begin(), Children().end(),
                       [](const auto& child) { return child->IsNoneExist(); });
}

// Unlike the other selecting kinds it doesn't say of what type the lines are.
bool CAppParseRuleDesignReader::SaveResultAsJson(hxJson::Value& node) {
    hxJson::Value result(hxJson::objectValue);
    result[ResultKey::ParserName] = m_definition->name;
    result[ResultKey::ParserType] = static_cast<int>(GetRuleType());
    WriteOpenLines(LineStatus(), result[ResultKey::Lines]);
    const bool all = CAppParseRule::SaveResultAsJson(result);
    node[ResultKey::ParseResult] = std::move(result);
    return all;
}

// The elements are called otherwise than those of a filter.
void CAppParseRuleDesignReader::SaveResultAsXML(CMarkup& xml) {
    xml.AddElem(ResultKey::ParseResult);
    xml.IntoElem();
    xml.AddElem(ResultKey::ParserName, m_definition->name);
    xml.AddElem(ResultKey::ParserType, static_cast<int>(GetRuleType()));
    xml.AddElem(ReaderKey::XmlFilterLines);
    xml.IntoElem();
    ForEachOpenLine(LineStatus(),
                    [&xml](int line) { xml.AddElem(ReaderKey::XmlFilterLine, line); });
    xml.OutOfElem();
    CAppParseRule::SaveResultAsXML(xml);
    xml.OutOfElem();
}
