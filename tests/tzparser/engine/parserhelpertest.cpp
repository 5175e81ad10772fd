#include "host/store/inventory.h"
#include "host/store/memoryinventory.h"
#include "host/text/base64.h"
#include "tzparser/engine/parserhelper.h"
#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appvariablearraydef.h"
#include "tzparser/variable/appvariabletabledef.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <locale>
#include <memory>
#include <sstream>
#include <typeinfo>

#include <gtest/gtest.h>
#include <msgpack/unpack.hpp>

namespace {

hxJson::Value ParseJson(const std::string& text) {
    hxJson::Value value;
    hxJson::Reader reader;
    EXPECT_TRUE(reader.parse(text, value, true)) << reader.getErrorMessage();
    return value;
}

CAppVariableDef* Add(CAppVariableDef& parent, CAppVariableDef* child) {
    child->SetParent(&parent);
    EXPECT_TRUE(parent.AddChild(child));
    return child;
}

CAppVariableDef* AddPlain(CAppVariableDef& parent, const std::string& name, AppDataType_e type) {
    return Add(parent, new CAppVariableDef(nullptr, name, type, AppVariableType_Parser, ""));
}

CAppVariableTableDef* AddTable(CAppVariableDef& parent, const std::string& name) {
    auto* table = new CAppVariableTableDef(nullptr, name, AppVariableType_Parser, "", false);
    Add(parent, table);
    return table;
}

void AddColumn(CAppVariableDef& parent, const std::string& name, AppDataType_e type) {
    auto* column = new CAppVariableArrayDef(nullptr, name, AppVariableType_Parser, "");
    column->SetBaseType(type);
    Add(parent, column);
}

void Fill(CAppVariableValue& root, const std::string& name, const std::vector<std::string>& texts) {
    auto* value = root.GetChildValueByName(name);
    ASSERT_NE(value, nullptr) << name;
    for (const auto& text : texts) value->GetValues().emplace_back(text);
}

std::string Hex(const std::string& bytes) {
    constexpr char digits[] = "0123456789abcdef";
    std::string hex;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        hex += digits[byte >> 4];
        hex += digits[byte & 15];
    }
    return hex;
}

std::string Bytes(const std::string& hex) {
    std::string bytes;
    std::string digits;
    for (const char c : hex)
        if (c != ' ') digits += c;
    for (std::size_t i = 0; i < digits.size(); i += 2)
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    return bytes;
}

std::string Record(const CAppVariableValue& value, const std::string& header = "") {
    std::string record;
    EXPECT_TRUE(CParserHelper::GetParserData(value, header, record, "", ""));
    return record;
}

std::string Schema(const CAppVariableDef& def) {
    hxJson::Value schema;
    EXPECT_TRUE(CParserHelper::GetParserStructure(def, schema));
    return schema.toString();
}

// The example of docs/record-format.md.
struct Example {
    CAppVariableDef def{nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, ""};
    std::unique_ptr<CAppVariableValue> root;

    Example() {
        AddPlain(def, "$host", AppDataType_String);
        auto* table = AddTable(def, "routes");
        AddColumn(*table, "$prefix", AppDataType_String);
        AddColumn(*table, "metric", AppDataType_Int);
        table->SetTableCmpColumns({"prefix", "metric"});
        AddPlain(def, "uptime", AppDataType_Int);
        root = std::make_unique<CAppVariableValue>(&def, true, nullptr, nullptr, 10);
        Fill(*root, "$host", {"core1"});
        Fill(*root, "routes.$prefix", {"192.0.2.0/24", "198.51.100.0/24"});
        Fill(*root, "routes.metric", {"10", "200"});
        Fill(*root, "uptime", {"86400"});
    }
};

// A fenced block of the page, with what is behind a "#" in its lines left out.
std::string PageBlock(const std::string& fence) {
    std::ifstream page(TZ_DOCS "/record-format.md");
    std::string block;
    bool isInside = false;
    for (std::string line; std::getline(page, line);) {
        if (line.rfind("```", 0) == 0)
            isInside = line == "```" + fence;
        else if (isInside)
            block += line.substr(0, line.find('#'));
    }
    EXPECT_NE(block, "") << fence;
    return block;
}

