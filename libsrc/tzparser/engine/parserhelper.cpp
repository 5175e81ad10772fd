// Writing: the schema, the record and full interface names. Whatever goes through a whole tree
// keeps its own stack, since a tree may be deeper than the thread's.
#include "tzparser/engine/parserhelper.h"

#include "host/store/hxdomain.h"
#include "host/store/hxinterfacetypemanagement.h"
#include "host/text/asciicase.h"
#include "host/text/base64.h"
#include "host/text/stlhelper.h"
#include "tzparser/engine/parserhelperkeys.h"
#include "tzparser/engine/parserhelpernumber.h"
#include "tzparser/engine/parserhelperpacker.h"
#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appvariablearraydef.h"
#include "tzparser/variable/appvariabletabledef.h"

#include <memory>
#include <set>
#include <vector>

namespace {

using Values = std::vector<CAppVariableValue*>;

AppDataType_e ElementType(const CAppVariableDef& def) {
    if (def.GetDataType() != AppDataType_Array) return def.GetDataType();
    const auto* array = dynamic_cast<const CAppVariableArrayDef*>(&def);
    return array != nullptr ? array->GetBaseType() : AppDataType_None;
}

hxJson::Value PlainElement(const CAppVariableDef& def, int index) {
    std::string name = def.GetName();
    StlHelper::trim(name, "$ \t\n\r");
    hxJson::Value element(hxJson::objectValue);
    element[RecordKey::Type] = static_cast<int>(ElementType(def));
    element[RecordKey::Name] = name;
    element[RecordKey::Index] = index;
    return element;
}

// All of a table's element but its columns. Indexes of attributes go on from the number of the
// table's children, and their names stay as they are.
hxJson::Value TableElement(const CAppVariableDef& def, int index) {
    auto element = PlainElement(def, index);
    auto& hashColumns = element[RecordKey::HashColumns];
    auto& attributes = element[RecordKey::Attributes];
    element[RecordKey::HashSort] = false;
    element[RecordKey::Column] = hxJson::Value(hxJson::arrayValue);
    attributes = hxJson::Value(hxJson::arrayValue);
    const auto* table = dynamic_cast<const CAppVariableTableDef*>(&def);
    if (table == nullptr) return element;
    std::set<std::string> columns;
    table->GetTableCmpColumns(columns);
    for (const auto& column : columns) hashColumns.append(column);
    element[RecordKey::HashSort] = table->IsTableCmpSort();
    int next = static_cast<int>(def.GetChildCount());
    for (const auto* property : table->GetProperties()) {
        auto& attribute = attributes.append(PlainElement(*property, next++));
        attribute[RecordKey::Name] = property->GetName();
    }
    return element;
}

// The properties that go with a node into the record.
Values ExtraElements(const CAppVariableValue& value) {
    if (value.GetDataType() == AppDataType_Table) return value.GetProperties();
    if (value.GetDataType() == AppDataType_Parsing && value.GetName() == "parser")
        return value.GetBuiltInProperties();
    return {};
}

bool IsTrue(std::string_view text) {
    return text == "1" || AsciiEqualIgnoreCase(text, "true");
}

bool IsFalse(std::string_view text) {
    return text == "0" || AsciiEqualIgnoreCase(text, "false");
}

bool IsTextType(int dataType) {
    return dataType != AppDataType_Int && dataType != AppDataType_Double &&
           dataType != AppDataType_Bool;
}

// The interface service of one call, opened when the first name needs it.
class CInterfaceNames {
public:
    CInterfaceNames(const std::string& deviceId, const std::string& tenant)
        : m_deviceId(deviceId), m_tenant(tenant) {}

    void Expand(std::string& name) {
        if (name.empty() || m_deviceId.empty() || m_tenant.empty()) return;
        name = Management()->GetFullIfNameFromPossibleName(m_deviceId, name);
    }

    // Null when no tenant or device was given.
    CHXInterfaceTypeManagement* Management() {
        if (m_management || m_deviceId.empty() || m_tenant.empty()) return m_management.get();
        CHXDomain domain;
        domain.SetTenantDBName(m_tenant);
        m_management = std::make_unique<CHXInterfaceTypeManagement>(domain);
        return m_management.get();
    }

private:
    const std::string& m_deviceId;
    const std::string& m_tenant;
    std::unique_ptr<CHXInterfaceTypeManagement> m_management;
};

void ExpandTable(const CAppVariableValue& table, CInterfaceNames& names) {
    for (auto* column : table.GetChildValues()) {
        if (column->GetDataType() != AppDataType_Array) continue;
        for (auto& let : column->GetValues()) names.Expand(let.text);
    }
}

}  // namespace

