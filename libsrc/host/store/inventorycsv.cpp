#include "host/store/inventorycsv.h"

#include "host/store/iinventory.h"
#include "host/text/asciicase.h"

#include <charconv>
#include <exception>
#include <istream>
#include <streambuf>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t RowsATransaction = 10000;
constexpr std::size_t LongestRow = 65536;
constexpr int End = std::char_traits<char>::eof();

// Takes CSV text apart, row by row.
class CsvReader {
public:
    // Reads from where the stream stands; a byte order mark there is skipped.
    explicit CsvReader(std::streambuf& text);

    // The fields of the next row that isn't empty, in the memory of the former ones. False at the
    // end and on a fault.
    bool ReadRow(std::vector<std::string>& fields);
    // Empty at the end of the text.
    const std::string& Error() const { return m_error; }
    // The line on which the row read last begins.
    std::size_t RowLine() const { return m_rowLine; }

private:
    int Peek() { return m_text.sgetc(); }
    int Get();
    bool SkipEmptyLines();
    bool ReadField(std::string& field);
    bool ReadQuoted(std::string& field);
    bool TakeLineEnd();
    bool Fail(const char* error);

    std::streambuf& m_text;
    std::string m_error;
    std::size_t m_line = 1;
    std::size_t m_rowLine = 1;
    std::size_t m_rowLength = 0;
};

CsvReader::CsvReader(std::streambuf& text) : m_text(text) {
    for (const int byte : {0xEF, 0xBB, 0xBF})
        if (Peek() == byte) m_text.sbumpc();
}

bool CsvReader::ReadRow(std::vector<std::string>& fields) {
    if (!SkipEmptyLines()) return false;
    for (std::size_t count = 0;; ++count) {
        if (count == fields.size()) fields.emplace_back();
        fields[count].clear();
        if (!ReadField(fields[count])) return false;
        if (Peek() == ',') {
            Get();
        } else {
            fields.resize(count + 1);
            return TakeLineEnd() ? m_error.empty() : Fail("there is text behind a closing quote");
        }
    }
}

int CsvReader::Get() {
    const int byte = m_text.sbumpc();
    ++m_rowLength;
    if (byte == '\n') ++m_line;
    return byte;
}

bool CsvReader::SkipEmptyLines() {
    do {
        m_rowLine = m_line;
        m_rowLength = 0;
        if (Peek() == End) return false;
    } while (TakeLineEnd() && m_error.empty());
    return m_error.empty();
}

bool CsvReader::ReadField(std::string& field) {
    if (Peek() == '"') return ReadQuoted(field);
    for (int byte = Peek(); byte != ',' && byte != '\n' && byte != '\r' && byte != End;
         byte = Peek()) {
        if (byte == '"') return Fail("there is a quote inside a field that isn't quoted");
        if (m_rowLength >= LongestRow) return Fail("the row is longer than 64 KiB");
        field += std::char_traits<char>::to_char_type(Get());
    }
    return m_rowLength < LongestRow || Fail("the row is longer than 64 KiB");
}

bool CsvReader::ReadQuoted(std::string& field) {
    Get();
    while (m_rowLength < LongestRow) {
        const int byte = Get();
        if (byte == End) return Fail("a quote isn't closed");
        if (byte == '"' && Peek() != '"') return true;
        if (byte == '"') Get();
        field += std::char_traits<char>::to_char_type(byte);
    }
    return Fail("the row is longer than 64 KiB; is a quote not closed?");
}

// Whether the line ends here, or the text; takes the line end.
bool CsvReader::TakeLineEnd() {
    if (Peek() == End) return true;
    if (Peek() != '\n' && Peek() != '\r') return false;
    if (Get() == '\r' && Get() != '\n') Fail("a carriage return isn't followed by a line feed");
    return true;
}

bool CsvReader::Fail(const char* error) {
    m_error = error;
    return false;
}

// Which field of a row holds what.
struct Columns {
    static constexpr std::size_t None = static_cast<std::size_t>(-1);
    std::size_t device = None;
    std::size_t interfaceName = None;
    std::size_t ip = None;
    std::size_t count = 0;
};

struct ColumnName {
    std::string_view name;
    std::size_t Columns::*place;
    bool isNeeded;
};

constexpr ColumnName ColumnNames[] = {
    {"device", &Columns::device, true},
    {"interface", &Columns::interfaceName, true},
    {"ip", &Columns::ip, false},
};