TEST(ParserHelper, TheExampleOfTheFormatPage) {
    Example example;
    EXPECT_EQ(Schema(example.def), ParseJson(PageBlock("json schema")).toString());
    const auto record = Record(*example.root, "abc");
    EXPECT_EQ(Hex(record), Hex(Bytes(PageBlock("hex"))));
    std::string text;
    EXPECT_TRUE(CParserHelper::GetParserStrData(*example.root, "abc", text, "device"));
    EXPECT_EQ(text,
              base64_encode(reinterpret_cast<const unsigned char*>(record.data()), record.size()));
}

TEST(ParserHelper, AForeignReaderTakesTheRecordApart) {
    Example example;
    AddPlain(example.def, "load", AppDataType_Double);
    AddPlain(example.def, "up", AppDataType_Bool);
    CAppVariableValue root(&example.def, true, nullptr, nullptr, 10);
    Fill(root, "load", {"2"});
    Fill(root, "up", {"TRUE"});
    Fill(root, "routes.metric", {"-1", "none", "4294967296"});
    const auto command =
        std::string(TZ_PYTHON) +
        " -c 'import sys, json, msgpack\n"
        "record = bytes.fromhex(sys.argv[1])\n"
        "unpacker = msgpack.Unpacker(raw=False)\n"
        "unpacker.feed(record)\n"
        "objects = [unpacker.unpack() for _ in range(3)]\n"
        "start = unpacker.tell()\n"
        "objects.append(unpacker.unpack())\n"
        "at = [msgpack.Unpacker() for _ in objects[2][:-1]]\n"
        "for reader, offset in zip(at, objects[2]): reader.feed(record[start + offset:])\n"
        "print(json.dumps([objects, [reader.unpack() for reader in at]], "
        "separators=(\",\",\":\")))' " +
        Hex(Record(root, "kept"));
    std::string printed;
    std::array<char, 4096> piece;
    auto* const pipe = popen(command.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    while (std::fgets(piece.data(), static_cast<int>(piece.size()), pipe) != nullptr)
        printed += piece.data();
    EXPECT_EQ(pclose(pipe), 0);
    EXPECT_EQ(printed,
              "[[1,\"kept\",[1,2,3,12,[14,15]],"
              "[null,null,2.0,true,[null,[-1,null,4294967296]]]],[null,null,2.0,true]]\n");
}

TEST(ParserHelper, ElementsByTypeAndText) {
    struct Row {
        AppDataType_e type;
        std::string text;
        const char* data;
    };
    const auto text = [](std::size_t length) { return std::string(length, 'x'); };
    const auto texted = [](const char* header, std::size_t length) {
        std::string hex = header;
        for (std::size_t i = 0; i < length; ++i) hex += "78";
        return hex;
    };
    const Row rows[] = {
        {AppDataType_Int, "200", "ccc8"},
        {AppDataType_Int, "-1", "ff"},
        {AppDataType_Int, "12a", "0c"},
        {AppDataType_Int, " \t+7", "07"},
        {AppDataType_Int, "abc", "c0"},
        {AppDataType_Int, "", "c0"},
        {AppDataType_Int, "0x10", "00"},
        {AppDataType_Int, "-9223372036854775808", "d38000000000000000"},
        {AppDataType_Int, "9223372036854775807", "cf7fffffffffffffff"},
        {AppDataType_Int, "9223372036854775808", "c0"},
        {AppDataType_Double, "1.5ms", "cb3ff8000000000000"},
        {AppDataType_Double, "0x1p1", "cb4000000000000000"},
        {AppDataType_Double, "-inf", "cbfff0000000000000"},
        {AppDataType_Double, "1e999", "c0"},
        {AppDataType_Double, "1,5", "cb3ff0000000000000"},
        {AppDataType_Double, "n/a", "c0"},
        {AppDataType_Bool, "TRUE", "c3"},
        {AppDataType_Bool, "1", "c3"},
        {AppDataType_Bool, "False", "c2"},
        {AppDataType_Bool, "0", "c2"},
        {AppDataType_Bool, "yes", "c0"},
        {AppDataType_Bool, "true ", "c0"},
        {AppDataType_Bool, "01", "c0"},
        {AppDataType_String, "", "a0"},
        {AppDataType_String, std::string("\xFF\0a", 3), "a3ff0061"},
        {AppDataType_IP, "1", "a131"},
        {AppDataType_Percent, "1", "a131"},
        {AppDataType_Float, "1", "a131"},
        {AppDataType_None, "1", "a131"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.type) + " " + row.text);
        CAppVariableDef def(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "");
        AddPlain(def, "plain", row.type);
        auto* table = AddTable(def, "t");
        AddColumn(*table, "c", row.type);
        CAppVariableValue root(&def, true, nullptr, nullptr, 10);
        Fill(root, "plain", {row.text, "second"});
        Fill(root, "t.c", {row.text});
        const std::string data = row.data;
        const auto offset = static_cast<char>(2 + data.size() / 2);
        EXPECT_EQ(Hex(Record(root)),
                  "01a0920191" + Hex(std::string(1, offset)) + "92" + data + "9191" + data);
    }
    const std::pair<std::size_t, const char*> lengths[] = {
        {31, "bf"}, {32, "d920"}, {255, "d9ff"}, {256, "da0100"}, {65536, "db00010000"}};
    for (const auto& [length, header] : lengths) {
        CAppVariableDef def(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "");
        AddPlain(def, "s", AppDataType_String);
        CAppVariableValue root(&def, true, nullptr, nullptr, 10);
        Fill(root, "s", {text(length)});
        EXPECT_EQ(Hex(Record(root)), "01a0910191" + texted(header, length)) << length;
    }
}

