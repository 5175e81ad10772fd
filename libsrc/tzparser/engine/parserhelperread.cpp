// Reading records. A schema tells the names of a node's elements; their places follow from their
// order: a node's tables are its last elements, and properties that weren't made are missing
// before them. So the "index" of the schema isn't needed, which for the properties of a table that
// has tables in it isn't the place in the record.
#include "tzparser/engine/parserhelper.h"
#include "tzparser/engine/parserhelperkeys.h"
#include "tzparser/engine/parserhelperrecord.h"

#include <limits>
#include <locale>
#include <sstream>
#include <typeinfo>
#include <vector>

namespace {

constexpr const char* OtherVersion = "the record is of another version";
constexpr const char* Malformed = "malformed record: ";
constexpr const char* NoSchema = "the header of the record is no schema";

// What a schema says of one node.
class CNodeSchema {
public:
    // A schema of nothing. Either array may be null.
    CNodeSchema(const hxJson::Value* elements, const hxJson::Value* attributes) {
        m_isSchema = elements != nullptr && elements->isArray() && Take(*elements);
        if (attributes == nullptr || !attributes->isArray()) return;
        const auto columns = m_plain.size();
        m_isSchema = m_isSchema && Take(*attributes);
        m_attributes = m_plain.size() - columns;
    }

    bool IsSchema() const { return m_isSchema; }
    const std::vector<const hxJson::Value*>& Plain() const { return m_plain; }
    const std::vector<const hxJson::Value*>& Tables() const { return m_tables; }

    static std::string_view Name(const hxJson::Value& element) {
        return element[RecordKey::Name].stringView();
    }

    // Whether the node can be one that the schema tells of. Properties may be missing, or be there
    // more than once.
    bool Fits(const msgpack::object_array& node) const {
        if (!m_isSchema || node.size < m_tables.size()) return false;
        if (PlainCount(node) > m_plain.size() && m_attributes == 0) return false;
        for (std::uint32_t place = 0; place < node.size; ++place) {
            const bool isTable = node.ptr[place].type == msgpack::type::ARRAY;
            if (isTable != (place >= PlainCount(node))) return false;
        }
        return true;
    }

    std::size_t PlainCount(const msgpack::object_array& node) const {
        return node.size - m_tables.size();
    }

    // The element of the schema at a place before the tables of a node that fits.
    const hxJson::Value& PlainAt(std::size_t place) const {
        if (place < m_plain.size()) return *m_plain[place];
        const auto first = m_plain.size() - m_attributes;
        return *m_plain[first + (place - first) % m_attributes];
    }

private:
    bool Take(const hxJson::Value& elements) {
        for (const auto& element : elements) {
            if (!element[RecordKey::Name].isString()) return false;
            (element.isMember(RecordKey::Column) ? m_tables : m_plain).push_back(&element);
        }
        return true;
    }

