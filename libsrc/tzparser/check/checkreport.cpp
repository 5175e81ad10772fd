#include "tzparser/check/checkreport.h"

#include "host/text/strformat.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

struct MessageRow {
    CheckMessage_e message;
    const char* text;
};

constexpr std::array<MessageRow, CheckMessage_Count> Messages = {{
    {CheckMessage_NotJson, "This is not JSON: {0}"},
    {CheckMessage_NotDefinition, "This is not an object, so every parse fails."},
    {CheckMessage_WrongShape, "This is not {0} and is ignored."},
    {CheckMessage_AccessType, "Only an integer counts as an access type; this is ignored."},
    {CheckMessage_NoSample, "There is no sample, so every parse fails."},
    {CheckMessage_SampleDropped, "The sample can't be loaded and is dropped."},
    {CheckMessage_RulesNotJson,
     "This is not JSON, so the sample has no rule and every parse with it fails: {0}"},
    {CheckMessage_NoRule, "The sample has no rule, so every parse with it fails."},
    {CheckMessage_NoSuchSample, "No sample has the index {0}."},
    {CheckMessage_SampleNotNamed,
     "\"sequences\" doesn't name the index {0}, and the sample isn't the last: nothing reaches "
     "it."},
    {CheckMessage_SampleHidden,
     "An earlier sample has the index {0}, and this one isn't the last: nothing reaches it."},
    {CheckMessage_SampleBehind,
     "The sample with the index {0} is tried first and, without conditions, fits every text: "
     "nothing reaches this one."},
    {CheckMessage_IdentifyNotJson, "This is not JSON, so the sample is dropped: {0}"},
    {CheckMessage_NoConfigKey,
     "There is no \"ConfigKey\", so the sample has no conditions and fits every text."},
    {CheckMessage_ConditionUnknown,
     "No kind of condition has the type {0}; the condition is left out, and the sample fits more "
     "texts."},
    {CheckMessage_ConditionBroken,
     "The expression doesn't compile; the condition is left out, and the sample fits more texts. "
     "{0}"},
    {CheckMessage_ConditionIndexTaken,
     "An earlier condition of the list has the index {0}; this one is left out, and the sample "
     "fits more texts."},
    {CheckMessage_ConditionNeverHolds, "The value holds no string, so the sample fits no text."},
    {CheckMessage_ConditionAlwaysHolds,
     "The value holds no string, so the condition holds for every text."},
    {CheckMessage_UnknownType,
     "This version has no kind of rule with the type {0}; the rule is left out."},
    {CheckMessage_UnknownTypeBeforeOthers,
     "This version has no kind of rule with the type {0}; the rule is left out, and all behind it "
     "in "
     "the array are lost too (number: {1})."},
    {CheckMessage_TypeNotNumber,
     "\"{0}\" is no number, so this is taken for a keyword rule (type 0)."},
    {CheckMessage_NeedsArray,
     "A rule of type {0} works in an array only; by itself it is left out."},
    {CheckMessage_RuleNotObject,
     "The rule is not an object; it is taken for a keyword rule without statements."},
    {CheckMessage_BelowKeyWord, "Rules below a keyword rule never run."},
    {CheckMessage_NotForBuiltIn,
     "A ping or traceroute rule brings its own lines and forgets those of its definition; only "
     "mline statements count."},
    {CheckMessage_NotForFilter, "A filter takes no bounds and no operations; this is ignored."},
    {CheckMessage_FilterPatternBroken, "The pattern doesn't compile and fits no line. {0}"},
    {CheckMessage_NotForReader,
     "A design reader takes no bounds and no operations; this is ignored."},
    {CheckMessage_BaselineMissing,
     "There is no array with rows, so the rule has nothing in common with any text."},
    {CheckMessage_BaselineWithoutRow,
     "No row has a text and a number from 0, so the rule has nothing in common with any text."},
    {CheckMessage_BaselineRowNumber, "There is no integer \"row\"; this is taken for the row {0}."},
    {CheckMessage_BaselineRowTwice,
     "An earlier element is the row {0} too; this text takes the place of its text."},
    {CheckMessage_BaselineAdded,
     "Only true, false and integers count here; the row isn't marked as added."},
    {CheckMessage_TableWithoutHeaders, "There is no header, so the rule finds no table."},
    {CheckMessage_TableHeadersStatement,
     "All headers together are a statement; only a line that it fits from end to end can be the "
     "header, and each header is looked for as a plain text all the same."},
    {CheckMessage_TableWithoutVariables, "No column has a variable, so the rule yields nothing."},
    {CheckMessage_TableHeaderUnknown, "No header is \"{0}\"; the variable gets nothing."},
    {CheckMessage_TableHeaderWithoutVariable,
     "The pattern gives no variable, or more than one; the column \"{0}\" is dropped."},
    {CheckMessage_TableColumnUnknown, "No column has the variable \"{0}\"."},
    {CheckMessage_TableAlignUnknown,
     "No alignment has the number {0}, so the rule finds no table."},
    {CheckMessage_TableRangeCount,
     "Number of headers: {0}, of numbers: {1}. The rule finds no table."},
    {CheckMessage_TableEndBroken, "The pattern doesn't compile and ends no table. {0}"},
    {CheckMessage_TableExcludeBroken, "The expression doesn't compile and is left out. {0}"},
    {CheckMessage_TextWithoutName,
     "There is no name, so nobody can ask for the lines that the rule finds."},
    {CheckMessage_TextWithoutLines, "There are no lines to look for, so the rule finds nothing."},
    {CheckMessage_TextOverLines, "No line of a text holds a line end, so this is never found."},
    {CheckMessage_TextWithOperations, "A text rule takes no operations; this is ignored."},
    {CheckMessage_BelowText, "Rules below a text rule never run."},
    {CheckMessage_ParagraphNever,
     "There is no start line and no line mode, so there are no paragraphs."},
    {CheckMessage_ParagraphStartBroken,
     "The pattern doesn't compile, so there are no paragraphs. {0}"},
    {CheckMessage_ParagraphEndBroken, "The pattern doesn't compile and ends no paragraph. {0}"},
    {CheckMessage_ParagraphIdBroken,
     "The pattern doesn't compile, so every paragraph fails the check of its id lines. {0}"},
    {CheckMessage_ParagraphParentBroken, "The pattern doesn't compile and is never read. {0}"},
    {CheckMessage_ParagraphParentWithoutVariable,
     "The parent line has no variable, so nothing is read from it."},
    {CheckMessage_ParagraphGroupSize,
     "A document can say 1 or 0 here; any other number counts as 1."},
    {CheckMessage_ParagraphVariableUnknown, "The paragraph has no variable \"{0}\"."},
    {CheckMessage_NotForScript,
     "A script rule takes no bounds, no operations and no rules below it; this is ignored."},
    {CheckMessage_ScriptWithoutFunction,
     "The script has no function ParseText, so every parse with it fails."},
    {CheckMessage_ScriptBroken, "The script doesn't compile, so every parse with it fails: {0}"},
    {CheckMessage_ScriptNotDeclared,
     "The declaration inside the script doesn't have \"{0}\", so it never has a value."},
    {CheckMessage_DeclarationNotJson,
     "This is not JSON, so nothing is declared and all that the script returns is dropped: {0}"},
    {CheckMessage_DeclarationNotArray,
     "This is not an array, so nothing is declared and all that the script returns is dropped."},
    {CheckMessage_DeclaredWithoutName, "There is no \"name\"; the element is left out."},
    {CheckMessage_DeclaredWithoutColumns,
     "The table \"{0}\" declares no column, so all that the script returns for it is dropped."},
    {CheckMessage_EntryIncomplete, "A name or a type is missing; the entry is left out."},
    {CheckMessage_ColumnUnknown, "The table has no column \"{0}\"; this is ignored."},
    {CheckMessage_TableUnknown,
     "No table is called \"{0}\" in small letters and without \"$\"; this is ignored."},
    {CheckMessage_UnknownBound, "No bound has the type {0}, so the rule never runs."},
    {CheckMessage_BoundWithoutVariable,
     "The bound names no variable (\"text\"), so the rule never runs."},
    {CheckMessage_BoundRuleUnknown,
     "No rule directly under the sample has the id \"{0}\", so the rule never runs."},
    {CheckMessage_BoundRuleTooLate,
     "The rule with the id \"{0}\" doesn't run before this one, so this one never runs."},
    {CheckMessage_BoundVariableUnknown,
     "The rule with the id \"{0}\" has no variable \"{1}\", so this one never runs."},
    {CheckMessage_PatternEmpty, "The pattern (\"pattern\") is empty and fits the first line."},
    {CheckMessage_PatternAsText, "{0} {1} The pattern is searched for as a plain text."},
    {CheckMessage_PatternAnchorAsText,
     "Without a variable the pattern is searched for as it stands, with its \"^\" or \"$\". An "
     "expression begins with \"regex:\"."},
    {CheckMessage_PatternBroken, "The pattern doesn't compile, so the rule never runs. {0}"},
    {CheckMessage_StatementInvalid, "{0} {1} The statement is left out."},
    {CheckMessage_StatementBroken, "The statement doesn't compile and never matches. {0}"},
    {CheckMessage_StatementEmpty, "The expression is empty, so the statement yields nothing."},
    {CheckMessage_StatementWithoutVariable,
     "The statement has no variable, so it yields nothing here."},
    {CheckMessage_TooFewGroups,
     "Number of variables: {0}, of groups: {1}. The last variables get nothing."},
    {CheckMessage_SpanUnknown, "No statement of this rule declares \"{0}\"."},
    {CheckMessage_TypeWithoutColon, "There is no colon behind the name; the entry is ignored."},
    {CheckMessage_TypeUnknown, "\"{0}\" is no type word; the variable is taken for a string."},
    {CheckMessage_OperationBroken,
     "The expression doesn't compile, so every parse that uses the operation fails. {0}"},
    {CheckMessage_OperationEmpty,
     "There is nothing to search for (\"originalstr\"), so the operation does nothing."},
    {CheckMessage_ReasonBracketOpen, "No \"]:\" ends the bracket."},
    {CheckMessage_ReasonBracketEmpty, "The bracket names no variable."},
    {CheckMessage_ReasonNoSpan, "There is no span behind \"]:\"."},
    {CheckMessage_ReasonNoVariable, "There is no variable in it."},
    {CheckMessage_ReasonCase, "It only compiles when case is ignored."},
    {CheckMessage_More, "There is more to mend, which is not listed."},
}};

