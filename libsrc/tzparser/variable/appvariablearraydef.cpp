#include "tzparser/variable/appvariablearraydef.h"

#include "host/json/hxjson.h"
#include "tzparser/variable/definitionkeys.h"

CAppVariableArrayDef::CAppVariableArrayDef()
    : CAppVariableArrayDef(nullptr, std::string(), AppVariableType_Default, std::string()) {}

CAppVariableArrayDef::CAppVariableArrayDef(CAppVariableDef* parent, const std::string& name,
                                           AppVariableType_e varType, const std::string& desc)
    : CAppVariableDef(parent, name, AppDataType_Array, varType, desc) {}

bool CAppVariableArrayDef::LoadVariable(const hxJson::Value& value) {
    m_baseType = static_cast<AppDataType_e>(value[DefinitionKeys::kBaseType].asInt());
    return true;
}

bool CAppVariableArrayDef::SaveVariable(hxJson::Value& value) {
    value[DefinitionKeys::kBaseType] = static_cast<int>(m_baseType);
    return true;
}

std::unique_ptr<CAppVariableDef> CAppVariableArrayDef::CloneShallow() const {
    auto copy = std::make_unique<CAppVariableArrayDef>();
    CopyFieldsTo(*copy);
    copy->m_baseType = m_baseType;
    return copy;
}

bool CAppVariableArrayDef::EqualSelf(const CAppVariableDef& other) const {
    const auto* array = dynamic_cast<const CAppVariableArrayDef*>(&other);
    return array != nullptr && m_baseType == array->m_baseType && CAppVariableDef::EqualSelf(other);
}
