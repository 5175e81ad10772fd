#pragma once

// The keys of rule documents. Keys of a rule node are lower case: the loader of the parser
// definition lowers all object keys of a rule document before a rule sees them.
namespace RuleKey {

constexpr const char* Type = "type";
constexpr const char* Xxid = "xxid";
constexpr const char* Child = "child";
constexpr const char* ParseRule = "parserule";
constexpr const char* NiStart = "nistart";
constexpr const char* NiEnd = "niend";
constexpr const char* Operations = "operations";

// A search-and-replace operation.
constexpr const char* OriginalStr = "originalstr";
constexpr const char* ReplaceStr = "replacestr";
constexpr const char* IsCaseSensitive = "iscasesensetive";
constexpr const char* IsWholeWord = "iswholeword";
constexpr const char* IsReplaceAll = "isreplaceall";
constexpr const char* IsRegex = "isregex";

// A start or end bound.
constexpr const char* Pattern = "pattern";
constexpr const char* Text = "text";
constexpr const char* Skip = "skip";

// The sample. Its own keys stand in the sample object, which isn't lowered; "parserules" is what
// the loader makes of the stored "parserRules".
constexpr const char* ParseRules = "parserules";
constexpr const char* Variables = "variables";
constexpr const char* VariablesInterfaceKeys = "interfacekeys";
constexpr const char* TableKeys = "tableKeys";
constexpr const char* InterfaceKeys = "interfaceKeys";

// The hash settings of tables and paragraphs in the XML form, where keys aren't lowered.
constexpr const char* XmlHashColumns = "hashColumns";
constexpr const char* XmlHashSort = "hashSort";

}  // namespace RuleKey

// The keys of parse result documents.
namespace ResultKey {

constexpr const char* OriginalResult = "_original_result";
constexpr const char* Error = "error";
constexpr const char* Children = "childs";
constexpr const char* ParseResult = "parseResult";
constexpr const char* ParserName = "parserName";
constexpr const char* ParserType = "parserType";
constexpr const char* Lines = "lines";
constexpr const char* Variables = "variables";
constexpr const char* Name = "name";
constexpr const char* ValueType = "valueType";
constexpr const char* Details = "details";

// In the XML form alone.
constexpr const char* Child = "child";
constexpr const char* Variable = "variable";
constexpr const char* Detail = "detail";

}  // namespace ResultKey
