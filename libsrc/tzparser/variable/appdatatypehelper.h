#pragma once

#include "host/runtime/tzexport.h"
#include "tzparser/variable/appdatatype.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// The tables between type numbers, display names, Python type names and the type codes of the
/// Python object factory. All functions are static.
///
///     CAppDataTypeHelper::GetDataTypeStr(AppDataType_IP);                     // "IP"
///     CAppDataTypeHelper::GetAppDataTypeFromPythonType("PyTable");            // AppDataType_Table
///
/// Nothing here fails: an unknown number gives the empty text or -1, an unknown name
/// `AppDataType_Unknown`. The functions may be called from any thread, with unknown numbers too;
/// who changes one of the mutable lists must keep other threads from them.
class TZPARSER_API CAppDataTypeHelper {
public:
    CAppDataTypeHelper() = delete;

    /// Display name. The reference is valid for the process's lifetime, that of an unknown number
    /// too.
    static const std::string& GetDataTypeStr(AppDataType_e dataType);
    /// Name of the Python type; the lifetime of the result as above, here and in the next two.
    static const std::string& GetPythonTypeStr(AppDataType_e dataType);
    static const std::string& GetPropertyTypeStr(AppMonitorPropertyType_e propertyType);
    static const std::string& GetPositionTypeStr(AppMonitorPropertyPositionType_e positionType);

    /// "None" for every type.
    static std::string GetDefaltValue(AppDataType_e dataType);

    /// The types that a user may state for an input, in the order they are offered.
    static std::vector<AppDataType_e>& GetValidInputDataType();
    static std::vector<AppMonitorPropertyType_e>& GetValidPropertyType();
    /// The positions that belong to each property type.
    static std::multimap<AppMonitorPropertyType_e, AppMonitorPropertyPositionType_e>&
    GetValidPositionType();

    /// Whether values of the type can be compared.
    static bool CanCampare(AppDataType_e dataType);
    /// Whether a difference of two values of the type can be taken.
    static bool CanDelta(AppDataType_e dataType);

    /// The object factory's code of a data type, or -1.
    static int GetObjectTypeFromAppDataType(int dataType);
    /// The way back, or -1. The code of double and float gives double.
    static int GetAppDataTypeFromObjectType(int objectType);

    /// The type that a Python name or a short type word of a script declaration stands for, ASCII
    /// case ignored. Not the inverse of `GetDataTypeStr`: "dict", "IPv6" and others are unknown
    /// here.
    static AppDataType_e GetAppDataTypeFromPythonType(std::string_view name);
};