TEST(ParserHelper, NodesWithoutValuesAndOfOtherKinds) {
    CAppVariableDef def(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "");
    def.InitBuiltInProperties();
    auto* first = AddTable(def, "first");
    AddColumn(*first, "a", AppDataType_Int);
    // A column that isn't of the array's class has no element type, so its cells are texts.
    AddPlain(*first, "b", AppDataType_Int);
    AddPlain(def, "x", AppDataType_Int);
    AddTable(def, "second");
    AddColumn(def, "list", AppDataType_Int);
    CAppVariableValue root(&def, true, nullptr, nullptr, 10);
    Fill(root, "first.b", {"7"});
    EXPECT_EQ(Hex(Record(root)),
              "01a0"
              "94"
              "01"
              "02"
              "92"
              "04"
              "05"
              "90"
              "94"
              "c0"
              "c0"
              "92"
              "c0"
              "91"
              "a137"
              "90");
    root.GetChildValueByName("first")->AddTableHashAndRowCountToProperty();
    EXPECT_EQ(Hex(Record(root)),
              "01a0"
              "94"
              "01"
              "02"
              "94"
              "04"
              "05"
              "08"
              "09"
              "90"
              "94"
              "c0"
              "c0"
              "94"
              "c0"
              "91"
              "a137"
              "01"
              "a0"
              "90");
}

TEST(ParserHelper, ColumnsOfAnyLength) {
    CAppVariableDef def(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "");
    AddColumn(def, "c", AppDataType_Int);
    const std::pair<std::size_t, const char*> counts[] = {
        {15, "9f"}, {16, "dc0010"}, {65535, "dcffff"}, {65536, "dd00010000"}};
    for (const auto& [count, header] : counts) {
        CAppVariableValue root(&def, true, nullptr, nullptr, 10);
        Fill(root, "c", std::vector<std::string>(count, "1"));
        std::string wanted = std::string("01a0910191") + header;
        for (std::size_t i = 0; i < count; ++i) wanted += "01";
        EXPECT_EQ(Hex(Record(root)), wanted) << count;
    }
}

