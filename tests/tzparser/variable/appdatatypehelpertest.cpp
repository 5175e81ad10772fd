#include "tzparser/variable/appdatatypehelper.h"
#include "tzparser/variable/appvariabledef.h"

#include <gtest/gtest.h>

namespace {

using Helper = CAppDataTypeHelper;

AppDataType_e Type(int number) {
    return static_cast<AppDataType_e>(number);
}

/// Numbers of the types up to 6000 for which a test holds.
template <class Test>
std::string Where(Test test) {
    std::string numbers;
    for (int number = -1; number <= 6000; ++number) {
        if (test(Type(number))) numbers += std::to_string(number) + " ";
    }
    return numbers;
}

TEST(CAppDataTypeHelper, NamesOfEveryNumber) {
    std::string display;
    std::string python;
    for (int number = -1; number <= 6000; ++number) {
        const std::string& shown = Helper::GetDataTypeStr(Type(number));
        if (!shown.empty()) display += std::to_string(number) + "=" + shown + " ";
        const std::string& called = Helper::GetPythonTypeStr(Type(number));
        if (!called.empty()) python += std::to_string(number) + "=" + called + " ";
    }
    EXPECT_EQ(display,
              "0=string 1=int 2=double 3=bool 4=string 5=IP 6=MAC 7=Device 8=Interface 21=dict "
              "23=Percent 24=IPv6 25=float 26=configlet 1001=DeviceTrafficState 1002=NCTRecord "
              "1003=IPTrans 2000=DeviceProperty 2001=InterfaceProperty 2002=ModuleProperty "
              "2003=SiteProperty ");
    EXPECT_EQ(python,
              "1=int 2=float 3=bool 4=str 5=PyIP 6=PyMac 7=PyDevice 10=list 21=dict 23=PyPercent "
              "24=PyIPv6 25=float 26=PyConfigLet ");
    EXPECT_EQ(&Helper::GetDataTypeStr(Type(77)), &Helper::GetDataTypeStr(Type(77)));
    EXPECT_EQ(Helper::GetDefaltValue(AppDataType_Int), "None");
}

TEST(CAppDataTypeHelper, ListsAndPositions) {
    const std::vector<int> wanted = {4, 3, 1, 2, 25, 5, 6, 23, 24, 21, 1001, 1002, 26};
    const auto& valid = Helper::GetValidInputDataType();
    EXPECT_EQ(std::vector<int>(valid.begin(), valid.end()), wanted);
    EXPECT_EQ(Helper::GetValidPropertyType().size(), 3u);
    std::string positions;
    for (const auto& [owner, position] : Helper::GetValidPositionType()) {
        positions += Helper::GetPropertyTypeStr(owner)[0];
        positions += std::to_string(position) + "=" + Helper::GetPositionTypeStr(position) + " ";
    }
    EXPECT_EQ(positions,
              "D0=Dev-Pos1 D1=Dev-Pos2 D2=Dev-Pos3 D3=Dev-Pos4 I4=If-Pos1 I5=If-Pos2 I6=If-Pos3 "
              "I7=If-Pos4 I8=If-Pos5 I9=If-Pos6 I10=If-Pos7 I11=If-Pos8 L12=Link-Pos1 "
              "L13=Link-Pos2 L14=Link-Pos3 L15=Link-Pos4 ");
    EXPECT_EQ(Helper::GetPositionTypeStr(static_cast<AppMonitorPropertyPositionType_e>(16)), "");
}

TEST(CAppDataTypeHelper, PredicatesHoldForExactlyTheirNumbers) {
    EXPECT_EQ(Where(Helper::CanCampare), "1 2 3 4 5 6 7 8 11 23 24 25 2000 2001 2002 2003 ");
    EXPECT_EQ(Where(Helper::CanDelta), "1 2 25 ");
    EXPECT_EQ(Where([](AppDataType_e type) { return CAppVariableDef::IsTable(type); }),
              "11 19 21 500 5500 ");
    EXPECT_EQ(Where([](AppDataType_e type) { return CAppVariableDef::IsRealVar(type); }),
              "1 2 3 4 5 6 7 8 11 19 21 23 24 25 500 1001 1002 1003 2000 2001 2002 2003 5500 ");
    const auto member = [](bool (CAppVariableDef::*predicate)() const) {
        return Where([predicate](AppDataType_e type) {
            CAppVariableDef node;
            node.SetDataType(type);
            return (node.*predicate)();
        });
    };
    EXPECT_EQ(member(&CAppVariableDef::IsNode), "11 17 18 19 20 5000 5001 5002 ");
    EXPECT_EQ(member(&CAppVariableDef::IsUISingleVariable), "553 555 556 570 ");
    EXPECT_EQ(member(&CAppVariableDef::UIObjHasHidenValue), "557 558 571 572 ");
    EXPECT_EQ(member(&CAppVariableDef::IsUIObj).substr(0, 8), "551 552 ");
    EXPECT_EQ(member(&CAppVariableDef::IsUIObj).size(), 49u * 4);
}

TEST(CAppDataTypeHelper, ObjectTypesBothWays) {
    std::string there;
    std::string back;
    for (int number = -1; number <= 6000; ++number) {
        const int object = Helper::GetObjectTypeFromAppDataType(number);
        if (object != -1) there += std::to_string(number) + "=" + std::to_string(object) + " ";
        const int type = Helper::GetAppDataTypeFromObjectType(number);
        if (type != -1) back += std::to_string(number) + "=" + std::to_string(type) + " ";
    }
    EXPECT_EQ(there,
              "1=101 2=102 3=103 4=100 5=1 6=2 10=105 21=104 23=3 24=4 25=102 1001=201 1002=202 ");
    EXPECT_EQ(back, "1=5 2=6 3=23 4=24 100=4 101=1 102=2 103=3 104=21 105=10 201=1001 202=1002 ");
}

TEST(CAppDataTypeHelper, PythonNamesAreReadIgnoringCase) {
    const struct {
        const char* name;
        int type;
    } rows[] = {
        {"int", 1},
        {"float", 2},
        {"double", 2},
        {"str", 4},
        {"bool", 3},
        {"list", 10},
        {"tuple", 10},
        {"PyIP", 5},
        {"PyMac", 6},
        {"PyPercent", 23},
        {"PyIPv6", 24},
        {"PyDevice", 7},
        {"PyInterface", 8},
        {"PyDeviceProperty", 2000},
        {"PyModuleProperty", 2002},
        {"PyInterfaceProperty", 2001},
        {"PySiteProperty", 2003},
        {"PYTABLE", 11},
        {"none", 0},
        {"Unknown", 1000},
        {"devicetrafficstate", 1001},
        {"NCTRecord", 1002},
        {"IPTrans", 1003},
        {"Global", 0},
        {"PyDictTable", 11},
        {"String", 4},
        {"IP", 5},
        {"MAC", 6},
        {"Percent", 23},
        {"Device", 7},
        {"pyappdict", 5500},
        {"PyConfigLet", 26},
        {"dict", 1000},
        {"IPv6", 1000},
        {"Interface", 1000},
        {"configlet", 1000},
        {"", 1000},
        {"int ", 1000},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Helper::GetAppDataTypeFromPythonType(row.name), row.type) << row.name;
        EXPECT_EQ(CAppVariableDef::GetDataType(row.name), row.type) << row.name;
    }
}

}  // namespace
