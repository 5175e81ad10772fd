#pragma once

#include <cstdint>

// The persistent numbers of the variable model. They stand in saved definitions and never change.
// Any other number that a document holds is kept as it is, so each enumeration has a fixed
// underlying type.

/// What kind of value a variable holds. Numbers named by their value are only tested by the
/// predicates of `CAppVariableDef`; their meaning lies with the host.
enum AppDataType_e : std::int32_t {
    AppDataType_None = 0,  ///< no type stated
    AppDataType_Int = 1,
    AppDataType_Double = 2,
    AppDataType_Bool = 3,
    AppDataType_String = 4,
    AppDataType_IP = 5,  ///< version 4, with or without mask
    AppDataType_Mac = 6,
    AppDataType_Device = 7,
    AppDataType_Interface = 8,
    AppDataType_Array = 10,      ///< `CAppVariableArrayDef`; every column of a table
    AppDataType_Table = 11,      ///< `CAppVariableTableDef`
    AppDataType_Procedure = 12,  ///< named "Procedure" in full names when it has no name
    AppDataType_StepNode13 = 13,
    AppDataType_Parsing = 14,  ///< the root "parser" and every sub-root of parsing variables
    AppDataType_StepNode15 = 15,
    AppDataType_Node17 = 17,
    AppDataType_Node18 = 18,
    AppDataType_Node19 = 19,  ///< a container that is also a real variable and a table
    AppDataType_Node20 = 20,
    AppDataType_Dict = 21,
    AppDataType_Percent = 23,
    AppDataType_IPv6 = 24,
    AppDataType_Float = 25,
    AppDataType_ConfigLet = 26,
    AppDataType_AppDict = 500,
    AppDataType_Dlg = 551,    ///< dialog, the first user-interface object
    AppDataType_UIObj = 552,  ///< the user-interface objects other than the dialog: 552 to 599
    AppDataType_UIObj553 = 553,
    AppDataType_UIObj555 = 555,
    AppDataType_UIObj556 = 556,
    AppDataType_UIObj557 = 557,
    AppDataType_UIObj558 = 558,
    AppDataType_UIObj570 = 570,
    AppDataType_UIObj571 = 571,
    AppDataType_UIObj572 = 572,
    AppDataType_UIObj599 = 599,
    AppDataType_Unknown = 1000,  ///< the result of every failed look-up by name
    AppDataType_DeviceTrafficState = 1001,
    AppDataType_NCTRecord = 1002,
    AppDataType_IPTrans = 1003,
    AppDataType_DeviceProperty = 2000,
    AppDataType_InterfaceProperty = 2001,
    AppDataType_ModuleProperty = 2002,
    AppDataType_SiteProperty = 2003,
    AppDataType_Root5000 = 5000,  ///< outer root, where layer names stop
    AppDataType_Node5001 = 5001,
    AppDataType_Node5002 = 5002,
    AppDataType_PyAppDict = 5500
};

/// Which role a variable plays.
enum AppVariableType_e : std::int32_t {
    AppVariableType_Default = 0,
    AppVariableType_Global1 = 1,
    AppVariableType_Global2 = 2,
    AppVariableType_BuiltIn = 3,  ///< `__allPosInfo` and its companions
    AppVariableType_Parser = 4,   ///< what a parse rule yields
    AppVariableType_GlobalOutput = 8,
    AppVariableType_User = 1000,
    AppVariableType_Hidden = 1001,  ///< never offered by `GetIntellisenseChilds`
    AppVariableType_CSVT = 1005,
    AppVariableType_DDT = 1006,
    AppVariableType_GDT = 1007,
    AppVariableType_AppTable1008 = 1008,
    AppVariableType_AppTable1009 = 1009,  ///< keeps dollar signs in `GetAppPyTableName`
    AppVariableType_Column = 1011,
    AppVariableType_Attr = 1012  ///< also the table properties `_rowCount` and `_hashCmp`
};

enum AppMonitorPropertyType_e : std::int32_t {
    AppMonitorPropertyType_Device = 0,
    AppMonitorPropertyType_Interface = 1,
    AppMonitorPropertyType_Link = 2
};

/// Where a monitoring property is shown; the word in the name is the property type it belongs to.
enum AppMonitorPropertyPositionType_e : std::int32_t {
    AppMonitorPropertyPositionType_Device1 = 0,
    AppMonitorPropertyPositionType_Device2 = 1,
    AppMonitorPropertyPositionType_Device3 = 2,
    AppMonitorPropertyPositionType_Device4 = 3,
    AppMonitorPropertyPositionType_Interface1 = 4,
    AppMonitorPropertyPositionType_Interface2 = 5,
    AppMonitorPropertyPositionType_Interface3 = 6,
    AppMonitorPropertyPositionType_Interface4 = 7,
    AppMonitorPropertyPositionType_Interface5 = 8,
    AppMonitorPropertyPositionType_Interface6 = 9,
    AppMonitorPropertyPositionType_Interface7 = 10,
    AppMonitorPropertyPositionType_Interface8 = 11,
    AppMonitorPropertyPositionType_Link1 = 12,
    AppMonitorPropertyPositionType_Link2 = 13,
    AppMonitorPropertyPositionType_Link3 = 14,
    AppMonitorPropertyPositionType_Link4 = 15
};
