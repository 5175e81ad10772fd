#pragma once

#include "tzparser/variable/appvariabledef.h"

/// The definition of an array: a variable with many values of one type, and every column of a
/// table.
///
///     CAppVariableArrayDef column(&table, "$vlan", AppVariableType_Parser, "");
///     column.SetBaseType(AppDataType_Int);
///
/// Its data type is 10. Thread-safety as `CAppVariableDef`.
class TZPARSER_API CAppVariableArrayDef : public CAppVariableDef {
public:
    CAppVariableArrayDef();
    CAppVariableArrayDef(CAppVariableDef* parent, const std::string& name,
                         AppVariableType_e varType, const std::string& desc);

    /// The type of the elements; 0 until it is set.
    AppDataType_e GetBaseType() const { return m_baseType; }
    void SetBaseType(AppDataType_e baseType) { m_baseType = baseType; }

protected:
    bool LoadVariable(const hxJson::Value& value) override;
    bool SaveVariable(hxJson::Value& value) override;
    void LoadVariableFromXml(CMarkup& xml) override;
    bool SaveVariableToXml(CMarkup& xml) const override;
    std::unique_ptr<CAppVariableDef> CloneShallow() const override;
    bool EqualSelf(const CAppVariableDef& other) const override;

private:
    AppDataType_e m_baseType = AppDataType_None;
};
