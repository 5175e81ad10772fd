#include "host/xml/markup.h"

#include <algorithm>
#include <climits>
#include <string>

#include <gtest/gtest.h>

namespace {

using std::string_literals::operator""s;

const std::string Declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

std::string Nested(int depth) {
    std::string text;
    for (int i = 0; i < depth; ++i) text += "<a>";
    for (int i = 0; i < depth; ++i) text += "</a>";
    return text;
}

std::string Quoted(const std::string& text) {
    return "[" + text + "]";
}

// Runs a row of cursor moves and tells where each ends. "f" and a name finds, "i" goes in, "o" out,
// "r" to the start of the level, "R" to the start of the document, "d" gives the data and "d" with
// a name a child's data.
std::string Walk(CMarkup& xml, const std::string& moves) {
    std::string dump;
    std::size_t pos = 0;
    while (pos < moves.size()) {
        const std::size_t end = std::min(moves.find(' ', pos), moves.size());
        const std::string name = moves.substr(pos + 1, end - pos - 1);
        std::string data;
        switch (moves[pos]) {
            case 'f':
                dump += xml.FindElem(name) ? '+' : '-';
                break;
            case 'i':
                dump += xml.IntoElem() ? '+' : '-';
                break;
            case 'o':
                dump += xml.OutOfElem() ? '+' : '-';
                break;
            case 'r':
                xml.ResetChildPos();
                break;
            case 'R':
                xml.ResetPos();
                break;
            default:
                if (name.empty())
                    dump += Quoted(xml.GetData());
                else
                    dump += xml.GetData(name, data) ? Quoted(data) : "-";
        }
        pos = end + 1;
    }
    return dump;
}

TEST(CMarkup, Cursor) {
    const std::string rules =
        "<rules>\n  <type>4</type>\n  <rule><type>1</type></rule>\n"
        "  <rule><type>2</type><child/></rule>\n  <end>e</end>\n</rules>";
    const struct {
        const char* name;
        std::string text;
        std::string moves;
        std::string wanted;
    } rows[] = {
        {"starts before the root", rules, "d f d f", "[]+[]-"},
        {"into needs a current element, out a level", rules, "i o f i i o o", "--++-+-"},
        {"find goes on behind the current element", rules, "f i frule dtype frule dtype frule",
         "+++[1]+[2]-"},
        {"a failed find stays", rules, "f i frule fnone dtype fend d", "+++-[1]+[e]"},
        {"find passes what has another name", rules, "f i fend frule r frule", "+++-+"},
        {"any name", rules, "f i f d f f f d f", "+++[4]+++[e]-"},
        {"out makes the parent current", rules, "f i frule i f o dtype frule dtype",
         "++++++[1]+[2]"},
        {"data by name before and behind into", rules, "f dtype i dtype frule dtype r dtype",
         "+[4]+[4]+[1][4]"},
        {"data by name leaves the cursor", rules, "f i dtype dtype frule dnone dtype",
         "++[4][4]+-[1]"},
        {"data of the element entered", "<r><c>a</c><c>b</c></r>", "f i fc i d o fc i d o fc",
         "++++[a]+++[b]+-"},
        {"several outermost elements", "<a>1</a><b>2</b>", "fb d fa R fa d", "+[2]-+[1]"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CMarkup xml;
        ASSERT_TRUE(xml.SetDoc(row.text)) << xml.GetError();
        EXPECT_EQ(Walk(xml, row.moves), row.wanted);
    }
}

TEST(CMarkup, SetPos) {
    CMarkup xml;
    ASSERT_TRUE(xml.SetDoc("<r><a><x>1</x></a><b/></r>"));
    EXPECT_EQ(Walk(xml, "f i fa"), "+++");
    const CMarkup::Pos root = xml.GetParentPos();
    const CMarkup::Pos a = xml.GetElemPos();
    EXPECT_EQ(Walk(xml, "fb"), "+");
    xml.x_SetPos(xml.GetParentPos(), nullptr, nullptr);
    EXPECT_EQ(xml.GetElemPos(), nullptr);
    EXPECT_EQ(Walk(xml, "fa dx"), "+[1]");
    xml.x_SetPos(a, nullptr, nullptr);
    EXPECT_EQ(Walk(xml, "fx d o o"), "+[1]++");
    EXPECT_EQ(xml.GetElemPos(), root);
    xml.x_SetPos(nullptr, a, nullptr);  // not a child of the document
    EXPECT_EQ(xml.GetElemPos(), nullptr);
    EXPECT_EQ(Walk(xml, "f i fa"), "+++");
}

TEST(CMarkup, Data) {
    const struct {
        const char* name;
        std::string inner;
        std::string wanted;
    } rows[] = {
        {"blanks and line ends", "  a\tb\r\nc\r \n", "  a\tb\r\nc\r \n"},
        {"only blanks", " \r\n ", " \r\n "},
        {"blanks around a section", "  <![CDATA[<&\r\n]]> x", "  <&\r\n x"},
        {"comments and instructions", "a<!-- </v> ' -->b<?pi > '?>c", "abc"},
        {"predefined and numeric", "&lt;&gt;&amp;&quot;&apos;&#65;&#x42;&#xe9;",
         "<>&\"'AB\xC3\xA9"},
        {"control characters", "&#01;&#27;", "\x01\x1B"},
        {"unknown entities stay", "&nbsp;&#;&#x;&#12x;& &#", "&nbsp;&#;&#x;&#12x;& &#"},
        {"blanks between children aren't data", " \n <c>1</c> x <c/>\n", " x "},
        {"bytes that are no UTF-8", "\xE9\xFF", "\xE9\xFF"},
        {"quotes in data", "it's \"x\"", "it's \"x\""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CMarkup xml;
        ASSERT_TRUE(xml.SetDoc("<v>" + row.inner + "</v>")) << xml.GetError();
        EXPECT_EQ(Walk(xml, "f d"), "+" + Quoted(row.wanted));
        CMarkup again;
        ASSERT_TRUE(again.SetDoc(xml.GetDoc())) << again.GetError();
        EXPECT_EQ(xml.GetDoc(), again.GetDoc());
    }
}

TEST(CMarkup, Conversions) {
    const struct {
        const char* text;
        int number;
        bool truth;
    } rows[] = {
        {"12", 12, true},      {" -7\n", -7, true},
        {"+3", 3, true},       {"+-3", 0, false},
        {"12 days", 12, true}, {"99999999999", INT_MAX, true},
        {"0", 0, false},       {"-99999999999", INT_MIN, true},
        {"", 0, false},        {"x", 0, false},
        {" True ", 0, true},   {"FALSE", 0, false},
        {"trues", 0, false},   {"-", 0, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        CMarkup xml;
        ASSERT_TRUE(xml.AddElem("r") && xml.SetAttrib("a", row.text) && xml.IntoElem() &&
                    xml.AddElem("v", row.text) && xml.OutOfElem());
        int number = 5;
        int attribute = 5;
        bool truth = !row.truth;
        EXPECT_TRUE(xml.GetData("v", number) && xml.GetData("v", truth) &&
                    xml.GetAttrib("a", attribute));
        EXPECT_EQ(number, row.number);
        EXPECT_EQ(attribute, row.number);
        EXPECT_EQ(truth, row.truth);
        EXPECT_FALSE(xml.GetData("none", number) || xml.GetData("none", truth) ||
                     xml.GetAttrib("none", attribute));
        EXPECT_EQ(number, row.number);
        EXPECT_EQ(truth, row.truth);
    }
}

TEST(CMarkup, Building) {
    CMarkup xml;
    EXPECT_EQ(xml.GetDoc(), "");
    EXPECT_FALSE(xml.SetAttrib("a", 1));
    EXPECT_TRUE(xml.AddElem("rule"));
    EXPECT_TRUE(xml.SetAttrib("id", 7) && xml.SetAttrib("t", "a\"<\n") && xml.SetAttrib("id", 8));
    EXPECT_TRUE(xml.IntoElem());
    EXPECT_TRUE(xml.SetAttrib("in", ""));  // the element entered, while none is current
    EXPECT_TRUE(xml.AddElem("name", "a < b & c") && xml.AddElem("type", 4) &&
                xml.AddElem("on", true));
    xml.ResetChildPos();
    EXPECT_TRUE(xml.FindElem("name") && xml.AddElem("last"));  // appended, not behind "name"
    EXPECT_FALSE(xml.AddElem("") || xml.AddElem("a b") || xml.AddElem("1a") || xml.AddElem("a>"));
    EXPECT_FALSE(xml.SetAttrib("a=", 1));
    EXPECT_TRUE(xml.OutOfElem());
    EXPECT_TRUE(xml.AddElem("variables"));
    EXPECT_EQ(xml.GetDoc(), Declaration +
                                "<rule id=\"8\" t=\"a&quot;&lt;&#10;\" in=\"\">\n"
                                "  <name>a &lt; b &amp; c</name>\n  <type>4</type>\n  <on>1</on>\n"
                                "  <last />\n</rule>\n<variables />\n");
    CMarkup copy;
    CMarkup again;
    ASSERT_TRUE(copy.SetDoc(xml.GetDoc()));
    EXPECT_TRUE(again.SetDoc(copy.GetDoc()));
    EXPECT_EQ(again.GetDoc(), copy.GetDoc());
    std::string text;
    EXPECT_TRUE(copy.FindElem() && copy.GetAttrib("t", text));
    EXPECT_EQ(text, "a\"<\n");
}

// The calls by which rule documents write and read a list inside an element of the list's own name.
TEST(CMarkup, ListInsideItsOwnName) {
    CMarkup xml;
    xml.AddElem("table");
    xml.IntoElem();
    xml.AddElem("columns");
    xml.IntoElem();
    for (const char* name : {"$a", "$b"}) {
        xml.IntoElem();
        xml.AddElem("columns", name);
        xml.OutOfElem();
    }
    EXPECT_EQ(xml.GetDoc(), Declaration +
                                "<table>\n  <columns>\n    <columns>$a</columns>\n"
                                "    <columns>$b</columns>\n  </columns>\n</table>\n");
    EXPECT_EQ(Walk(xml, "R f i fcolumns i fcolumns i d o fcolumns i d o fcolumns o"),
              "++++++[$a]+++[$b]+-+");
}

TEST(CMarkup, BytesThatXmlCannotHold) {
    const struct {
        const char* name;
        std::string value;
        std::string kept;
        std::string written;
    } rows[] = {
        {"NUL", "a\0b"s, "a?b", "a?b"},
        {"control characters", "\x01\x1B", "\x01\x1B", "&#01;&#27;"},
        {"carriage return", "a\r\n", "a\r\n", "a\r\n"},
        {"Latin-1", "Z\xFCrich", "Z\xFCrich", "Z\xC3\xBCrich"},
        {"UTF-8", "Z\xC3\xBCrich \xE2\x82\xAC \xF0\x9F\x98\x80",
         "Z\xC3\xBCrich \xE2\x82\xAC \xF0\x9F\x98\x80",
         "Z\xC3\xBCrich \xE2\x82\xAC \xF0\x9F\x98\x80"},
        {"cut UTF-8", "\xE2\x82", "\xE2\x82", "\xC3\xA2\xC2\x82"},
        {"overlong and surrogate", "\xC0\xAF\xED\xA0\x80", "\xC0\xAF\xED\xA0\x80",
         "\xC3\x80\xC2\xAF\xC3\xAD\xC2\xA0\xC2\x80"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CMarkup xml;
        ASSERT_TRUE(xml.AddElem("v", row.value));
        EXPECT_EQ(xml.GetData(), row.kept);
        EXPECT_EQ(xml.GetDoc(), Declaration + "<v>" + row.written + "</v>\n");
    }
}

TEST(CMarkup, Refused) {
    const struct {
        const char* name;
        std::string text;
        std::string error;
    } rows[] = {
        {"empty", "", "No document element found at byte 0"},
        {"only a comment", "<!-- x -->", "No document element found at byte 10"},
        {"cut", "<a><b>x", "Start-end tags mismatch at byte 6"},
        {"mismatch", "<a></b>", "Start-end tags mismatch at byte 5"},
        {"end without start", "</a>", "An end tag without a start tag at byte 0"},
        {"tag without end", "<a", "The tag doesn't end at byte 0"},
        {"quote without end", "<a b='>", "The attribute's value doesn't end at byte 5"},
        {"comment without end", "<a/><!-->", "The markup doesn't end at byte 4"},
        {"text in front", "x<a/>", "Text outside the elements at byte 0"},
        {"text behind", "<a/>\n x", "Text outside the elements at byte 6"},
        {"section outside", "<![CDATA[x]]><a/>", "Text outside the elements at byte 0"},
        {"NUL", "<a>\0</a>"s, "The text holds a NUL at byte 3"},
        {"NUL by number", "<a>&#x00;</a>",
         "A reference to a character that doesn't exist at byte 3"},
        {"number beyond", "<a b='&#x110000;'/>",
         "A reference to a character that doesn't exist at byte 6"},
        {"number that wraps", "<a>&#4294967361;</a>",
         "A reference to a character that doesn't exist at byte 3"},
        {"surrogate", "<a>&#xD800;</a>", "A reference to a character that doesn't exist at byte 3"},
        {"entities", "<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>",
         "Document type declarations aren't accepted at byte 0"},
        {"too deep", Nested(1001), "The elements are nested too deep at byte 3000"},
        {"very deep", Nested(1000000), "The elements are nested too deep at byte 3000"},
        {"very deep and open", std::string(3000000, '<'), "The tag doesn't end at byte 0"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CMarkup xml;
        xml.AddElem("before");
        EXPECT_FALSE(xml.SetDoc(row.text));
        EXPECT_EQ(xml.GetError(), row.error);
        EXPECT_EQ(xml.GetDoc(), "");
        EXPECT_FALSE(xml.FindElem());
        EXPECT_TRUE(xml.SetDoc("<a/>"));
        EXPECT_EQ(xml.GetError(), "");
    }
}

// What looks like tags inside comments, sections, instructions and values doesn't count as depth.
TEST(CMarkup, DepthCountsElementsOnly) {
    const std::string many = Nested(1000);
    const std::string starts = many.substr(0, many.size() / 2) + many.substr(0, many.size() / 2);
    for (const std::string& text :
         {many, "<a><!--" + starts + "--></a>", "<a><![CDATA[" + starts + "]]></a>",
          "<a><?p " + starts + "?></a>", "<a b='" + starts + "' c=\"" + starts + "\"/>",
          "\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?>\n" + many}) {
        SCOPED_TRACE(text.substr(0, 20));
        CMarkup xml;
        EXPECT_TRUE(xml.SetDoc(text)) << xml.GetError();
    }
    CMarkup xml;
    for (int i = 0; i < CMarkup::MaxDepth; ++i) ASSERT_TRUE(xml.AddElem("a") && xml.IntoElem());
    EXPECT_FALSE(xml.AddElem("a"));
    CMarkup copy;
    EXPECT_TRUE(copy.SetDoc(xml.GetDoc())) << copy.GetError();
}

// Indenting these would make 40 MB of 140 KB.
TEST(CMarkup, WhatWasReadIsNotIndentedAgain) {
    std::string inner;
    for (int i = 0; i < 20000; ++i) inner += "<leaf/>";
    const std::string shell = Nested(999);
    const std::string text = shell.substr(0, 2997) + inner + shell.substr(2997);
    CMarkup xml;
    ASSERT_TRUE(xml.SetDoc(text)) << xml.GetError();
    EXPECT_EQ(xml.GetDoc(), Declaration + text + "\n");
}

TEST(CMarkup, DeepDocumentsAreNotIndented) {
    for (const int depth : {100, 101}) {
        SCOPED_TRACE(depth);
        CMarkup xml;
        for (int i = 0; i < depth; ++i) ASSERT_TRUE(xml.AddElem("a") && xml.IntoElem());
        const auto text = xml.GetDoc();
        EXPECT_EQ(text.find("  <a") == std::string::npos, depth > 100);
        EXPECT_EQ(text.back(), '\n');
    }
}

}  // namespace
