#include "tzparser/variable/appdatatypehelper.h"

#include "host/text/asciicase.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

template <class Number>
struct NameRow {
    Number number;
    std::string name;
};

/// The name of a number. A number without a row has the empty text, the same one for all of them: a
/// table that grew by an empty row for each would show nothing else, and would need a lock.
template <class Rows, class Number>
const std::string& NameOf(const Rows& rows, Number number) {
    static const std::string none;
    const auto row = std::find_if(std::begin(rows), std::end(rows), [&](const auto& candidate) {
        return candidate.number == number;
    });
    return row == std::end(rows) ? none : row->name;
}

const auto& DataTypeNames() {
    static const NameRow<AppDataType_e> rows[] = {
        {AppDataType_None, "string"},  // a variable without a type is shown as a text, on purpose
        {AppDataType_String, "string"},
        {AppDataType_Bool, "bool"},
        {AppDataType_Int, "int"},
        {AppDataType_Double, "double"},
        {AppDataType_Float, "float"},
        {AppDataType_IP, "IP"},
        {AppDataType_Mac, "MAC"},
        {AppDataType_Percent, "Percent"},
        {AppDataType_IPv6, "IPv6"},
        {AppDataType_Device, "Device"},
        {AppDataType_Dict, "dict"},
        {AppDataType_DeviceTrafficState, "DeviceTrafficState"},
        {AppDataType_NCTRecord, "NCTRecord"},
        {AppDataType_IPTrans, "IPTrans"},
        {AppDataType_Interface, "Interface"},
        {AppDataType_DeviceProperty, "DeviceProperty"},
        {AppDataType_InterfaceProperty, "InterfaceProperty"},
        {AppDataType_ModuleProperty, "ModuleProperty"},
        {AppDataType_SiteProperty, "SiteProperty"},
        {AppDataType_ConfigLet, "configlet"},
    };
    return rows;
}

const auto& PythonTypeNames() {
    static const NameRow<AppDataType_e> rows[] = {
        {AppDataType_String, "str"},
        {AppDataType_Bool, "bool"},
        {AppDataType_Int, "int"},
        {AppDataType_Double, "float"},
        {AppDataType_Float, "float"},
        {AppDataType_Array, "list"},
        {AppDataType_Dict, "dict"},
        {AppDataType_IP, "PyIP"},
        {AppDataType_Mac, "PyMac"},
        {AppDataType_Percent, "PyPercent"},
        {AppDataType_IPv6, "PyIPv6"},
        {AppDataType_Device, "PyDevice"},
        {AppDataType_ConfigLet, "PyConfigLet"},
    };
    return rows;
}

const auto& PropertyTypeNames() {
    static const NameRow<AppMonitorPropertyType_e> rows[] = {
        {AppMonitorPropertyType_Device, "Device"},
        {AppMonitorPropertyType_Interface, "Interface"},
        {AppMonitorPropertyType_Link, "Link"},
    };
    return rows;
}

struct PositionRow {
    AppMonitorPropertyPositionType_e number;
    std::string name;
    AppMonitorPropertyType_e owner;
};

const auto& Positions() {
    static const PositionRow rows[] = {
        {AppMonitorPropertyPositionType_Device1, "Dev-Pos1", AppMonitorPropertyType_Device},
        {AppMonitorPropertyPositionType_Device2, "Dev-Pos2", AppMonitorPropertyType_Device},
        {AppMonitorPropertyPositionType_Device3, "Dev-Pos3", AppMonitorPropertyType_Device},
        {AppMonitorPropertyPositionType_Device4, "Dev-Pos4", AppMonitorPropertyType_Device},
        {AppMonitorPropertyPositionType_Interface1, "If-Pos1", AppMonitorPropertyType_Interface},
        {AppMonitorPropertyPositionType_Interface2, "If-Pos2", AppMonitorPropertyType_Interface},
        {AppMonitorPropertyPositionType_Interface3, "If-Pos3", AppMonitorPropertyType_Interface},
        {AppMonitorPropertyPositionType_Interface4, "If-Pos4", AppMonitorPropertyType_Interface},
        {AppMonitorPropertyPositionType_Interface5, "If-Pos5", AppMonitorPropertyType_Interface},
        {AppMonitorPropertyPositionType_Interface6, "If-Pos6", AppMonitorPropertyType_Interface},
        {AppMonitorPropertyPositionType_Interface7, "If-Pos7", AppMonitorPropertyType_Interface},
        {AppMonitorPropertyPositionType_Interface8, "If-Pos8", AppMonitorPropertyType_Interface},
        {AppMonitorPropertyPositionType_Link1, "Link-Pos1", AppMonitorPropertyType_Link},
        {AppMonitorPropertyPositionType_Link2, "Link-Pos2", AppMonitorPropertyType_Link},
        {AppMonitorPropertyPositionType_Link3, "Link-Pos3", AppMonitorPropertyType_Link},
        {AppMonitorPropertyPositionType_Link4, "Link-Pos4", AppMonitorPropertyType_Link},
    };
    return rows;
}

struct ObjectTypeRow {
    AppDataType_e dataType;
    int objectType;
};

// Read in both directions, first hit wins: double stands before float, which has the same code.
constexpr ObjectTypeRow kObjectTypes[] = {
    {AppDataType_IP, 1},          {AppDataType_Mac, 2},      {AppDataType_Percent, 3},
    {AppDataType_IPv6, 4},        {AppDataType_String, 100}, {AppDataType_Int, 101},
    {AppDataType_Double, 102},    {AppDataType_Float, 102},  {AppDataType_Bool, 103},
    {AppDataType_Dict, 104},      {AppDataType_Array, 105},  {AppDataType_DeviceTrafficState, 201},
    {AppDataType_NCTRecord, 202},
};

