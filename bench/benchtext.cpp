#include "benchtext.h"

#include "host/json/hxjson.h"
#include "tzparser/engine/tzparser.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string_view>

namespace {

// A "#" in a line stands for a random digit.
constexpr std::array<std::string_view, 25> InterfaceBlock = {{
    "TenGigabitEthernet#/#/## is up, line protocol is up",
    "  Hardware is CRX Ten Gigabit, address is 0c4a.####.####",
    "  Description: link to core-## rack ## port ###",
    "  Internet address is 198.51.100.##/31",
    "  MTU 9### bytes, BW 10000000 Kbit/sec, DLY ## usec,",
    "     reliability 255/255, txload #/255, rxload #/255",
    "  Encapsulation ARPA, loopback not set",
    "  Keepalive set (## sec)",
    "  Full Duplex, 10000Mbps, link type is force-up, media type is LR",
    "  output flow-control is off, input flow-control is off",
    "  ARP type: ARPA, ARP Timeout 04:00:00",
    "  Last input 00:00:##, output 00:00:##, output hang never",
    "  Last clearing of the counters never",
    "  Input queue: #/375/##/# (size/max/drops/flushes)",
    "  Queueing strategy: fifo, output queue: #/40 (size/max)",
    "  5 minute input rate 8####### bits/sec, 4#### packets/sec",
    "  5 minute output rate 2####### bits/sec, 3#### packets/sec",
    "     9######### packets input, 7########### bytes, # no buffer",
    "     Received ###### broadcasts (0 IP multicasts)",
    "     # runts, # giants, # throttles",
    "     ## input errors, ## CRC, # frame, # overrun, # ignored",
    "     # watchdog, 6###### multicast, # pause input",
    "     8######### packets output, 5########### bytes, # underruns",
    "     # output errors, # collisions, ## interface resets",
    "     # lost carrier, # no carrier, # output buffer failures",
}};
constexpr std::string_view LastLine = "Total of 3999 interfaces shown";

// SplitMix64.
class CRandom {
public:
    char Digit() {
        std::uint64_t z = m_state += 0x9E3779B97F4A7C15U;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
        return static_cast<char>('0' + (z ^ (z >> 31)) % 10);
    }

private:
    std::uint64_t m_state = 20240530;
};

void AppendLine(std::string& text, std::string_view form, CRandom& random) {
    for (const char c : form) text.push_back(c == '#' ? random.Digit() : c);
    text.push_back('\n');
}

hxJson::Value RuleDocument(const BenchText::Statements& statements, const std::string& mark) {
    hxJson::Value document;
    auto& rule = document["parserule"].append(hxJson::Value());
    rule["type"] = 0;
    for (const auto& statement : statements)
        rule["keywords"]["keyword"].append(hxJson::Value(statement + mark));
    return document;
}

}  // namespace