TEST(ParserHelper, SchemaOfTheRows) {
    CAppVariableDef def(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "");
    EXPECT_EQ(Schema(def), "[]");
    def.InitBuiltInProperties();
    AddTable(def, "$t \t")->SetTableCmpSort(true);
    AddPlain(def, "\r\n$ a b $", AppDataType_Mac);
    AddColumn(def, "$list", AppDataType_Bool);
    auto* table = AddTable(def, "u");
    AddPlain(*table, "c", AppDataType_Int);
    const auto schema = ParseJson(Schema(def));
    std::string dump;
    for (const auto& element : schema)
        dump += element["name"].asString() + "/" + element["type"].asString() + "/" +
                element["index"].asString() + " ";
    EXPECT_EQ(dump,
              "a b/6/0 list/3/1 __allPosInfo/4/2 __allOriInfo/4/3 __allOriText/4/4 "
              "__allOriTextLineNums/4/5 __allExtendLineNums/4/6 t/11/7 u/11/8 ");
    EXPECT_EQ(schema[7].toString(),
              "{\"attributes\":[{\"index\":0,\"name\":\"_rowCount\",\"type\":1},"
              "{\"index\":1,\"name\":\"_hashCmp\",\"type\":4}],\"column\":[],"
              "\"hashColumns\":null,\"hashSort\":true,\"index\":7,\"name\":\"t\",\"type\":11}");
    EXPECT_EQ(schema[8]["column"].toString(), "[{\"index\":0,\"name\":\"c\",\"type\":0}]");
    EXPECT_EQ(schema[8]["attributes"][0]["index"].asInt(), 1);
}

TEST(ParserHelper, InfoOfARecord) {
    Example example;
    const auto record = Record(*example.root, "{\"a\":1}");
    std::string header;
    hxJson::Value offsets;
    int dataStart = 0;
    EXPECT_TRUE(CParserHelper::GetParserInfo(record, header, offsets, dataStart));
    EXPECT_EQ(header, "{\"a\":1}");
    EXPECT_EQ(offsets.toString(), "[1,7,[13,43]]");
    EXPECT_EQ(
        Hex(record).substr(2 * static_cast<std::size_t>(dataStart + 7)).rfind("ce00015180", 0), 0U);
    EXPECT_FALSE(CParserHelper::GetParserInfo("\x02", header, offsets, dataStart));
    EXPECT_EQ(header, "");
    EXPECT_TRUE(
        CParserHelper::GetParserInfo(Bytes("01 c4 01 61 81 01 02"), header, offsets, dataStart));
    EXPECT_EQ(header, "a") << "a header may be bytes";
    EXPECT_TRUE(offsets.isNull()) << "an index that isn't JSON is ignored";
    EXPECT_EQ(dataStart, 7);
}

std::string InfoFailure(const std::string& record) {
    std::string header = "kept";
    hxJson::Value offsets;
    int dataStart = 0;
    try {
        return CParserHelper::GetParserInfo(record, header, offsets, dataStart) ? "read"
                                                                                : "version";
    } catch (const msgpack::type_error&) {
        return header == "kept" ? "type" : "changed";
    } catch (const msgpack::insufficient_bytes&) {
        return "short";
    } catch (const msgpack::depth_size_overflow&) {
        return "depth";
    } catch (const msgpack::size_overflow&) {
        return "size";
    } catch (const msgpack::parse_error&) {
        return "parse";
    }
}

