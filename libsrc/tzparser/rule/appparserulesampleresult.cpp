// The sample's part of the parse result document, and the lines that results touch.
#include "host/xml/markup.h"
#include "tzparser/rule/appparserulesample.h"
#include "tzparser/rule/rulekeys.h"

void CAppParseRuleSample::SaveResultAsXML(CMarkup& xml) {
    xml.AddElem(ResultKey::OriginalResult);
    xml.IntoElem();
    for (const auto& child : Children()) child->SaveResultAsXML(xml);
    xml.OutOfElem();
}

bool CAppParseRuleSample::SaveResultAsJson(hxJson::Value& node) {
    auto& results = node[ResultKey::OriginalResult] = hxJson::Value(hxJson::arrayValue, false);
    auto& errors = node[ResultKey::Error] = hxJson::Value(hxJson::arrayValue, false);
    bool all = true;
    for (const auto& child : Children()) {
        all &= child->SaveResultAsJson(results.append(hxJson::Value()));
        errors.append(hxJson::Value(child->GetLastError()));
    }
    return all;
}

std::string CAppParseRuleSample::GetOriTextInfo(std::set<int>& oriLines,
                                                std::set<int>& extendLines) const {
    std::set<int> varLines;
    std::set<int> aroundLines;
    GetAllVarLineNums(varLines, aroundLines);
    const auto isLine = [this](int line) { return line >= 0 && line < m_originalLines.Count(); };
    for (const int line : aroundLines) {
        if (!isLine(line)) continue;
        oriLines.insert(line);
        extendLines.insert(line);
    }
    for (const int line : varLines)
        if (isLine(line)) oriLines.insert(line);
    std::string text;
    for (const int line : oriLines) text.append(m_originalLines.View(line)).push_back('\n');
    return text;
}