constexpr bool IsInOrder() {
    for (std::size_t i = 0; i < Messages.size(); ++i)
        if (Messages[i].message != static_cast<CheckMessage_e>(i)) return false;
    return true;
}
static_assert(IsInOrder(), "a message is found by its number");

constexpr std::size_t MaxArgument = 200;

// The reader's message begins with the place, which a finding has as numbers.
std::string ReasonOf(const hxJson::Reader& reader) {
    constexpr std::string_view placeEnd = ": ";
    const auto& message = reader.getErrorMessage();
    const auto end = message.find(placeEnd);
    return end == std::string::npos ? message : message.substr(end + placeEnd.size());
}

}  // namespace

std::string CheckText(CheckMessage_e message, CheckArguments arguments) {
    StrFormat format(Messages[message].text);
    for (const auto& argument : arguments) {
        const bool isLong = argument.size() > MaxArgument;
        format << (isLong ? argument.substr(0, MaxArgument) + "..." : argument);
    }
    return format.str();
}

void CCheckReport::Add(const std::string& where, CheckMessage_e message, CheckArguments arguments,
                       const std::string& statement, std::size_t caret) {
    if (m_findings.size() > CTzDefinitionCheck::MaxFindings) return;
    DefinitionFinding finding;
    finding.where = where;
    finding.message = CheckText(message, arguments);
    finding.statement = statement;
    finding.caret = caret;
    Keep(std::move(finding));
}

void CCheckReport::AddJsonError(const std::string& where, CheckMessage_e message,
                                const hxJson::Reader& reader, const std::string& text) {
    if (m_findings.size() > CTzDefinitionCheck::MaxFindings) return;
    DefinitionFinding finding;
    finding.where = where;
    finding.line = reader.getErrorLine();
    finding.column = reader.getErrorColumn();
    finding.message = CheckText(message, {ReasonOf(reader)});
    finding.caret = static_cast<std::size_t>(std::max(finding.column, 1)) - 1;
    const auto begin = reader.getErrorOffset() - std::min(finding.caret, reader.getErrorOffset());
    finding.statement = text.substr(begin, text.find('\n', begin) - begin);
    Keep(std::move(finding));
}

void CCheckReport::Keep(DefinitionFinding&& finding) {
    if (m_findings.size() == CTzDefinitionCheck::MaxFindings) {
        finding = DefinitionFinding();
        finding.where = "definition";
        finding.message = CheckText(CheckMessage_More);
    }
    m_findings.push_back(std::move(finding));
}