// The elements of a node are all in place before those of its tables are filled, so that the array
// moves none of them.
bool CParserHelper::GetParserStructure(const CAppVariableDef& def, hxJson::Value& array) {
    struct Node {
        const CAppVariableDef* def;
        hxJson::Value* array;
    };
    if (!array.isArray()) array = hxJson::Value(hxJson::arrayValue);
    std::vector<Node> pending{{&def, &array}};
    while (!pending.empty()) {
        const auto node = pending.back();
        pending.pop_back();
        int index = 0;
        for (const auto& child : node.def->GetChildren())
            if (child->GetDataType() != AppDataType_Table)
                node.array->append(PlainElement(*child, index++));
        for (const auto* property : node.def->GetBuiltInProperties())
            node.array->append(PlainElement(*property, index++));
        std::size_t firstTable = node.array->size();
        std::vector<const CAppVariableDef*> tables;
        for (const auto& child : node.def->GetChildren()) {
            if (child->GetDataType() != AppDataType_Table) continue;
            node.array->append(TableElement(*child, index++));
            tables.push_back(child.get());
        }
        for (const auto* table : tables)
            pending.push_back({table, &(*node.array)[firstTable++][RecordKey::Column]});
    }
    return true;
}

void CParserHelper::SerializeTestLetToMsgPack(std::string_view text, int dataType,
                                              CPacker& packer) {
    std::int64_t integer = 0;
    double real = 0;
    if (dataType == AppDataType_Int && RecordInteger(text, integer))
        packer.pack_int64(integer);
    else if (dataType == AppDataType_Double && RecordReal(text, real))
        packer.PackReal(real);
    else if (dataType == AppDataType_Bool && IsTrue(text))
        packer.pack_true();
    else if (dataType == AppDataType_Bool && IsFalse(text))
        packer.pack_false();
    else if (IsTextType(dataType))
        packer.PackText(text);
    else
        packer.pack_nil();
}

void CParserHelper::SerializeElement(const CAppVariableValue& element, CPacker& data) {
    const auto count = element.GetLetCount();
    const auto* def = element.GetVarDef();
    const auto type = def != nullptr ? ElementType(*def) : AppDataType_None;
    if (count == 0) {
        data.pack_nil();
    } else if (element.GetDataType() == AppDataType_Array) {
        data.PackArrayHeader(count);
        for (std::size_t i = 0; i < count; ++i)
            SerializeTestLetToMsgPack(element.GetText(i), type, data);
    } else {
        SerializeTestLetToMsgPack(element.GetText(0), type, data);
    }
}

// Names of interfaces aren't touched here: device and service are only passed along.
bool CParserHelper::SerializeParserDataToMsgPack(const CAppVariableValue& value, CPacker& index,
                                                 CPacker& data, const std::string&,
                                                 CHXInterfaceTypeManagement*) {
    std::vector<const CAppVariableValue*> pending{&value};
    while (!pending.empty()) {
        const auto* node = pending.back();
        pending.pop_back();
        auto elements = node->GetChildValues();
        const auto extra = ExtraElements(*node);
        elements.insert(elements.end(), extra.begin(), extra.end());
        index.PackArrayHeader(elements.size());
        data.PackArrayHeader(elements.size());
        for (const auto* element : elements) {
            if (element->GetDataType() == AppDataType_Table) continue;
            index.pack_uint64(data.Bytes().size());
            SerializeElement(*element, data);
        }
        for (auto element = elements.rbegin(); element != elements.rend(); ++element)
            if ((*element)->GetDataType() == AppDataType_Table) pending.push_back(*element);
    }
    return true;
}

bool CParserHelper::GetParserData(const CAppVariableValue& value, const std::string& header,
                                  std::string& out, const std::string& deviceId,
                                  const std::string& tenant) {
    CPacker index;
    CPacker data;
    index.pack_uint8(RecordVersion);
    index.PackText(header);
    CInterfaceNames names(deviceId, tenant);
    SerializeParserDataToMsgPack(value, index, data, deviceId, names.Management());
    out.clear();
    out.reserve(index.Bytes().size() + data.Bytes().size());
    out += index.Bytes();
    out += data.Bytes();
    return true;
}

bool CParserHelper::GetParserStrData(const CAppVariableValue& value, const std::string& header,
                                     std::string& out, const std::string& deviceId) {
    std::string record;
    GetParserData(value, header, record, deviceId, std::string());
    out = base64_encode(reinterpret_cast<const unsigned char*>(record.data()), record.size());
    return true;
}

bool CParserHelper::ProcessAllInterfaceNameToFullName(CAppVariableValue* value,
                                                      const std::string& deviceId,
                                                      const std::string& tenant) {
    if (value == nullptr) return false;
    CInterfaceNames names(deviceId, tenant);
    for (auto* table : value->GetChildValues()) {
        if (table->GetDataType() != AppDataType_Table) continue;
        const auto* def = dynamic_cast<const CAppVariableTableDef*>(table->GetVarDef());
        if (def == nullptr) continue;
        // The interface keys only say whether the table is touched: all its columns are.
        if (!def->GetIntfTableKeys().empty()) ExpandTable(*table, names);
        table->AddTableHashAndRowCountToProperty();
    }
    return true;
}