TEST(ParserHelper, MalformedRecords) {
    struct Row {
        const char* name;
        std::string record;
        const char* wanted;
    };
    const std::string deep(100000, '\x91');
    const std::string nested = std::string(999, '\x91') + '\x90';
    const Row rows[] = {
        {"nothing", "", "short"},
        {"a later version", Bytes("02 a0 90 90"), "version"},
        {"a negative version", Bytes("ff a0 90 90"), "version"},
        {"the largest version", Bytes("ce 7fffffff"), "version"},
        {"a version beyond 32 bits", Bytes("ce 80000000 a0 90 90"), "type"},
        {"a version beyond 32 bits below 0", Bytes("d3 ffffffff7fffffff"), "type"},
        {"a version that is a text", Bytes("a1 31"), "type"},
        {"a version that is a real", Bytes("ca 3f800000"), "type"},
        {"a version that is an array", Bytes("92 01 02"), "type"},
        {"a version that is half an array", Bytes("92 01"), "short"},
        {"no header", Bytes("01"), "short"},
        {"half a header", Bytes("01 a5 61"), "short"},
        {"a header of 4 GB", Bytes("01 db ffffffff 61"), "short"},
        {"a header that is a number", Bytes("01 01 90 90"), "type"},
        {"no index", Bytes("01 a0"), "short"},
        {"half an index", Bytes("01 a0 93 01 02"), "short"},
        {"half an element of the index", Bytes("01 a0 93 01 02 cf 01"), "short"},
        {"an index of 4 billion elements", Bytes("01 a0 dd ffffffff 01 02 03 04"), "size"},
        {"an index of 4 billion pairs", Bytes("01 a0 df ffffffff 01 02 03 04"), "size"},
        {"4 billion elements many times", Bytes("01 a0 95 dd 00000004 dd 00000004 dd 00000004"),
         "size"},
        {"an index with an unused byte", Bytes("01 a0 91 c1"), "parse"},
        {"an index as deep as may be", "\x01\xA0" + nested, "read"},
        {"an index one too deep", "\x01\xA0\x91" + nested, "depth"},
        {"an index 100,000 deep", "\x01\xA0" + deep, "depth"},
        {"a version 100,000 deep", deep, "depth"},
        {"no data", Bytes("01 a0 90"), "read"},
    };
    for (const auto& row : rows) EXPECT_EQ(InfoFailure(row.record), row.wanted) << row.name;
    Example example;
    const auto record = Record(*example.root, Schema(example.def));
    for (std::size_t length = 0; length < record.size(); ++length) {
        const auto failure = InfoFailure(record.substr(0, length));
        EXPECT_TRUE(failure == "short" || failure == "size" || failure == "read") << length;
        hxJson::Value value = 5;
        std::string error;
        if (CParserHelper::RecordToJson(record.substr(0, length), value, error)) {
            ADD_FAILURE() << length;
        }
        EXPECT_EQ(value.asInt(), 5);
        EXPECT_EQ(error.rfind("malformed record: ", 0), 0U) << error;
    }
}

TEST(ParserHelper, DeepTreesNeedNoStack) {
    CAppVariableDef def(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "");
    CAppVariableDef* node = &def;
    for (int depth = 0; depth < 100000; ++depth) {
        auto* table = new CAppVariableTableDef(node, "t", AppVariableType_Parser, "", false);
        ASSERT_TRUE(node->AddChildFront(table));
        node = table;
    }
    const CAppVariableValue root(&def, false, nullptr, nullptr, 10);
    const auto record = Record(root);
    EXPECT_EQ(record.size(), 2U + 2 * 100001);
    EXPECT_EQ(InfoFailure(record), "depth");
    hxJson::Value schema;
    EXPECT_TRUE(CParserHelper::GetParserStructure(def, schema));
    hxJson::Value value;
    std::string error;
    EXPECT_FALSE(CParserHelper::RecordToJson(record, value, error));
    EXPECT_EQ(error, "malformed record: too deep");
}

TEST(ParserHelper, TheLocaleOfTheHostDoesNotMatter) {
    struct Grouping : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\1"; }
    };
    Example example;
    const auto before = Record(*example.root);
    const auto old = std::locale::global(std::locale(std::locale::classic(), new Grouping));
    const auto record = Record(*example.root);
    std::string header;
    hxJson::Value offsets;
    int dataStart = 0;
    EXPECT_TRUE(CParserHelper::GetParserInfo(record, header, offsets, dataStart));
    std::locale::global(old);
    EXPECT_EQ(record, before);
    EXPECT_EQ(offsets.toString(), "[1,7,[13,43]]");
}