struct PythonNameRow {
    std::string_view name;
    AppDataType_e dataType;
};

// The Python names and the type words of script declarations. "dict", "IPv6", "Interface" and
// "configlet" are left out on purpose: what reads them here reads an unknown type.
constexpr PythonNameRow kPythonNames[] = {
    {"int", AppDataType_Int},
    {"float", AppDataType_Double},
    {"double", AppDataType_Double},
    {"str", AppDataType_String},
    {"bool", AppDataType_Bool},
    {"list", AppDataType_Array},
    {"tuple", AppDataType_Array},
    {"PyIP", AppDataType_IP},
    {"PyMac", AppDataType_Mac},
    {"PyPercent", AppDataType_Percent},
    {"PyIPv6", AppDataType_IPv6},
    {"PyDevice", AppDataType_Device},
    {"PyDeviceProperty", AppDataType_DeviceProperty},
    {"PyInterface", AppDataType_Interface},
    {"PyInterfaceProperty", AppDataType_InterfaceProperty},
    {"PyModuleProperty", AppDataType_ModuleProperty},
    {"PySiteProperty", AppDataType_SiteProperty},
    {"PyTable", AppDataType_Table},
    {"None", AppDataType_None},
    {"unknown", AppDataType_Unknown},
    {"DeviceTrafficState", AppDataType_DeviceTrafficState},
    {"NCTRecord", AppDataType_NCTRecord},
    {"IPTrans", AppDataType_IPTrans},
    {"global", AppDataType_None},
    {"PyDictTable", AppDataType_Table},
    {"string", AppDataType_String},
    {"ip", AppDataType_IP},
    {"mac", AppDataType_Mac},
    {"percent", AppDataType_Percent},
    {"device", AppDataType_Device},
    {"pyappdict", AppDataType_PyAppDict},
    {"PyConfigLet", AppDataType_ConfigLet},
};

constexpr AppDataType_e kComparable[] = {
    AppDataType_Int,
    AppDataType_Double,
    AppDataType_Bool,
    AppDataType_String,
    AppDataType_IP,
    AppDataType_Mac,
    AppDataType_Device,
    AppDataType_Interface,
    AppDataType_Table,
    AppDataType_Percent,
    AppDataType_IPv6,
    AppDataType_Float,
    AppDataType_DeviceProperty,
    AppDataType_InterfaceProperty,
    AppDataType_ModuleProperty,
    AppDataType_SiteProperty,
};

}  // namespace

const std::string& CAppDataTypeHelper::GetDataTypeStr(AppDataType_e dataType) {
    return NameOf(DataTypeNames(), dataType);
}

const std::string& CAppDataTypeHelper::GetPythonTypeStr(AppDataType_e dataType) {
    return NameOf(PythonTypeNames(), dataType);
}

const std::string& CAppDataTypeHelper::GetPropertyTypeStr(AppMonitorPropertyType_e propertyType) {
    return NameOf(PropertyTypeNames(), propertyType);
}

const std::string& CAppDataTypeHelper::GetPositionTypeStr(
    AppMonitorPropertyPositionType_e positionType) {
    return NameOf(Positions(), positionType);
}

std::string CAppDataTypeHelper::GetDefaltValue(AppDataType_e) {
    return "None";
}

std::vector<AppDataType_e>& CAppDataTypeHelper::GetValidInputDataType() {
    static std::vector<AppDataType_e> types = {AppDataType_String,
                                               AppDataType_Bool,
                                               AppDataType_Int,
                                               AppDataType_Double,
                                               AppDataType_Float,
                                               AppDataType_IP,
                                               AppDataType_Mac,
                                               AppDataType_Percent,
                                               AppDataType_IPv6,
                                               AppDataType_Dict,
                                               AppDataType_DeviceTrafficState,
                                               AppDataType_NCTRecord,
                                               AppDataType_ConfigLet};
    return types;
}

std::vector<AppMonitorPropertyType_e>& CAppDataTypeHelper::GetValidPropertyType() {
    static std::vector<AppMonitorPropertyType_e> types = {AppMonitorPropertyType_Device,
                                                          AppMonitorPropertyType_Interface,
                                                          AppMonitorPropertyType_Link};
    return types;
}

std::multimap<AppMonitorPropertyType_e, AppMonitorPropertyPositionType_e>&
CAppDataTypeHelper::GetValidPositionType() {
    static auto positions = [] {
        std::multimap<AppMonitorPropertyType_e, AppMonitorPropertyPositionType_e> byOwner;
        for (const PositionRow& row : Positions()) byOwner.emplace(row.owner, row.number);
        return byOwner;
    }();
    return positions;
}

bool CAppDataTypeHelper::CanCampare(AppDataType_e dataType) {
    return std::find(std::begin(kComparable), std::end(kComparable), dataType) !=
           std::end(kComparable);
}

bool CAppDataTypeHelper::CanDelta(AppDataType_e dataType) {
    return dataType == AppDataType_Int || dataType == AppDataType_Double ||
           dataType == AppDataType_Float;
}

int CAppDataTypeHelper::GetObjectTypeFromAppDataType(int dataType) {
    for (const ObjectTypeRow& row : kObjectTypes) {
        if (row.dataType == dataType) return row.objectType;
    }
    return -1;
}

int CAppDataTypeHelper::GetAppDataTypeFromObjectType(int objectType) {
    for (const ObjectTypeRow& row : kObjectTypes) {
        if (row.objectType == objectType) return row.dataType;
    }
    return -1;
}

AppDataType_e CAppDataTypeHelper::GetAppDataTypeFromPythonType(std::string_view name) {
    for (const PythonNameRow& row : kPythonNames) {
        if (AsciiEqualIgnoreCase(row.name, name)) return row.dataType;
    }
    return AppDataType_Unknown;
}
