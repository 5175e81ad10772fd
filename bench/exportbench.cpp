// Exports of a table of 100 thousand rows and ten columns, five of them numbers, against a plain
// loop over the packer of the msgpack library; its hash, against the digest of the same bytes at
// once; and reading one variable out of a record of 50 MB.
#include "host/runtime/tznoncryptographicchecksum.h"
#include "tzparser/engine/parserhelper.h"
#include "tzparser/engine/tzparser.h"
#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appvariablearraydef.h"
#include "tzparser/variable/appvariabletabledef.h"

#include "ratiotable.h"
#include "shapetext.h"

#include <cstdlib>
#include <memory>
#include <set>
#include <string>

#include <benchmark/benchmark.h>
#include <msgpack/pack.hpp>
#include <msgpack/sbuffer.hpp>

namespace {

constexpr std::size_t Rows = 100000;
constexpr std::size_t Columns = 10;

bool IsNumber(std::size_t column) {
    return column % 2 == 1;
}

// Cells as a routing table has them.
std::string Cell(std::size_t row, std::size_t column) {
    if (IsNumber(column)) return std::to_string(row * (column + 7) % 1000003);
    return "198.51." + std::to_string(row % 256) + "." + std::to_string(column) + "/32";
}

struct Table {
    CAppVariableDef def{nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, ""};
    std::unique_ptr<CAppVariableValue> root;
    std::string schema;
    std::string record;

    explicit Table(std::size_t rows) {
        auto uptime = std::make_unique<CAppVariableDef>(&def, "uptime", AppDataType_Int,
                                                        AppVariableType_Parser, "");
        if (def.AddChild(uptime.get())) uptime.release();
        auto table = std::make_unique<CAppVariableTableDef>(&def, "routes", AppVariableType_Parser,
                                                            "", false);
        std::set<std::string> names;
        for (std::size_t column = 0; column < Columns; ++column) {
            const auto name = "column" + std::to_string(column);
            auto node = std::make_unique<CAppVariableArrayDef>(table.get(), name,
                                                               AppVariableType_Parser, "");
            node->SetBaseType(IsNumber(column) ? AppDataType_Int : AppDataType_String);
            if (table->AddChild(node.get())) node.release();
            names.insert(name);
        }
        table->SetTableCmpColumns(names);
        if (def.AddChild(table.get())) table.release();
        root = std::make_unique<CAppVariableValue>(&def, false, nullptr, nullptr, 5000);
        root->GetChildValueByName("uptime")->GetValues().emplace_back("86400");
        const auto columns = root->GetChildValueByName("routes")->GetChildValues();
        for (std::size_t column = 0; column < Columns; ++column)
            for (std::size_t row = 0; row < rows; ++row)
                columns[column]->GetValues().emplace_back(Cell(row, column));
        hxJson::Value document;
        CParserHelper::GetParserStructure(def, document);
        schema = document.toString();
        CParserHelper::GetParserData(*root, schema, record, "", "");
    }

