#pragma once

// The keys of a paragraph rule in its document, and those of its result that no other kind has.
namespace ParagraphKey {

constexpr const char* Name = "name";
constexpr const char* KeyVariables = "keyvariables";
constexpr const char* StartLine = "startline";
constexpr const char* EndLine = "endline";
constexpr const char* IsLineAsParagraph = "islineasparagraph";
constexpr const char* LineAsParagraph = "lineasparagraph";
constexpr const char* HashColumns = "hashcolumns";
constexpr const char* HashSort = "hashsort";
constexpr const char* ExcludeEndLine = "excludeendline";
constexpr const char* IsUsePreVars = "isuseprevars";
constexpr const char* UsePreVars = "useprevars";
constexpr const char* IdLines = "idlines";
constexpr const char* ParentLine = "parentline";

// Results.
constexpr const char* ParserName = "parserName";
constexpr const char* Paragraphs = "paragraphs";

// Results in the XML form alone.
constexpr const char* XmlParagraph = "paragraph";

}  // namespace ParagraphKey
