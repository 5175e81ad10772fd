#include "host/xml/markup.h"
#include "tzparser/variable/appvariablearraydef.h"
#include "tzparser/variable/appvariabledef.h"
#include "tzparser/variable/appvariabletabledef.h"
#include "tzparser/variable/definitionkeys.h"
#include "tzparser/variable/siblingnames.h"

// The XML form of a definition tree. As in JSON the tree is followed with an explicit stack; a node
// that waits there is kept with the position of its element, to which the cursor jumps.

namespace {

/// The element that the cursor stands on.
struct Place {
    explicit Place(const CMarkup& xml) : m_level(xml.GetParentPos()), m_element(xml.GetElemPos()) {}
    void GoTo(CMarkup& xml) const { xml.x_SetPos(m_level, m_element, nullptr); }

    CMarkup::Pos m_level;
    CMarkup::Pos m_element;
};

/// The elements of that name on the cursor's level, from its start.
std::size_t CountElements(CMarkup& xml, const char* name) {
    std::size_t count = 0;
    while (xml.FindElem(name)) ++count;
    xml.ResetChildPos();
    return count;
}

template <class Type>
void ReadType(const CMarkup& xml, const char* attribute, Type& type) {
    int number = 0;
    if (xml.GetAttrib(attribute, number)) type = static_cast<Type>(number);
}

}  // namespace

void CAppVariableDef::LoadVariableFromXml(CMarkup&) {}

bool CAppVariableDef::SaveVariableToXml(CMarkup&) const {
    return true;
}

void CAppVariableDef::LoadFieldsFromXml(const CMarkup& xml) {
    ReadType(xml, DefinitionKeys::kDataTypeAttribute, m_dataType);
    ReadType(xml, DefinitionKeys::kVarTypeAttribute, m_varType);
    xml.GetData(DefinitionKeys::kName, m_name);
    xml.GetData(DefinitionKeys::kDesc, m_desc);
}

bool CAppVariableDef::SaveFieldsToXml(CMarkup& xml) const {
    xml.SetAttrib(DefinitionKeys::kDataTypeAttribute, m_dataType);
    xml.SetAttrib(DefinitionKeys::kVarTypeAttribute, m_varType);
    xml.IntoElem();
    return xml.AddElem(DefinitionKeys::kName, m_name) && xml.AddElem(DefinitionKeys::kDesc, m_desc);
}

bool CAppVariableDef::LoadFromXml(CMarkup& xml) {
    struct Pending {
        CAppVariableDef* node;
        Place place;
    };
    const Place own(xml);
    if (own.m_element == nullptr) return false;
    LoadFieldsFromXml(xml);
    std::vector<Pending> pending = {{this, own}};
    while (!pending.empty()) {
        const auto [node, place] = pending.back();
        pending.pop_back();
        place.GoTo(xml);
        xml.IntoElem();
        node->LoadVariableFromXml(xml);
        xml.ResetChildPos();
        if (!xml.FindElem(DefinitionKeys::kChilds)) continue;
        xml.IntoElem();
        SiblingNames names(*node, CountElements(xml, DefinitionKeys::kVariable));
        while (xml.FindElem(DefinitionKeys::kVariable)) {
            std::string name;
            xml.GetData(DefinitionKeys::kName, name);
            // A duplicate is nobody's child, so nothing of it is read.
            if (!names.Claim(name)) continue;
            AppDataType_e dataType = AppDataType_None;
            ReadType(xml, DefinitionKeys::kDataTypeAttribute, dataType);
            std::unique_ptr<CAppVariableDef> made(CreateVariableDefByType(dataType));
            made->m_parent = node;
            CAppVariableDef* child = made.get();
            node->LinkChild(made.release());
            // Read behind the linking, as in JSON: under a table the document's type wins.
            child->LoadFieldsFromXml(xml);
            pending.push_back({child, Place(xml)});
        }
    }
    own.GoTo(xml);
    return true;
}

bool CAppVariableDef::SaveToXml(CMarkup& xml) const {
    struct Pending {
        const CAppVariableDef* node;
        Place place;
    };
    const Place own(xml);
    if (own.m_element == nullptr) return false;
    bool isWhole = true;
    std::vector<Pending> pending = {{this, own}};
    while (!pending.empty()) {
        const auto [node, place] = pending.back();
        pending.pop_back();
        place.GoTo(xml);
        // No room for a name means none for anything else on this level.
        if (!node->SaveFieldsToXml(xml)) {
            isWhole = false;
            continue;
        }
        if (!node->m_children.empty()) {
            xml.AddElem(DefinitionKeys::kChilds);
            xml.IntoElem();
            for (const auto& child : node->m_children) {
                const bool hasRoom = xml.AddElem(DefinitionKeys::kVariable);
                if (hasRoom) pending.push_back({child.get(), Place(xml)});
                isWhole &= hasRoom;
            }
            xml.OutOfElem();
        }
        isWhole &= node->SaveVariableToXml(xml);
    }
    own.GoTo(xml);
    return isWhole;
}

// Comparison keys, hash columns and the hash have no place in XML.
void CAppVariableTableDef::LoadVariableFromXml(CMarkup& xml) {
    // A table of an old document, from before there was a flag, is exported.
    m_exportToCSV = true;
    xml.GetData(DefinitionKeys::kExportToCsv, m_exportToCSV);
    if (!xml.FindElem(DefinitionKeys::kKeys)) return;
    xml.IntoElem();
    while (xml.FindElem(DefinitionKeys::kKey)) m_keys.push_back(xml.GetData());
    xml.OutOfElem();
}

bool CAppVariableTableDef::SaveVariableToXml(CMarkup& xml) const {
    xml.AddElem(DefinitionKeys::kKeys);
    xml.IntoElem();
    bool isWhole = true;
    for (const std::string& key : m_keys) isWhole &= xml.AddElem(DefinitionKeys::kKey, key);
    xml.OutOfElem();
    return xml.AddElem(DefinitionKeys::kExportToCsv, m_exportToCSV ? 1 : 0) && isWhole;
}

void CAppVariableArrayDef::LoadVariableFromXml(CMarkup& xml) {
    int baseType = m_baseType;
    xml.GetData(DefinitionKeys::kBaseType, baseType);
    m_baseType = static_cast<AppDataType_e>(baseType);
}

bool CAppVariableArrayDef::SaveVariableToXml(CMarkup& xml) const {
    return xml.AddElem(DefinitionKeys::kBaseType, m_baseType);
}