    CAppVariableValue& Routes() const { return *root->GetChildValueByName("routes"); }
};

const Table& Large() {
    static const Table table(Rows);
    return table;
}

void SetBytes(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

void ExportTable(benchmark::State& state) {
    const auto& table = Large();
    std::string record;
    for (auto _ : state) {
        CParserHelper::GetParserData(*table.root, table.schema, record, "", "");
        benchmark::DoNotOptimize(record.data());
    }
    SetBytes(state, table.record.size());
}

// Packs the same cells, without an index, a tree or a look at types.
void ExportPlain(benchmark::State& state) {
    static const Table small(Rows / 100);
    const bool isLarge = static_cast<std::size_t>(state.range(0)) == Rows;
    const auto& table = isLarge ? Large() : small;
    const auto columns = table.Routes().GetChildValues();
    for (auto _ : state) {
        msgpack::sbuffer buffer;
        msgpack::packer<msgpack::sbuffer> packer(buffer);
        for (std::size_t column = 0; column < Columns; ++column) {
            const auto& lets = columns[column]->GetValues();
            packer.pack_array(static_cast<std::uint32_t>(lets.size()));
            for (const auto& let : lets) {
                if (IsNumber(column)) {
                    packer.pack_int64(std::strtoll(let.text.c_str(), nullptr, 10));
                    continue;
                }
                packer.pack_str(static_cast<std::uint32_t>(let.text.size()));
                packer.pack_str_body(let.text.data(), static_cast<std::uint32_t>(let.text.size()));
            }
        }
        benchmark::DoNotOptimize(buffer.data());
    }
    SetBytes(state, table.record.size());
    state.SetItemsProcessed(state.iterations() * state.range(0) *
                            static_cast<std::int64_t>(Columns));
}

std::string HashedBytes() {
    const auto columns = Large().Routes().GetChildValues();
    std::string bytes;
    for (std::size_t row = 0; row < Rows; ++row) {
        for (auto* column : columns) bytes += column->GetValues()[row].text + ",";
        bytes += "\n";
    }
    return bytes;
}

void HashTable(benchmark::State& state) {
    const auto& table = Large();
    for (auto _ : state) benchmark::DoNotOptimize(table.Routes().GenerateTableHash());
    SetBytes(state, HashedBytes().size());
}

void HashPlain(benchmark::State& state) {
    const auto bytes = HashedBytes();
    for (auto _ : state)
        benchmark::DoNotOptimize(
            CTzNonCryptographicChecksum::GetChecksum(bytes.data(), bytes.size()));
    SetBytes(state, bytes.size());
}

void ReadOneVariable(benchmark::State& state) {
    static const std::string record = Table(500000).record;
    hxJson::Value value;
    std::string error;
    for (auto _ : state) {
        if (!CParserHelper::ReadVariable(record, "uptime", value, error)) std::abort();
        benchmark::DoNotOptimize(value.asInt());
    }
    state.SetLabel(std::to_string(record.size() / 1000000) + " MB");
}

void ReadWholeRecord(benchmark::State& state) {
    hxJson::Value value;
    std::string error;
    for (auto _ : state) {
        if (!CParserHelper::RecordToJson(Large().record, value, error)) std::abort();
        benchmark::DoNotOptimize(&value);
    }
    SetBytes(state, Large().record.size());
}

// A table as a parse gives it: places in the text, of which nobody has asked for the lets.
struct ParsedTable {
    std::unique_ptr<CTzParser> parser = ShapeText::TableParser();
    std::shared_ptr<CAppVariableValue> root;
    std::string schema;

    explicit ParsedTable(std::size_t rows) {
        std::string error;
        root = parser->Parse(ShapeText::Table(rows), error);
        hxJson::Value document;
        CParserHelper::GetParserStructure(*parser->GetVariableTree(), document);
        schema = document.toString();
    }
};

void SetCells(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0) *
                            static_cast<std::int64_t>(ShapeText::TableColumns));
}

void ExportParsed(benchmark::State& state) {
    const ParsedTable table(static_cast<std::size_t>(state.range(0)));
    std::string record;
    for (auto _ : state) {
        CParserHelper::GetParserData(*table.root, table.schema, record, "", "");
        benchmark::DoNotOptimize(record.data());
    }
    SetBytes(state, record.size());
    SetCells(state);
}

void HashParsed(benchmark::State& state) {
    const ParsedTable table(static_cast<std::size_t>(state.range(0)));
    const auto* ports = table.root->GetChildValueByName("ports");
    for (auto _ : state) benchmark::DoNotOptimize(ports->GenerateTableHash());
    SetCells(state);
}

BENCHMARK(ExportTable)->Unit(benchmark::kMillisecond);
BENCHMARK(ExportParsed)->Arg(Rows / 100)->Arg(Rows)->Unit(benchmark::kMillisecond);
BENCHMARK(HashParsed)->Arg(Rows / 100)->Arg(Rows)->Unit(benchmark::kMillisecond);
BENCHMARK(ExportPlain)->Arg(Rows / 100)->Arg(Rows)->Unit(benchmark::kMillisecond);
BENCHMARK(HashTable)->Unit(benchmark::kMillisecond);
BENCHMARK(HashPlain)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadOneVariable)->Unit(benchmark::kMicrosecond);
BENCHMARK(ReadWholeRecord)->Unit(benchmark::kMillisecond);

const bool rows = CRatioTable::Add({
    {"export of 100,000 rows x 10, to a plain packing loop",
     "ExportTable",
     "ExportPlain/100000",
     RatioMeasure_Megabytes,
     {RatioAim::Ratio, '>', 0.8}},
    {"hash of 100,000 rows x 10, to the digest of its bytes at once",
     "HashTable",
     "HashPlain",
     RatioMeasure_Megabytes,
     {}},
    {"export: a cell of 100 thousand rows, to one of 1 thousand",
     "ExportParsed/100000",
     "ExportParsed/1000",
     RatioMeasure_Nanoseconds,
     {RatioAim::Ratio, '<', 1.1}},
    {"the plain packing: a cell of 100 thousand rows, to one of 1 thousand",
     "ExportPlain/100000",
     "ExportPlain/1000",
     RatioMeasure_Nanoseconds,
     {}},
    {"hash: a cell of 100 thousand rows, to one of 1 thousand",
     "HashParsed/100000",
     "HashParsed/1000",
     RatioMeasure_Nanoseconds,
     {RatioAim::Ratio, '<', 1.1}},
});

}  // namespace