TEST(ParserHelper, ReadsOneVariable) {
    Example example;
    example.root->GetChildValueByName("routes")->AddTableHashAndRowCountToProperty();
    const auto hash =
        example.root->GetChildValueByName("routes")->GetProperties()[1]->GetVariableValue(0)->text;
    const auto record = Record(*example.root, Schema(example.def));
    const auto table = "{\"_hashCmp\":\"" + hash +
                       "\",\"_rowCount\":2,\"metric\":[10,200],"
                       "\"prefix\":[\"192.0.2.0/24\",\"198.51.100.0/24\"]}";
    const std::pair<const char*, std::string> rows[] = {
        {"host", "\"core1\""},
        {"uptime", "86400"},
        {"routes.metric", "[10,200]"},
        {"routes._rowCount", "2"},
        {"routes", table},
        {"$host", ""},
        {"routes.", ""},
        {"routes.none", ""},
        {"metric", ""},
        {"", ""},
    };
    for (const auto& [name, wanted] : rows) {
        hxJson::Value value;
        std::string error;
        EXPECT_EQ(CParserHelper::ReadVariable(record, name, value, error), wanted != "") << name;
        EXPECT_EQ(wanted.empty() ? "" : value.toString(), wanted) << name;
        EXPECT_EQ(error,
                  wanted.empty() ? "the record has no variable \"" + std::string(name) + "\"" : "");
    }
    hxJson::Value value;
    std::string error;
    EXPECT_TRUE(CParserHelper::RecordToJson(record, value, error));
    EXPECT_EQ(value.toString(), "{\"host\":\"core1\",\"routes\":" + table + ",\"uptime\":86400}");
}

TEST(ParserHelper, ReadsRecordsWhoseHeaderIsNoSchema) {
    Example example;
    const auto schema = ParseJson(Schema(example.def));
    hxJson::Value value;
    std::string error;
    for (const char* header : {"", "abc", "{}", "[1]", "[{\"name\":1}]"}) {
        const auto record = Record(*example.root, header);
        EXPECT_FALSE(CParserHelper::ReadVariable(record, "host", value, error));
        EXPECT_EQ(error, "the header of the record is no schema");
        EXPECT_TRUE(CParserHelper::ReadVariable(record, schema, "routes.metric", value, error));
        EXPECT_EQ(value.toString(), "[10,200]");
        EXPECT_TRUE(CParserHelper::RecordToJson(record, value, error));
        EXPECT_EQ(value.toString(),
                  "[\"core1\",86400,[[\"192.0.2.0/24\",\"198.51.100.0/24\"],[10,200]]]")
            << header;
    }
    const auto odd =
        Record(*example.root,
               "[{\"name\":\"host\"},{\"name\":\"uptime\"},{\"name\":\"routes\",\"column\":[],"
               "\"attributes\":[{\"name\":\"a\",\"column\":[]}]}]");
    EXPECT_TRUE(CParserHelper::ReadVariable(odd, "routes", value, error));
    EXPECT_TRUE(value.isArray()) << "an attribute that is a table";
    const auto record = Record(*example.root, "[{\"name\":\"only\"}]");
    EXPECT_TRUE(CParserHelper::RecordToJson(record, value, error)) << "a schema that doesn't fit";
    EXPECT_TRUE(value.isArray());
    EXPECT_FALSE(CParserHelper::ReadVariable(record, "only", value, error));
    EXPECT_FALSE(CParserHelper::ReadVariable("\x02", "x", value, error));
    EXPECT_EQ(error, "the record is of another version");
}

