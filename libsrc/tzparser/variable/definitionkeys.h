#pragma once

/// The keys of a variable definition in a JSON document; in XML the elements of the same names.
namespace DefinitionKeys {

inline constexpr const char* kDataType = "@data_type";
inline constexpr const char* kVarType = "@var_type";
inline constexpr const char* kName = "name";
inline constexpr const char* kDesc = "desc";
inline constexpr const char* kChilds = "childs";
inline constexpr const char* kVariable = "variable";  // the only key of an element of "childs"

inline constexpr const char* kKeys = "keys";
inline constexpr const char* kTableKey = "tablekey";
inline constexpr const char* kHashColumns = "hashcolumns";
inline constexpr const char* kHashSort = "hashsort";  // holds the table's hash
inline constexpr const char* kExportToCsv = "export_to_csv";

inline constexpr const char* kBaseType = "base_type";

// In XML alone: the attributes of a definition's element, and what "keys" holds.
inline constexpr const char* kDataTypeAttribute = "data_type";
inline constexpr const char* kVarTypeAttribute = "var_type";
inline constexpr const char* kKey = "key";

}  // namespace DefinitionKeys
