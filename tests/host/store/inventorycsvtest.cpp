#include "host/store/failinginventory.h"
#include "host/store/iinventory.h"
#include "host/store/inventorycsv.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

// Keeps what is given to it as text and fails from the given transaction on.
class WritingInventory : public CFailingInventory {
public:
    explicit WritingInventory(int good) : CFailingInventory("disk full"), m_good(good) {}

    bool Upsert(const std::string& tenant, const std::vector<InventoryRow>& rows,
                std::string& error) override {
        if (m_good-- <= 0) return CFailingInventory::Upsert(tenant, rows, error);
        m_sizes.push_back(rows.size());
        for (const InventoryRow& row : rows)
            m_written += row.device + "|" + row.interfaceName + "|" + row.address + "|" +
                         std::to_string(row.prefixLength) + ";";
        return true;
    }

    std::string m_written;
    std::vector<std::size_t> m_sizes;

private:
    int m_good;
};

TEST(InventoryCsv, ReadsTexts) {
    const std::string header = "device,interface,ip\n";
    const struct {
        const char* name;
        std::string text;
        const char* wanted;  // the rows, or what is wrong
    } rows[] = {
        {"with and without address", header + "a,Gi0/1,192.0.2.1/24\na,Gi0/2,\na,Gi0/3,192.0.2.2",
         "a|Gi0/1|192.0.2.1|24;a|Gi0/2||-1;a|Gi0/3|192.0.2.2|-1;"},
        {"CR LF, byte order mark, empty lines",
         "\xEF\xBB\xBF\r\nDevice,Interface,IP\r\n\r\na,b,192.0.2.1/32\r\n\r\n",
         "a|b|192.0.2.1|32;"},
        {"columns in another order, others skipped", "ip,x,INTERFACE,device\n,7,b,a\n", "a|b||-1;"},
        {"no column of addresses", "interface,device\nb,a\n", "a|b||-1;"},
        {"quotes", header + "\"a,1\",\"b \"\"x\"\"\",\"2001:DB8::1/64\"\r\n",
         "a,1|b \"x\"|2001:db8::1|64;"},
        {"IPv4 inside IPv6", header + "a,b,::ffff:192.0.2.1/120\n", "a|b|192.0.2.1|24;"},
        {"only a header", header, ""},
        {"bytes that aren't UTF-8", header + "\xE9,b,\n", "\xE9|b||-1;"},
        {"empty text", "", "line 1: there is no header row"},
        {"no header", "a,Gi0/1,192.0.2.1\n", "line 1: the header names no column \"device\""},
        {"column twice", "device,interface,Device\n",
         "line 1: the column \"device\" stands there twice"},
        {"too few fields", header + "a,b,\n\na,b\n",
         "line 4: there are 2 fields where the header has 3"},
        {"too many fields", header + "a,b,,\n",
         "line 2: there are 4 fields where the header has 3"},
        {"no address", header + "a,b,192.0.2.256\n",
         "line 2: the address is neither IPv4 nor IPv6"},
        {"length too long", header + "a,b,192.0.2.1/33\n",
         "line 2: the prefix length doesn't fit the address"},
        {"length no number", header + "a,b,192.0.2.1/2x\n",
         "line 2: the ip is no address with a prefix length"},
        {"length negative", header + "a,b,192.0.2.1/-1\n",
         "line 2: the ip is no address with a prefix length"},
        {"length out of range", header + "a,b,192.0.2.1/99999999999\n",
         "line 2: the ip is no address with a prefix length"},
        {"empty device", header + ",b,\n", "line 2: the device is empty"},
        {"line end inside a name", header + "a,\"b\nc\",\n",
         "line 2: the interface name holds a control character"},
        {"lines inside quotes count", header.substr(0, 19) + ",\"x\ny\"\na,b,,\na,b\n",
         "line 4: there are 2 fields where the header has 4"},
        {"NUL", header + std::string("a\0,b,\n", 6),
         "line 2: the device holds a control character"},
        {"name too long", header + "a," + std::string(257, 'x') + ",\n",
         "line 2: the interface name is longer than 256 bytes"},
        {"text behind a quote", header + "\"a\"x,b,\n",
         "line 2: there is text behind a closing quote"},
        {"quote inside", header + "a\"x,b,\n",
         "line 2: there is a quote inside a field that isn't quoted"},
        {"quote not closed", header + "a,b,\n\"a,b,\n", "line 3: a quote isn't closed"},
        {"lone CR", header + "a,b\rc,\n",
         "line 2: a carriage return isn't followed by a line feed"},
        {"endless row", header + std::string(100000, 'x'), "line 2: the row is longer than 64 KiB"},
        {"endless fields", header + std::string(100000, ','),
         "line 2: the row is longer than 64 KiB"},
        {"endless quote", header + "\"" + std::string(100000, '\n'),
         "line 2: the row is longer than 64 KiB; is a quote not closed?"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WritingInventory inventory(1);
        std::istringstream text(row.text);
        std::string result;
        InventoryCsvCounts counts;
        const bool done = ImportInventoryCsv(inventory, "acme", text, result, counts);
        EXPECT_EQ(done, result.empty());
        EXPECT_EQ(done ? inventory.m_written : result, row.wanted);
        EXPECT_EQ(counts.transactions, inventory.m_sizes.size());
    }
}

TEST(InventoryCsv, CommitsEveryTenThousandRows) {
    std::string text = "device,interface,ip\n";
    for (int i = 0; i < 20001; ++i)
        text += "a,Gi0/" + std::to_string(i) + (i % 2 ? ",\n" : ",::1\n");
    std::istringstream good(text);
    std::string error;
    InventoryCsvCounts counts;
    WritingInventory inventory(9);
    EXPECT_TRUE(ImportInventoryCsv(inventory, "acme", good, error, counts)) << error;
    EXPECT_EQ(inventory.m_sizes, (std::vector<std::size_t>{10000, 10000, 1}));
    EXPECT_EQ(counts.rows, 20001U);
    EXPECT_EQ(counts.addresses, 10001U);

    std::istringstream broken(text + "a\n");
    EXPECT_FALSE(ImportInventoryCsv(inventory, "acme", broken, error, counts));
    EXPECT_EQ(error, "line 20003: there are 1 fields where the header has 3");
    EXPECT_EQ(counts.rows, 20000U);

    WritingInventory failing(1);
    std::istringstream again(text);
    EXPECT_FALSE(ImportInventoryCsv(failing, "acme", again, error, counts));
    EXPECT_EQ(error, "line 10002: disk full");
    EXPECT_EQ(counts.rows, 10000U);
    EXPECT_EQ(counts.transactions, 1U);
}

TEST(InventoryCsv, AStreamThatCantBeRead) {
    WritingInventory inventory(1);
    std::istringstream text("device,interface\n");
    text.setstate(std::ios::failbit);
    std::string error;
    InventoryCsvCounts counts;
    EXPECT_FALSE(ImportInventoryCsv(inventory, "acme", text, error, counts));
    EXPECT_EQ(error, "line 1: the text can't be read");
}

}  // namespace
