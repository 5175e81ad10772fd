#pragma once

// Fills an inventory from a list of interfaces as text, one a row (docs/inventory.md):
//
//     device,interface,ip
//     core1,GigabitEthernet0/1,192.0.2.1/24
//     core1,GigabitEthernet0/2,
//
//     std::ifstream file("interfaces.csv");
//     std::string error;
//     InventoryCsvCounts counts;
//     if (!ImportInventoryCsv(inventory, "acme", file, error, counts)) std::cerr << error << '\n';
//
// The text is CSV as RFC 4180 has it: fields in double quotes may hold commas, line ends and quotes
// written twice. Lines end in LF or CR LF, empty ones don't count, a UTF-8 byte order mark before
// the first is skipped. The first row names the columns, in any order and case: "device" and
// "interface" must be there, "ip" (an address, with or without "/" and a prefix length; may be
// empty) needn't, and others are skipped. Blanks belong to the fields.
//
// Safe on any thread, as far as the stream and the inventory are.

#include "host/runtime/tzexport.h"

#include <cstddef>
#include <iosfwd>
#include <string>

class IInventory;

// What stands in the inventory after an import, also after one that failed half-way.
struct InventoryCsvCounts {
    std::size_t rows = 0;          // rows imported, without the header
    std::size_t addresses = 0;     // those of them that name an address
    std::size_t transactions = 0;  // of at most 10,000 rows each
};

// Imports the whole stream. On the first fault the import stops with false, and `error` is "line ",
// the number of the line (from 1) on which the row begins, ": " and the fault. Where the inventory
// fails, that is the first row of the transaction. The transactions before it stay, and as rows
// that are there already do no harm, the mended text can be imported again as a whole. Rows are
// limited to 64 KiB. Needs memory for one transaction, not for the text.
TZPARSER_API bool ImportInventoryCsv(IInventory& inventory, const std::string& tenant,
                                     std::istream& text, std::string& error,
                                     InventoryCsvCounts& counts);
