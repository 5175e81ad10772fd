// The page of an explained parse, as far as it is made before a browser shows it: whatever bytes a
// device sends, they stay data. What is seen is tested in tests/browser.
#include "host/json/hxreader.h"
#include "host/json/hxvalue.h"

#include "explainpage.h"
#include "explainpageparts.h"

#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

std::string PageString(std::string_view bytes) {
    std::string out;
    AppendPageString(out, bytes);
    return out;
}

TEST(ExplainPage, BytesThatCouldLeaveTheDataAreEscaped) {
    const struct {
        const char* name;
        std::string bytes;
        std::string wanted;
    } rows[] = {
        {"plain", "R1#show", "\"R1#show\""},
        {"end of the element", "</script>", "\"\\u003c/script\\u003e\""},
        {"comment", "<!--&amp;", "\"\\u003c!--\\u0026amp;\""},
        {"quote and backslash", "a\"\\u0041", "\"a\\\"\\\\u0041\""},
        {"backslash before a byte", "\\\xE9", "\"\\\\\\udce9\""},
        {"NUL and controls", std::string("\0\x1B\n", 3), "\"\\u0000\\u001b\\n\""},
        {"line separators", "\xE2\x80\xA8\xE2\x80\xA9\xE2\x80\xAA",
         "\"\\u2028\\u2029\xE2\x80\xAA\""},
        {"no UTF-8", "\x80\xFF", "\"\\udc80\\udcff\""},
        {"UTF-8 of the same letter", "\xC3\xA9", "\"\xC3\xA9\""},
        {"a surrogate in bytes", "\xED\xB2\x80", "\"\\udced\\udcb2\\udc80\""},
        {"cut off", "a\xE2\x80", "\"a\\udce2\\udc80\""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(PageString(row.bytes), row.wanted);
    }
}

// The page without its fixed halves, through a pipe-like file as the program writes it.
std::string DataOf(const ExplainReport& report) {
    char name[] = "/tmp/explainpageXXXXXX";
    const int file = ::mkstemp(name);
    ::unlink(name);
    COutputWriter out(file);
    WriteExplainPage(report, {"d<.json", "t.txt"}, out);
    out.Finish();
    std::string page(static_cast<std::size_t>(::lseek(file, 0, SEEK_END)), '\0');
    EXPECT_EQ(::pread(file, &page[0], page.size(), 0), static_cast<ssize_t>(page.size()));
    ::close(file);
    EXPECT_EQ(page.compare(0, ExplainPageHead.size(), ExplainPageHead), 0);
    EXPECT_EQ(page.substr(page.size() - ExplainPageTail.size()), ExplainPageTail);
    return page.substr(ExplainPageHead.size(),
                       page.size() - ExplainPageHead.size() - ExplainPageTail.size());
}

ExplainValue ValueAt(int beginRow, int beginCol, int endRow, int endCol, const std::string& text) {
    ExplainValue value;
    value.name = "n";
    value.beginRow = beginRow;
    value.beginCol = beginCol;
    value.endRow = endRow;
    value.endCol = endCol;
    value.text = text;
    return value;
}

// The text of a value is repeated only where the lines don't have it.
TEST(ExplainPage, TextsThatStandInTheLinesAreLeftOut) {
    const struct {
        const char* name;
        ExplainValue value;
        bool isLeftOut;
    } rows[] = {
        {"in its place", ValueAt(0, 1, 0, 3, "bc"), true},
        {"over two lines", ValueAt(0, 2, 1, 1, "c\nd"), true},
        {"rewritten", ValueAt(0, 1, 0, 3, "xx"), false},
        {"longer than the place", ValueAt(0, 1, 0, 3, "bcd"), false},
        {"no place", ValueAt(0, 0, 0, 0, ""), false},
        {"behind the line", ValueAt(0, 7, 0, 9, "bc"), false},
        {"behind the text", ValueAt(5, 0, 5, 2, "bc"), false},
        {"negative", ValueAt(-1, -1, 0, 2, "ab"), false},
        {"negative column", ValueAt(0, -1, 0, 2, "ab"), false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ExplainReport report;
        report.lines = {"abc", "def"};
        report.values = {row.value};
        hxJson::Value data;
        ASSERT_TRUE(hxJson::Reader().parse(DataOf(report), data));
        EXPECT_EQ(data["values"][0u].size(), row.isLeftOut ? 8u : 9u);
        EXPECT_EQ(data["definition"].asString(), "d<.json");
    }
}

}  // namespace
