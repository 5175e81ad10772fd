// The rule's document.
#include "tzparser/keyword/appparserulekeyword.h"
#include "tzparser/paragraph/appparseruleparagraph.h"
#include "tzparser/paragraph/paragraphkeys.h"
#include "tzparser/rule/delimitedset.h"

namespace {

void AppendTexts(const hxJson::Value& list, std::vector<std::string>& texts) {
    if (!list.isArray()) return;
    for (const auto& value : list) {
        auto text = value.asString();
        if (!text.empty()) texts.push_back(std::move(text));
    }
}

}  // namespace

// The number of lines of a paragraph is read as a truth value, so a document gives 1 or 0: larger
// groups are set in code. Sets and id lines are added to what the rule already holds.
bool CAppParseRuleParagraph::LoadParseRule(const hxJson::Value& node) {
    auto& definition = EditDefinition();
    definition.name = node[ParagraphKey::Name].asString();
    InsertPieces(node[ParagraphKey::KeyVariables].asString(), definition.keyVars);
    definition.startExpr = node[ParagraphKey::StartLine].asString();
    definition.endExpr = node[ParagraphKey::EndLine].asString();
    definition.isLineAsParagraph = node[ParagraphKey::IsLineAsParagraph].asBool();
    definition.lineAsParagraph = node[ParagraphKey::LineAsParagraph].asBool() ? 1 : 0;
    const auto& hashColumns = node[ParagraphKey::HashColumns];
    if (hashColumns.isArray()) {
        std::set<std::string> columns;
        for (const auto& column : hashColumns) columns.insert(column.asString());
        SetTableCmpColumns(columns);
    }
    SetTableCmpSort(node[ParagraphKey::HashSort].asBool());
    definition.isExcludeEndLine = node[ParagraphKey::ExcludeEndLine].asBool();
    definition.isUsePreVars = node[ParagraphKey::IsUsePreVars].asBool();
    InsertPieces(node[ParagraphKey::UsePreVars].asString(), definition.followVars);
    AppendTexts(node[ParagraphKey::IdLines], definition.idLines);
    definition.parentLine = node[ParagraphKey::ParentLine].asString();
    SetRuleModify();
    auto plan = MakePlan();
    m_definition.Edit().plan = std::move(plan);
    if (auto* keyword = GetFirstKeywordRule()) keyword->PreparePlan();
    return true;
}

// What stands under "isuseprevars" is the flag of the end line. That flag's own key, the hash
// columns, the id lines and the parent line aren't written: a document that is saved and loaded
// again has lost them.
bool CAppParseRuleParagraph::SaveParseRule(hxJson::Value& node) {
    node[ParagraphKey::Name] = m_definition->name;
    node[ParagraphKey::KeyVariables] = JoinPieces(m_definition->keyVars);
    node[ParagraphKey::StartLine] = m_definition->startExpr;
    node[ParagraphKey::EndLine] = m_definition->endExpr;
    node[ParagraphKey::IsLineAsParagraph] = m_definition->isLineAsParagraph;
    node[ParagraphKey::LineAsParagraph] = m_definition->lineAsParagraph;
    node[ParagraphKey::IsUsePreVars] = m_definition->isExcludeEndLine;
    node[ParagraphKey::UsePreVars] = JoinPieces(m_definition->followVars);
    return true;
}
