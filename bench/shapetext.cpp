#include "shapetext.h"

#include "host/json/hxjson.h"
#include "tzparser/engine/tzparser.h"

#include <array>
#include <cstdlib>
#include <iostream>

namespace {

constexpr const char* TableRules = R"({"type": 3, "name": "ports",
  "headers": "Port;Name;Status;Vlan;Duplex;Speed;Type;Uptime",
  "headertovariables": "Port:$port;Name:$name;Status:$status;Vlan:$vlan;Duplex:$duplex;Speed:$speed;Type:$type;Uptime:$uptime",
  "aligntype": "0",
  "hashcolumns": ["port", "name", "status", "vlan", "duplex", "speed", "type", "uptime"]})";

constexpr const char* BlockRules = R"({"type": 4, "name": "interfaces",
  "startline": "^$name is $state, line protocol is",
  "child": {"parserule": [{"type": 0, "keywords": {"keyword": [
    "Hardware is $hardware, address is $mac", "Description: $description",
    "Internet address is $address", "MTU $int:mtu bytes, BW $int:bandwidth Kbit",
    "txload $txload, rxload $rxload", "input rate $int:rate_in bits", "output rate $int:rate_out bits"
  ]}}]}})";

constexpr const char* NestedRules = R"({"type": 4, "name": "neighbors",
  "startline": "^Neighbor $neighbor,",
  "child": {"parserule": [{"type": 0, "keywords": {"keyword": ["remote AS $int:asn"]}},
    {"type": 4, "name": "prefixes", "startline": "^  $prefix via",
     "child": {"parserule": [{"type": 0, "keywords": {"keyword": ["metric $int:metric"]}}]}}]}})";

// Decimal digits at least so many wide, blanks behind them.
std::string Padded(std::string text, std::size_t width) {
    if (text.size() < width) text.append(width - text.size(), ' ');
    return text;
}

std::string Number(std::size_t value) {
    return std::to_string(value);
}

std::string DistinctLine(std::size_t line) {
    const auto number = Number(1000000 + line);
    return "ip route vrf v" + number + " 198.51.100.0 255.255.255.0 192.0.2.1";
}

std::string Address(std::size_t value) {
    return "10." + Number(value / 65536 % 256) + "." + Number(value / 256 % 256) + "." +
           Number(value % 256);
}

void AppendBlock(std::string& text, std::size_t block) {
    text += "TenGigabitEthernet" + Number(block / 48) + "/" + Number(block % 48) +
            " is up, line protocol is up\n"
            "  Hardware is CRX Ten Gigabit, address is 0000.5e00.53" +
            Number(10 + block % 90) + "\n  Description: link to core-" + Number(block) +
            "\n  Internet address is " + Address(block) + "/31\n  MTU " + Number(1500 + block % 7) +
            " bytes, BW " + Number(10000 + block) +
            " Kbit/sec, DLY 10 usec,\n"
            "     reliability 255/255, txload " +
            Number(block % 255) + "/255, rxload 1/255" +
            "\n  Encapsulation ARPA, loopback not set\n  Keepalive set (10 sec)\n"
            "  Full Duplex, 10000Mbps, link type is force-up\n"
            "  Last input 00:00:01, output 00:00:02, output hang never\n"
            "  5 minute input rate " +
            Number(block * 13) + " bits/sec, 40 packets/sec\n  5 minute output rate " +
            Number(block * 17) +
            " bits/sec, 30 packets/sec\n"
            "     17 packets input, 900 bytes, 0 no buffer\n"
            "     0 runts, 0 giants, 0 throttles\n";
}

std::unique_ptr<CTzParser> MakeParser(const std::string& rules) {
    auto parser = std::make_unique<CTzParser>();
    hxJson::Value definition;
    hxJson::Reader reader;
    const auto document = R"({"sequences": [1], "samples": [{"index": 1, "parserRules":
        {"parserule": [)" +
                          rules + "]}}]}";
    if (!reader.parse(document, definition) || !parser->SetParser(definition)) {
        std::cerr << "tzbench: a definition could not be loaded\n";
        std::exit(1);
    }
    return parser;
}

}  // namespace

namespace ShapeText {

std::string Table(std::size_t rows) {
    constexpr std::array<std::size_t, TableColumns> widths = {10, 20, 13, 11, 8, 7, 18, 8};
    constexpr std::array<const char*, TableColumns> headers = {
        "Port", "Name", "Status", "Vlan", "Duplex", "Speed", "Type", "Uptime"};
    std::string text;
    for (std::size_t i = 0; i < TableColumns; ++i) text += Padded(headers[i], widths[i]);
    for (std::size_t row = 0; row < rows; ++row) {
        const auto name = (row % 50 == 0 ? "a-long-name-of-port-" : "link-") + Number(row);
        const std::array<std::string, TableColumns> cells = {
            "Gi" + Number(row / 48) + "/" + Number(row % 48),
            name,
            row % 3 == 0 ? "notconnect" : "connected",
            row % 5 == 0 ? "trunk" : Number(row % 4094),
            "a-full",
            "a-1000",
            "10/100/1000BaseTX",
            Number(row % 1000) + "d"};
        text += '\n';
        for (std::size_t i = 0; i < TableColumns; ++i) text += Padded(cells[i], widths[i]);
    }
    return text + '\n';
}

std::string Blocks(std::size_t blocks) {
    std::string text;
    for (std::size_t block = 0; block < blocks; ++block) AppendBlock(text, block);
    return text;
}

std::string Nested(std::size_t outer, std::size_t inner) {
    std::string text;
    for (std::size_t neighbor = 0; neighbor < outer; ++neighbor) {
        text += "Neighbor " + Address(neighbor) + ", remote AS " + Number(64496 + neighbor % 16);
        for (std::size_t prefix = 0; prefix < inner; ++prefix)
            text += "\n  " + Address(prefix) + "/32 via eth0 metric " + Number(prefix);
        text += '\n';
    }
    return text;
}

std::unique_ptr<CTzParser> TableParser() {
    return MakeParser(TableRules);
}

std::unique_ptr<CTzParser> BlockParser() {
    return MakeParser(BlockRules);
}

std::unique_ptr<CTzParser> NestedParser() {
    return MakeParser(NestedRules);
}

std::unique_ptr<CTzParser> FilterParser() {
    hxJson::Value rule;
    rule["type"] = 1;
    rule["name"] = "kept";
    rule["filterloop"] = true;
    auto& patterns = rule["includelines"]["includeline"];
    for (const char* line : {"regex:^  Description: ", "regex: line protocol is up$"})
        patterns.append(hxJson::Value(line));
    for (std::size_t i = 2; i < FilterPatterns; ++i)
        patterns.append(hxJson::Value("regex:^  Counter " + Number(i) + " of \\S+ is \\d+"));
    return MakeParser(rule.toString());
}

std::string Distinct(std::size_t lines) {
    std::string text;
    for (std::size_t line = 0; line < lines; ++line) text += DistinctLine(line) + '\n';
    return text;
}

std::unique_ptr<CTzParser> TextParser(std::size_t records) {
    hxJson::Value rules(hxJson::objectValue);
    rules["type"] = 15;
    rules["name"] = "found";
    for (std::size_t i = 0; i < records; ++i) {
        auto& record = rules["lines"].append(hxJson::Value());
        record["row"] = static_cast<int>(i);
        record["text"] = DistinctLine(i) + (i % 2 == 0 ? "" : " tag 7");
    }
    return MakeParser(rules.toString());
}

std::unique_ptr<CTzParser> ReaderParser() {
    return MakeParser(R"({"type": 2, "name": "read"})");
}

}  // namespace ShapeText