    bool m_isSchema = false;
    std::size_t m_attributes = 0;  // how many at the end of the plain ones are attributes
    std::vector<const hxJson::Value*> m_plain;
    std::vector<const hxJson::Value*> m_tables;
};

// A node of the index with what the schema says of it, and where its values go.
struct RecordNode {
    const msgpack::object* index;
    const hxJson::Value* elements;
    const hxJson::Value* attributes;
    hxJson::Value* out;
};

const msgpack::object_array& NodeArray(const msgpack::object& index) {
    if (index.type != msgpack::type::ARRAY) throw msgpack::type_error();
    return index.via.array;
}

RecordNode TableNode(const msgpack::object& index, const hxJson::Value& element) {
    return {&index, &element[RecordKey::Column], &element[RecordKey::Attributes], nullptr};
}

void ReadNamedNode(CParserHelperRecord& record, const RecordNode& node, const CNodeSchema& schema,
                   std::vector<RecordNode>& pending) {
    const auto& array = NodeArray(*node.index);
    const auto plain = schema.PlainCount(array);
    *node.out = hxJson::Value(hxJson::objectValue);
    for (std::size_t place = 0; place < plain; ++place)
        record.ReadElement(array.ptr[place], (*node.out)[CNodeSchema::Name(schema.PlainAt(place))]);
    for (std::size_t i = 0; i < schema.Tables().size(); ++i) {
        const auto& element = *schema.Tables()[i];
        auto table = TableNode(array.ptr[plain + i], element);
        table.out = &(*node.out)[CNodeSchema::Name(element)];
        pending.push_back(table);
    }
}

// The array has its full length before places in it are handed out, so none of them moves.
void ReadUnnamedNode(CParserHelperRecord& record, const RecordNode& node,
                     std::vector<RecordNode>& pending) {
    const auto& array = NodeArray(*node.index);
    *node.out = hxJson::Value(hxJson::arrayValue);
    for (std::uint32_t place = 0; place < array.size; ++place) node.out->append(hxJson::Value());
    for (std::uint32_t place = 0; place < array.size; ++place) {
        const auto& index = array.ptr[place];
        auto& out = (*node.out)[static_cast<std::size_t>(place)];
        if (index.type == msgpack::type::ARRAY)
            pending.push_back({&index, nullptr, nullptr, &out});
        else
            record.ReadElement(index, out);
    }
}

hxJson::Value ReadNodes(CParserHelperRecord& record, RecordNode root) {
    hxJson::Value value;
    root.out = &value;
    std::vector<RecordNode> pending{root};
    while (!pending.empty()) {
        const auto node = pending.back();
        pending.pop_back();
        const CNodeSchema schema(node.elements, node.attributes);
        if (schema.Fits(NodeArray(*node.index)))
            ReadNamedNode(record, node, schema, pending);
        else
            ReadUnnamedNode(record, node, pending);
    }
    return value;
}

// Steps from a node into the table that the name begins with, and takes the table's name off it.
bool StepInto(RecordNode& node, const CNodeSchema& schema, std::string_view& name) {
    const auto& array = NodeArray(*node.index);
    for (std::size_t i = 0; i < schema.Tables().size(); ++i) {
        const auto& element = *schema.Tables()[i];
        const auto table = CNodeSchema::Name(element);
        if (name.size() <= table.size() || name[table.size()] != '.' ||
            name.substr(0, table.size()) != table)
            continue;
        name.remove_prefix(table.size() + 1);
        node = TableNode(array.ptr[schema.PlainCount(array) + i], element);
        return true;
    }
    return false;
}

// True when the variable is there.
bool FindAndRead(CParserHelperRecord& record, RecordNode node, std::string_view name,
                 hxJson::Value& value) {
    for (;;) {
        const CNodeSchema schema(node.elements, node.attributes);
        const auto& array = NodeArray(*node.index);
        if (!schema.Fits(array)) return false;
        for (std::size_t place = 0; place < schema.PlainCount(array); ++place) {
            if (CNodeSchema::Name(schema.PlainAt(place)) != name) continue;
            record.ReadElement(array.ptr[place], value);
            return true;
        }
        for (std::size_t i = 0; i < schema.Tables().size(); ++i) {
            const auto& element = *schema.Tables()[i];
            if (CNodeSchema::Name(element) != name) continue;
            value = ReadNodes(record, TableNode(array.ptr[schema.PlainCount(array) + i], element));
            return true;
        }
        if (!StepInto(node, schema, name)) return false;
    }
}

bool ReadHeader(const CParserHelperRecord& record, hxJson::Value& schema) {
    return hxJson::Reader().parse(std::string(record.Header()), schema, false) &&
           CNodeSchema(&schema, nullptr).IsSchema();
}

// Opens the record and runs what reads it; says what was wrong.
template <class Read>
bool ReadRecord(std::string_view bytes, std::string& error, Read read) {
    try {
        CParserHelperRecord record;
        if (record.Open(bytes)) return read(record);
        error = OtherVersion;
    } catch (const std::bad_cast&) {
        error = std::string(Malformed) + "a part of another type";
    } catch (const std::exception& exception) {
        error = std::string(Malformed) + exception.what();
    }
    return false;
}

bool ReadBySchema(CParserHelperRecord& record, const hxJson::Value& schema, const std::string& name,
                  hxJson::Value& value, std::string& error) {
    hxJson::Value read;
    if (!FindAndRead(record, {&record.Index(), &schema, nullptr, nullptr}, name, read)) {
        error = "the record has no variable \"" + name + "\"";
        return false;
    }
    value.swap(read);
    return true;
}

}  // namespace

// The offsets take the way over their text, as what isn't JSON then is no fault of the record.
bool CParserHelper::GetParserInfo(const std::string& data, std::string& header,
                                  hxJson::Value& offsets, int& dataStart) {
    CParserHelperRecord record;
    if (!record.Open(data)) {
        header.clear();
        return false;
    }
    if (record.DataStart() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw msgpack::size_overflow("the data begin too far behind");
    std::stringstream text;
    text.imbue(std::locale::classic());
    text << record.Index();
    hxJson::Value read;
    hxJson::Reader().parse(text, read, true);
    header = record.Header();
    offsets.swap(read);
    dataStart = static_cast<int>(record.DataStart());
    return true;
}

bool CParserHelper::ReadVariable(std::string_view record, const std::string& name,
                                 hxJson::Value& value, std::string& error) {
    return ReadRecord(record, error, [&](CParserHelperRecord& opened) {
        hxJson::Value schema;
        if (ReadHeader(opened, schema)) return ReadBySchema(opened, schema, name, value, error);
        error = NoSchema;
        return false;
    });
}

bool CParserHelper::ReadVariable(std::string_view record, const hxJson::Value& schema,
                                 const std::string& name, hxJson::Value& value,
                                 std::string& error) {
    return ReadRecord(record, error, [&](CParserHelperRecord& opened) {
        return ReadBySchema(opened, schema, name, value, error);
    });
}

bool CParserHelper::RecordToJson(std::string_view record, hxJson::Value& value,
                                 std::string& error) {
    return ReadRecord(record, error, [&](CParserHelperRecord& opened) {
        hxJson::Value schema;
        ReadHeader(opened, schema);
        auto read = ReadNodes(opened, {&opened.Index(), &schema, nullptr, nullptr});
        value.swap(read);
        return true;
    });
}