namespace BenchText {

const std::string& Small() {
    static const std::string text =
        "Corvine NOS Software, CR4400 Platform, Version 7.4.2, Release build (fc3)\n"
        "Copyright (c) 2011-2024 by Corvine Networks, all rights reserved\n"
        "Compiled Tue 12-Mar-24 09:41 by release-builder\n"
        "\n"
        "Boot loader: CRBOOT 2.11, secure start enabled\n"
        "edge-router-17 uptime is 41 weeks, 3 days, 11 hours, 52 minutes\n"
        "System restarted at 03:17:44 UTC Thu May 30 2024\n"
        "System image file is \"bootflash:cr4400-nos-7.4.2.bin\"\n"
        "Last reload reason: power-on after maintenance window\n"
        "\n"
        "This product holds cryptographic features; local law may restrict its use.\n"
        "License level: advanced, license type: permanent, next reload level: advanced\n"
        "CR4400 (QC-8042) processor with 8388608K/131072K bytes of memory\n"
        "Processor board ID CRN24070412, motherboard revision 3\n"
        "4 Gigabit Ethernet interfaces, 2 Ten Gigabit Ethernet interfaces\n"
        "DRAM configuration is 72 bits wide with parity enabled\n"
        "1048576K bytes of non-volatile configuration memory\n"
        "15358976K bytes of flash memory at bootflash:\n"
        "Fan tray 1 is running at 4200 rpm, power supply 2 is absent\n"
        "Configuration register is 0x2102\n";
    return text;
}

const Statements& SmallStatements() {
    static const Statements statements = {
        "Software, $platform Platform, Version $version, Release",
        "^Boot loader: $loader $loader_version,",
        "^$hostname uptime is $mstring:uptime",
        "System image file is \"$image\"",
        "Last reload reason: $mstring:reload_reason",
        R"(regex[$model,$int:main_kb,$int:io_kb]:^(\S+) \([^)]*\) processor with (\d+)K/(\d+)K bytes)",
        "Processor board ID $serial,",
        "^$int:gigabit_ports Gigabit Ethernet interfaces, $int:ten_gigabit_ports Ten",
        "bits wide with parity $parity(enabled|disabled)",
        "Configuration register is $register",
    };
    return statements;
}

std::string Interfaces(std::size_t lines) {
    std::string text;
    text.reserve(lines * 52);
    CRandom random;
    for (std::size_t line = 0; line + 1 < lines; ++line)
        AppendLine(text, InterfaceBlock[line % InterfaceBlock.size()], random);
    return text.append(LastLine);
}

const std::string& Large() {
    static const std::string text = Interfaces(LargeLines);
    return text;
}

const Statements& EarlyStatements() {
    static const Statements statements = {
        "^$interface is $status, line protocol is $protocol",
        "Hardware is $mstring:hardware, address is $mac",
        "Description: $mstring:description",
        "Internet address is $address",
        "MTU $int:mtu bytes, BW $int:bandwidth Kbit/sec",
        "reliability $reliability, txload $txload, rxload $rxload",
        "Encapsulation $encapsulation, loopback $mstring:loopback",
        "link type is $link_type, media type is $media",
        "5 minute input rate $int:input_rate bits/sec",
        "$int:input_packets packets input, $int:input_bytes bytes",
        R"(regex[$int:errors,$int:crc]:(\d+) input errors, (\d+) CRC)",
        "$int:collisions collisions, $int:resets interface resets",
    };
    return statements;
}

const Statements& LateStatements() {
    static const Statements statements = {
        "^$interface is $status, line protocol is degraded",
        "Hardware is $mstring:hardware, address is $mac via $slot",
        "Description: $mstring:description (relayed)",
        "Internet address is $address secondary",
        "MTU $int:mtu bytes, BW $int:bandwidth Gbit/sec",
        "reliability $reliability, txload $txload, mgmtload $load",
        "Encapsulation $encapsulation, loopback by $mstring:loopback",
        "link type is $link_type, media type is absent since $since",
        "5 minute input rate $int:input_rate frames/sec",
        "$int:input_packets packets input, $int:input_bytes octets",
        R"(regex[$int:errors,$int:crc]:(\d+) input errors, (\d+) parity)",
        "Total of $int:interfaces interfaces shown",
    };
    return statements;
}

std::string Definition(std::size_t samples, const Statements& statements) {
    hxJson::Value definition;
    definition["accessType"] = 0;
    for (std::size_t sample = 0; sample < samples; ++sample) {
        const auto index = static_cast<int>(sample + 1);
        definition["sequences"].append(hxJson::Value(index));
        auto& element = definition["samples"].append(hxJson::Value());
        element["index"] = index;
        const auto mark = samples == 1 ? std::string() : " item " + std::to_string(index);
        element["parserRules"] = RuleDocument(statements, mark).toString();
    }
    return definition.toString();
}

std::unique_ptr<CTzParser> MakeParser(const Statements& statements) {
    auto parser = std::make_unique<CTzParser>();
    hxJson::Value definition;
    hxJson::Reader reader;
    if (!reader.parse(Definition(1, statements), definition) || !parser->SetParser(definition)) {
        std::cerr << "tzbench: a definition could not be loaded\n";
        std::exit(1);
    }
    return parser;
}

}  // namespace BenchText