bool ReadHeader(const std::vector<std::string>& fields, Columns& columns, std::string& error) {
    columns.count = fields.size();
    for (const ColumnName& column : ColumnNames) {
        std::size_t& place = columns.*column.place;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (!AsciiEqualIgnoreCase(fields[i], column.name)) continue;
            if (place != Columns::None) {
                error = "the column \"" + std::string(column.name) + "\" stands there twice";
                return false;
            }
            place = i;
        }
        if (column.isNeeded && place == Columns::None) {
            error = "the header names no column \"" + std::string(column.name) + "\"";
            return false;
        }
    }
    return true;
}

// An address, with or without "/" and a prefix length.
bool ReadAddress(std::string_view text, InventoryRow& row) {
    const std::size_t slash = text.find('/');
    row.address = std::string(text.substr(0, slash));
    row.prefixLength = -1;
    if (slash == std::string_view::npos) return true;
    const std::string_view length = text.substr(slash + 1);
    const char* const end = length.data() + length.size();
    const auto read = std::from_chars(length.data(), end, row.prefixLength);
    return read.ec == std::errc() && read.ptr == end && row.prefixLength >= 0 &&
           !row.address.empty();
}

bool ReadInventoryRow(const std::vector<std::string>& fields, const Columns& columns,
                      InventoryRow& row, std::string& error) {
    if (fields.size() != columns.count) {
        error = "there are " + std::to_string(fields.size()) + " fields where the header has " +
                std::to_string(columns.count);
        return false;
    }
    InventoryRow read;
    read.device = fields[columns.device];
    read.interfaceName = fields[columns.interfaceName];
    if (columns.ip != Columns::None && !ReadAddress(fields[columns.ip], read)) {
        error = "the ip is no address with a prefix length";
        return false;
    }
    return CanonicalRow(read, row, error);
}

class Import {
public:
    Import(IInventory& inventory, const std::string& tenant, InventoryCsvCounts& counts)
        : m_inventory(inventory), m_tenant(tenant), m_counts(counts) {}

    bool Run(std::streambuf& text, std::string& error);

private:
    bool ReadRows(CsvReader& reader, std::string& error);
    bool Commit(std::string& error);

    IInventory& m_inventory;
    const std::string& m_tenant;
    InventoryCsvCounts& m_counts;
    std::vector<InventoryRow> m_rows;
    std::size_t m_faultLine = 1;
    std::size_t m_firstLine = 1;  // of the rows that aren't committed
};

bool Import::Run(std::streambuf& text, std::string& error) {
    CsvReader reader(text);
    std::string fault;
    if (ReadRows(reader, fault)) return true;
    error = "line " + std::to_string(m_faultLine) + ": " + fault;
    return false;
}

bool Import::ReadRows(CsvReader& reader, std::string& error) {
    std::vector<std::string> fields;
    Columns columns;
    const bool hasHeader = reader.ReadRow(fields);
    m_faultLine = reader.RowLine();
    if (!hasHeader) {
        error = reader.Error().empty() ? "there is no header row" : reader.Error();
        return false;
    }
    if (!ReadHeader(fields, columns, error)) return false;
    while (reader.ReadRow(fields)) {
        m_faultLine = reader.RowLine();
        if (m_rows.empty()) m_firstLine = m_faultLine;
        if (!ReadInventoryRow(fields, columns, m_rows.emplace_back(), error)) return false;
        if (m_rows.size() == RowsATransaction && !Commit(error)) return false;
    }
    m_faultLine = reader.RowLine();
    error = reader.Error();
    return error.empty() && Commit(error);
}

bool Import::Commit(std::string& error) {
    if (m_rows.empty()) return true;
    if (!m_inventory.Upsert(m_tenant, m_rows, error)) {
        m_faultLine = m_firstLine;
        return false;
    }
    ++m_counts.transactions;
    m_counts.rows += m_rows.size();
    for (const InventoryRow& row : m_rows)
        if (!row.address.empty()) ++m_counts.addresses;
    m_rows.clear();
    return true;
}

}  // namespace

bool ImportInventoryCsv(IInventory& inventory, const std::string& tenant, std::istream& text,
                        std::string& error, InventoryCsvCounts& counts) {
    counts = InventoryCsvCounts();
    try {
        if (!text.good() || text.rdbuf() == nullptr) {
            error = "line 1: the text can't be read";
            return false;
        }
        return Import(inventory, tenant, counts).Run(*text.rdbuf(), error);
    } catch (const std::exception& exception) {
        error = std::string("line 1: the import broke off: ") + exception.what();
        return false;
    }
}