TEST(ParserHelper, RefusesWhatIsWrongInTheData) {
    const std::pair<const char*, const char*> rows[] = {
        {"91 05 91 01", "malformed record: an offset behind the end"},
        {"91 cf ffffffffffffffff 91 01", "malformed record: an offset behind the end"},
        {"91 ff 91 01", "malformed record: a part of another type"},
        {"91 01 91 80", "malformed record: a part of another type"},
        {"91 01 91 d4 01 01", "malformed record: a part of another type"},
        {"91 01 91 dd ffffffff", "malformed record: more elements than bytes"},
        {"91 01 91 db ffffffff", "malformed record: cut off"},
        {"94 01 01 01 01 94 93 01 02 03", "malformed record: elements overlap"},
        {"01 91 01", "malformed record: a part of another type"},
    };
    for (const auto& [parts, wanted] : rows) {
        hxJson::Value value;
        std::string error;
        EXPECT_FALSE(
            CParserHelper::RecordToJson(Bytes(std::string("01 a0 ") + parts), value, error));
        EXPECT_EQ(error, wanted) << parts;
    }
    std::string deep(5000, '\x91');
    hxJson::Value value;
    std::string error;
    EXPECT_FALSE(CParserHelper::RecordToJson("\x01\xA0\x91\x01" + deep, value, error));
    EXPECT_EQ(error, "malformed record: too deep");
}

TEST(ParserHelper, PropertiesMadeTwiceKeepTheirNames) {
    Example example;
    for (int round = 0; round < 2; ++round)
        EXPECT_TRUE(CParserHelper::ProcessAllInterfaceNameToFullName(example.root.get(), "", ""));
    hxJson::Value value;
    std::string error;
    const auto record = Record(*example.root, Schema(example.def));
    EXPECT_TRUE(CParserHelper::ReadVariable(record, "routes", value, error));
    EXPECT_EQ(value.getMemberNames(),
              (std::vector<std::string>{"_hashCmp", "_rowCount", "metric", "prefix"}));
}

TEST(ParserHelper, InterfaceNamesInFull) {
    const auto inventory = std::make_shared<CMemoryInventory>();
    std::string error;
    ASSERT_TRUE(inventory->Upsert("acme", {{"core1", "TenGigE0/0/0/1", "", -1}}, error)) << error;
    SetInventory(inventory);
    struct Row {
        const char* name;
        bool hasKeys;
        const char* device;
        const char* tenant;
        const char* wanted;
    };
    const Row rows[] = {
        {"all columns", true, "core1", "acme", "TenGigE0/0/0/1 TenGigE0/0/0/1   2"},
        {"no interface keys", false, "core1", "acme", "Te0/0/0/1 Te0/0/0/1   2"},
        {"no device", true, "", "acme", "Te0/0/0/1 Te0/0/0/1   2"},
        {"no tenant", true, "core1", "", "Te0/0/0/1 Te0/0/0/1   2"},
    };
    for (const auto& row : rows) {
        CAppVariableDef def(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "");
        AddPlain(def, "plain", AppDataType_Interface);
        auto* table = AddTable(def, "t");
        AddColumn(*table, "port", AppDataType_Interface);
        AddColumn(*table, "peer", AppDataType_String);
        if (row.hasKeys) table->AddIntefTableKey("port");
        CAppVariableValue root(&def, true, nullptr, nullptr, 10);
        Fill(root, "plain", {"Te0/0/0/1"});
        Fill(root, "t.port", {"Te0/0/0/1", ""});
        Fill(root, "t.peer", {"Te0/0/0/1", ""});
        EXPECT_TRUE(
            CParserHelper::ProcessAllInterfaceNameToFullName(&root, row.device, row.tenant));
        std::string dump;
        for (auto* column : root.GetChildValueByName("t")->GetChildValues())
            dump += column->GetVariableValue(0)->text + " ";
        for (auto* column : root.GetChildValueByName("t")->GetChildValues())
            dump += column->GetVariableValue(1)->text + " ";
        dump += root.GetChildValueByName("t")->GetProperties()[0]->GetVariableValue(0)->text;
        EXPECT_EQ(dump, row.wanted) << row.name;
        EXPECT_EQ(root.GetChildValueByName("plain")->GetVariableValue(0)->text, "Te0/0/0/1");
    }
    EXPECT_FALSE(CParserHelper::ProcessAllInterfaceNameToFullName(nullptr, "core1", "acme"));
    SetInventory(nullptr);
}

}  // namespace
