// How a row is cut into cells. The columns of the first rows begin at 0, 4 and 8.
#include "tablesupport.h"

#include <gtest/gtest.h>

namespace {

const TableRow LeftRows[] = {
    {"aligned; the last column takes the rest", "",
     "AA  BB  CC\n"
     "x   y   z w  ",
     "$a 1:0-1 'x'\n$b 1:4-5 'y'\n$c 1:8-11 'z w'\n"},
    {"the only token overruns, the next value is shifted", "",
     "AA  BB  CC\n"
     "xxxxx y z",
     "$a 1:0-5 'xxxxx'\n$b 1:6-7 'y'\n$c 1:8-9 'z'\n"},
    {"so does one in the middle", "",
     "AA  BB  CC\n"
     "x   yyyyy  z",
     "$a 1:0-1 'x'\n$b 1:4-9 'yyyyy'\n$c 1:11-12 'z'\n"},
    {"a token across the edge goes to the next column", "",
     "AA  BB  CC\n"
     "x   y wwww",
     "$a 1:0-1 'x'\n$b 1:4-5 'y'\n$c 1:6-10 'wwww'\n"},
    {"column 1 doesn't take it, and reads what follows", "",
     "AA  BB  CC\n"
     "x wwww  z",
     "$a 1:0-1 'x'\n$b 1:8-9 'z'\n$c 1:8-9 'z'\n"},
    {"column 1 takes it when it reaches the column behind", "",
     "AA  BB  CC\n"
     "x wwwwwww z",
     "$a 1:0-1 'x'\n$b 1:2-9 'wwwwwww'\n$c 1:10-11 'z'\n"},
    {"a token that ends at the edge stands in both cells", "",
     "AA  BB  CC\n"
     "x   y ww z",
     "$a 1:0-1 'x'\n$b 1:4-8 'y ww'\n$c 1:6-10 'ww z'\n"},
    {"a backslash ends a token as a blank does", "",
     "AA  BB  CC\n"
     "xxx\\y   z",
     "$a 1:0-4 'xxx\\'\n$b 1:4-5 'y'\n$c 1:8-9 'z'\n"},
    {"tabs count as one column", "",
     "AA  BB  CC\n"
     "x\t  y\t\t\tz",
     "$a 1:0-1 'x'\n$b 1:4-5 'y'\n$c 1:8-9 'z'\n"},
    {"the first column's token begins before it", "",
     "    AA  BB  CC\n"
     "  xxxx  y   z",
     "$a 1:2-6 'xxxx'\n$b 1:8-9 'y'\n$c 1:12-13 'z'\n"},
    {"a header in other letters has no column", "",
     "aa  BB  CC\n"
     "x   y   z",
     "$a 1:9-9 ''\n$b 1:4-5 'y'\n$c 1:8-9 'z'\n"},
    {"equal headers have the later one's place",
     R"("headers":"AA;BB;AA","headertovariables":"AA:$a;BB:$b")",
     "AA  BB  AA\n"
     "x   y   z",
     "$a 1:8-9 'z'\n$b 1:4-5 'y'\n"},
    {"empty cells keep their place in the line", "",
     "AA  BB  CC\n"
     "        z\n"
     "x",
     "$a 1:0-0 '' 2:0-1 'x'\n$b 1:4-4 '' 2:1-1 ''\n$c 1:8-9 'z' 2:1-1 ''\n"},
};

TEST(TableCells, Left) {
    CheckTables(LeftRows);
}

const TableRow MergeRows[] = {
    {"the next line goes on at a later column", "",
     "AA  BB  CC\n"
     "x   y\n"
     "        z\n"
     "x2  y2  z2",
     "$a 1:0-1 'x' 3:0-2 'x2'\n$b 1:4-5 'y' 3:4-6 'y2'\n$c 2:8-9 'z' 3:8-10 'z2'\n"},
    {"a long first value pushes the rest down", "",
     "AA  BB  CC\n"
     "xxxxxxxxxx\n"
     "    y   z",
     "$a 1:0-10 'xxxxxxxxxx'\n$b 2:4-5 'y'\n$c 2:8-9 'z'\n"},
    {"a line with a first value is a row of its own", "",
     "AA  BB  CC\n"
     "x\n"
     "q   y   z",
     "$a 1:0-1 'x' 2:0-1 'q'\n$b 1:1-1 '' 2:4-5 'y'\n$c 1:1-1 '' 2:8-9 'z'\n"},
    {"not over the end of the table", R"("endline":"y   z")",
     "AA  BB  CC\n"
     "x\n"
     "    y   z",
     "$a 1:0-1 'x'\n$b 1:1-1 ''\n$c 1:1-1 ''\n"},
    {"not over a line that is long enough", "",
     "AA  BB  CC\n"
     "x       z\n"
     "    y",
     "$a 1:0-1 'x' 2:0-0 ''\n$b 1:4-4 '' 2:4-5 'y'\n$c 1:8-9 'z' 2:5-5 ''\n"},
    {"only one line is taken over", "",
     "AA  BB  CC\n"
     "x\n"
     "    y\n"
     "        z",
     "$a 1:0-1 'x' 3:0-0 ''\n$b 2:4-5 'y' 3:4-4 ''\n$c 2:5-5 '' 3:8-9 'z'\n"},
    {"a backslash at the end goes with the blanks before it", "",
     "AA  BB  CC\n"
     "x   y   \\ \n"
     "        z\n"
     "\\",
     "$a 1:0-1 'x'\n$b 1:4-5 'y'\n$c 2:8-9 'z'\n"},
    {"columns without a variable take part", R"("headers":"AA;BB;CC","headertovariables":"CC:$c")",
     "AA  BB  CC\n"
     "x\n"
     "    y   z",
     "$c 2:8-9 'z'\n"},
};

TEST(TableCells, RowsThatGoOnInTheNextLine) {
    CheckTables(MergeRows);
}

// The headers end at 5, 11 and 17 and begin at 3, 9 and 15.
const TableRow RightRows[] = {
    {"aligned", R"("aligntype":"1")",
     "   AA    BB    CC\n"
     "    1     2     3",
     "$a 1:4-5 '1'\n$b 1:10-11 '2'\n$c 1:16-17 '3'\n"},
    {"a value beyond its edge is cut there", R"("aligntype":"1")",
     "   AA    BB    CC\n"
     "  1234567 2     3",
     "$a 1:2-5 '123'\n$b 1:10-11 '2'\n$c 1:16-17 '3'\n"},
    {"one that reaches the next header is longer by what stands before its own",
     R"("aligntype":"1")",
     "   AA    BB    CC\n"
     "  12345678 2    3",
     "$a 1:2-7 '12345'\n$b 1:11-12 '2'\n$c 1:11-17 '2    3'\n"},
    {"a shifted value that reaches the next header is one token", R"("aligntype":"1")",
     "   AA    BB    CC\n"
     "12345678901 222222  3",
     "$a 1:0-8 '12345678'\n$b 1:12-18 '222222'\n$c 1:12-21 '222222  3'\n"},
    {"a shifted value behind its edge takes the rest", R"("aligntype":"1")",
     "   AA    BB    CC\n"
     "  1234567890 22    3",
     "$a 1:2-9 '1234567'\n$b 1:13-20 '22    3'\n$c 1:13-20 '22    3'\n"},
    {"a row goes on in the next line", R"("aligntype":"1")",
     "   AA    BB    CC\n"
     "  12345678\n"
     "          2     3",
     "$a 1:2-7 '12345'\n$b 2:10-11 '2'\n$c 2:16-17 '3'\n"},
    {"a header without a place", R"("aligntype":"1")",
     "   aa    BB    CC\n"
     "    1     2     3",
     "$a 1:4-5 '1'\n$b 1:4-11 '1     2'\n$c 1:16-17 '3'\n"},
};

TEST(TableCells, Right) {
    CheckTables(RightRows);
}

const TableRow FixedRows[] = {
    {"the header's own places don't count", R"("aligntype":"2","alignrange":"0;4;8")",
     "AA BB CC\n"
     "x   y   z",
     "$a 1:0-1 'x'\n$b 1:4-5 'y'\n$c 1:8-9 'z'\n"},
    {"what is no number is 0", R"("aligntype":"2","alignrange":"0; x ;8")",
     "AA BB CC\n"
     "x   y   z",
     "$a 1:0-0 ''\n$b 1:0-5 'x   y'\n$c 1:8-9 'z'\n"},
    {"nothing behind the last semicolon is 0 too", R"("aligntype":"2","alignrange":"0;4;")",
     "AA BB CC\n"
     "x   y   z",
     "$a 1:0-1 'x'\n$b 1:4-4 ''\n$c 1:0-9 'x   y   z'\n"},
    {"below zero", R"("aligntype":"2","alignrange":"-5;4;-1")",
     "AA BB CC\n"
     "x   y   z",
     "$a\n$b\n$c\n"},
    {"a column below zero is empty", R"("aligntype":"2","alignrange":"-5;4;8")",
     "AA BB CC\n"
     "x   y   z",
     "$a 1:9-9 ''\n$b 1:4-5 'y'\n$c 1:8-9 'z'\n"},
    {"huge", R"("aligntype":"2","alignrange":"0;4;99999999999999999999")",
     "AA BB CC\n"
     "x   y   z",
     "$a 1:0-1 'x'\n$b 1:4-9 'y   z'\n$c 1:9-9 ''\n"},
    {"too few numbers", R"("aligntype":"2","alignrange":"0;4")",
     "AA BB CC\n"
     "x   y   z",
     "no table"},
    {"no numbers", R"("aligntype":"2")",
     "AA BB CC\n"
     "x   y   z",
     "no table"},
};

TEST(TableCells, Fixed) {
    CheckTables(FixedRows);
}

const TableRow TokenRows[] = {
    {"counts", R"("aligntype":"3","alignrange":"1;2;1")",
     "AA BB CC\n"
     "x y1 y2 z w",
     "$a 1:0-1 'x'\n$b 1:2-7 'y1 y2'\n$c 1:8-11 'z w'\n"},
    {"a row with too few tokens is none", R"("aligntype":"3","alignrange":"1;2;1")",
     "AA BB CC\n"
     "x y z\n"
     "x y1 y2 z",
     "$a 2:0-1 'x'\n$b 2:2-7 'y1 y2'\n$c 2:8-9 'z'\n"},
    {"the blank in front of an indented row counts as a token",
     R"("aligntype":"3","alignrange":"1;2;1")",
     "AA BB CC\n"
     " x y1 y2 z",
     "$a 1:0-0 ''\n$b 1:1-5 'x y1'\n$c 1:6-10 'y2 z'\n"},
    {"a column of no tokens shows the one that isn't taken",
     R"("aligntype":"3","alignrange":"1;0;1")",
     "AA BB CC\n"
     "x y",
     "$a 1:0-1 'x'\n$b 1:2-3 'y'\n$c 1:3-3 ''\n"},
    {"counts below zero and beyond the row", R"("aligntype":"3","alignrange":"5;-4;1")",
     "AA BB CC\n"
     "x y",
     "$a 1:0-3 'x y'\n$b 1:3-3 ''\n$c 1:3-3 ''\n"},
    {"huge counts", R"("aligntype":"3","alignrange":"2147483647;2147483647;2147483647")",
     "AA BB CC\n"
     "x y z",
     "$a\n$b\n$c\n"},
    {"counts that add up to little", R"("aligntype":"3","alignrange":"2147483647;-2147483648;1")",
     "AA BB CC\n"
     "x y z",
     "$a 1:0-5 'x y z'\n$b 1:5-5 ''\n$c 1:5-5 ''\n"},
};

TEST(TableCells, Tokens) {
    CheckTables(TokenRows);
}

const TableRow CarriedRows[] = {
    {"an empty cell repeats the row before", R"("isuseprevars":"1","useprevars":"$a;$b")",
     "AA  BB  CC\n"
     "x       z\n"
     "    y   z\n"
     "        z",
     "$a 1:0-1 'x' 2:0-1 'x' 3:0-1 'x'\n$b 1:4-4 '' 2:4-5 'y' 3:4-5 'y'\n"
     "$c 1:8-9 'z' 2:8-9 'z' 3:8-9 'z'\n"},
    {"only with the flag, which is a number", R"("isuseprevars":true,"useprevars":"$a")",
     "AA  BB  CC\n"
     "x       z\n"
     "        z",
     "$a 1:0-1 'x' 2:0-0 ''\n$b 1:4-4 '' 2:4-4 ''\n$c 1:8-9 'z' 2:8-9 'z'\n"},
    {"columns of one variable share what was before",
     R"("headers":"AA;BB;CC","headertovariables":"AA:$a;BB:$a;CC:$c","isuseprevars":"1",
        "useprevars":"$a")",
     "AA  BB  CC\n"
     "x   y   z\n"
     "        z",
     "$a 1:4-5 'y' 2:4-5 'y'\n$c 1:8-9 'z' 2:8-9 'z'\n"},
};

TEST(TableCells, CarriedValues) {
    CheckTables(CarriedRows);
}

TEST(TableCells, HostileLines) {
    const std::string nul("x\0  y   z", 9);
    EXPECT_EQ(ParseTable("", "AA  BB  CC\n" + nul),
              std::string("$a 1:0-2 'x\0'\n$b 1:4-5 'y'\n$c 1:8-9 'z'\n", 40));
    const std::string longText(1000000, 'x');
    for (const char* align : {"0", "1"}) {
        const auto keys = "\"aligntype\":\"" + std::string(align) + "\"";
        EXPECT_EQ(ParseTable(keys, "AA  BB  CC\n" + longText).substr(0, 10), "$a 1:0-100");
    }
    std::string bytes;
    for (int c = 0; c < 256; ++c) bytes += static_cast<char>(c);
    for (const char* keys : {"", R"("aligntype":"1")", R"("aligntype":"2","alignrange":"-9;3;300")",
                             R"("aligntype":"3","alignrange":"1;-1;2")"})
        EXPECT_NE(ParseTable(keys, "AA  BB  CC\n" + bytes + "\n" + bytes), "no table");
}

}  // namespace
