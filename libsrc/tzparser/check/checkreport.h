#pragma once

#include "host/json/hxjson.h"
#include "tzparser/check/definitioncheck.h"

#include <initializer_list>
#include <string>
#include <vector>

// Everything that the check of a definition has words for. The texts stand in one table.
enum CheckMessage_e {
    // The document and its samples.
    CheckMessage_NotJson,
    CheckMessage_NotDefinition,
    CheckMessage_WrongShape,
    CheckMessage_AccessType,
    CheckMessage_NoSample,
    CheckMessage_SampleDropped,
    CheckMessage_RulesNotJson,
    CheckMessage_NoRule,
    CheckMessage_NoSuchSample,
    CheckMessage_SampleNotNamed,
    CheckMessage_SampleHidden,
    CheckMessage_SampleBehind,
    // Identify documents.
    CheckMessage_IdentifyNotJson,
    CheckMessage_NoConfigKey,
    CheckMessage_ConditionUnknown,
    CheckMessage_ConditionBroken,
    CheckMessage_ConditionIndexTaken,
    CheckMessage_ConditionNeverHolds,
    CheckMessage_ConditionAlwaysHolds,
    // Rule nodes.
    CheckMessage_UnknownType,
    CheckMessage_UnknownTypeBeforeOthers,
    CheckMessage_TypeNotNumber,
    CheckMessage_NeedsArray,
    CheckMessage_RuleNotObject,
    CheckMessage_BelowKeyWord,
    CheckMessage_NotForBuiltIn,
    CheckMessage_NotForFilter,
    CheckMessage_FilterPatternBroken,
    CheckMessage_NotForReader,
    // Diff filters.
    CheckMessage_BaselineMissing,
    CheckMessage_BaselineWithoutRow,
    CheckMessage_BaselineRowNumber,
    CheckMessage_BaselineRowTwice,
    CheckMessage_BaselineAdded,
    // Tables.
    CheckMessage_TableWithoutHeaders,
    CheckMessage_TableHeadersStatement,
    CheckMessage_TableWithoutVariables,
    CheckMessage_TableHeaderUnknown,
    CheckMessage_TableHeaderWithoutVariable,
    CheckMessage_TableColumnUnknown,
    CheckMessage_TableAlignUnknown,
    CheckMessage_TableRangeCount,
    CheckMessage_TableEndBroken,
    CheckMessage_TableExcludeBroken,
    // Text rules.
    CheckMessage_TextWithoutName,
    CheckMessage_TextWithoutLines,
    CheckMessage_TextOverLines,
    CheckMessage_TextWithOperations,
    CheckMessage_BelowText,
    // Paragraphs.
    CheckMessage_ParagraphNever,
    CheckMessage_ParagraphStartBroken,
    CheckMessage_ParagraphEndBroken,
    CheckMessage_ParagraphIdBroken,
    CheckMessage_ParagraphParentBroken,
    CheckMessage_ParagraphParentWithoutVariable,
    CheckMessage_ParagraphGroupSize,
    CheckMessage_ParagraphVariableUnknown,
    // Script rules.
    CheckMessage_NotForScript,
    CheckMessage_ScriptWithoutFunction,
    CheckMessage_ScriptBroken,
    CheckMessage_ScriptNotDeclared,
    CheckMessage_DeclarationNotJson,
    CheckMessage_DeclarationNotArray,
    CheckMessage_DeclaredWithoutName,
    CheckMessage_DeclaredWithoutColumns,
    CheckMessage_EntryIncomplete,
    CheckMessage_ColumnUnknown,
    CheckMessage_TableUnknown,
    // Bounds.
    CheckMessage_UnknownBound,
    CheckMessage_BoundWithoutVariable,
    CheckMessage_BoundRuleUnknown,
    CheckMessage_BoundRuleTooLate,
    CheckMessage_BoundVariableUnknown,
    CheckMessage_PatternEmpty,
    CheckMessage_PatternAsText,
    CheckMessage_PatternAnchorAsText,
    CheckMessage_PatternBroken,
    // Statements.
    CheckMessage_StatementInvalid,
    CheckMessage_StatementBroken,
    CheckMessage_StatementEmpty,
    CheckMessage_StatementWithoutVariable,
    CheckMessage_TooFewGroups,
    CheckMessage_SpanUnknown,
    CheckMessage_TypeWithoutColon,
    CheckMessage_TypeUnknown,
    // Operations.
    CheckMessage_OperationBroken,
    CheckMessage_OperationEmpty,
    // Reasons, which stand inside other messages.
    CheckMessage_ReasonBracketOpen,
    CheckMessage_ReasonBracketEmpty,
    CheckMessage_ReasonNoSpan,
    CheckMessage_ReasonNoVariable,
    CheckMessage_ReasonCase,
    // The end of a list that is cut.
    CheckMessage_More,
    CheckMessage_Count
};

using CheckArguments = std::initializer_list<std::string>;

// The text of a message with its arguments, the long ones cut.
std::string CheckText(CheckMessage_e message, CheckArguments arguments = {});

// CCheckReport gathers the findings of one check, up to the largest number.
//
//     report.Add("samples[0]", CheckMessage_NoRule);
//     report.Add(path, CheckMessage_TypeUnknown, {word}, entry, entry.find(':') + 1);
//
// One thread at a time.
class CCheckReport {
public:
    void Add(const std::string& where, CheckMessage_e message, CheckArguments arguments = {},
             const std::string& statement = {}, std::size_t caret = DefinitionFinding::NoCaret);
    // The error of a reader that has just failed on `text`.
    void AddJsonError(const std::string& where, CheckMessage_e message,
                      const hxJson::Reader& reader, const std::string& text);

    // Hands over what was found.
    std::vector<DefinitionFinding> Take() { return std::move(m_findings); }

private:
    void Keep(DefinitionFinding&& finding);

    std::vector<DefinitionFinding> m_findings;
};
