#pragma once

#include "host/json/hxjson.h"
#include "host/runtime/tzexport.h"

#include <string>
#include <string_view>

class CAppTextLet;
class CAppVariableDef;
class CAppVariableValue;
class CHXInterfaceTypeManagement;

// CParserHelper turns parse results into records that a host stores and sends: a compact binary
// form in which each variable can be read without what stands before it, and the JSON schema that
// explains it. docs/record-format.md shows the form byte by byte.
//
//     hxJson::Value schema;
//     CParserHelper::GetParserStructure(*parser.GetVariableTree(), schema);
//     std::string record;
//     CParserHelper::GetParserData(*values, schema.toString(), record, "", "");
//     hxJson::Value uptime;
//     std::string error;
//     CParserHelper::ReadVariable(record, "uptime", uptime, error);
//
// All operations are static and keep nothing, so any threads may use them at once, each on trees
// of its own. Writing can't fail: a text that isn't what its type says becomes nil in the record.
// Records are foreign bytes: reading a malformed one takes time and memory in proportion to its
// length, and no more stack for a deep one.
class TZPARSER_API CParserHelper {
public:
    // The deepest nesting of tables in a record that is read. Deeper ones can be written.
    static constexpr int MaxDepth = 1000;

    // Appends an object for each element of the definition to `array`, which becomes an array when
    // it isn't one: the variables that aren't tables, then the built-in properties, then the
    // tables with their own elements in "column" and their properties in "attributes". Always true.
    static bool GetParserStructure(const CAppVariableDef& def, hxJson::Value& array);

    // Writes the record of a tree, with `header` kept in it unchanged; the schema is a good one,
    // since ReadVariable finds names by it. `out` is replaced. With a device and a tenant the
    // interface service of that tenant is opened for the time of the call. Always true. Texts and
    // headers of 4 GiB and more are cut there.
    static bool GetParserData(const CAppVariableValue& value, const std::string& header,
                              std::string& out, const std::string& deviceId,
                              const std::string& tenant);
    // The same as base64 text, without a tenant.
    static bool GetParserStrData(const CAppVariableValue& value, const std::string& header,
                                 std::string& out, const std::string& deviceId);

    // Reads what stands before the data of a record: the header, the offsets as nested arrays in
    // the order of the schema, and the place of the data, to which offsets are added. False, with
    // an empty header, for a record of another version. Malformed records leave all as it was and
    // throw msgpack::type_error when a part is of another type, else what is derived from
    // msgpack::unpack_error (which is a std::runtime_error): insufficient_bytes, parse_error,
    // array_size_overflow for more elements than there are bytes, depth_size_overflow beyond
    // MaxDepth, size_overflow when the data begin beyond the range of int.
    static bool GetParserInfo(const std::string& data, std::string& header, hxJson::Value& offsets,
                              int& dataStart);

    // Replaces the cells of each table directly below `value` that has interface keys by full
    // interface names: all its columns, not only the keys, by what the service of the tenant knows
    // of the device. Then makes the row count and hash of each such table, with or without
    // interface keys. Tables further down aren't touched. False for null.
    static bool ProcessAllInterfaceNameToFullName(CAppVariableValue* value,
                                                  const std::string& deviceId,
                                                  const std::string& tenant);

    // Reads one variable without decoding any other: "uptime", "routes.prefix" for a column,
    // "routes._rowCount" for a property, "routes" for a whole table as an object of its elements.
    // A column is an array of its cells, or null when it has none. Names are those of the schema,
    // compared exactly; where a name has dots itself, the first element that fits is taken. On
    // failure the result is false, `value` is as it was and `error` says why: the record is
    // malformed, its header is no schema, or it has no such variable. No exception.
    static bool ReadVariable(std::string_view record, const std::string& name, hxJson::Value& value,
                             std::string& error);
    // The same by a schema that the host has, whatever the header is.
    static bool ReadVariable(std::string_view record, const hxJson::Value& schema,
                             const std::string& name, hxJson::Value& value, std::string& error);
    // Reads all of a record: an object by the names of the schema in its header, tables as objects
    // in it. Where the header is no schema, or doesn't fit, an array in the order of the record.
    // Failure as above.
    static bool RecordToJson(std::string_view record, hxJson::Value& value, std::string& error);

private:
    class CPacker;

    static bool SerializeParserDataToMsgPack(const CAppVariableValue& value, CPacker& index,
                                             CPacker& data, const std::string& deviceId,
                                             CHXInterfaceTypeManagement* management);
    static void SerializeTestLetToMsgPack(std::string_view text, int dataType, CPacker& packer);
    static void SerializeElement(const CAppVariableValue& element, CPacker& data);
};
