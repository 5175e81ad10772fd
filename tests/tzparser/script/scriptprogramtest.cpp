// The pieces of the program as texts.
#include "tzparser/script/scriptprogram.h"

#include <gtest/gtest.h>

namespace {

TEST(ScriptProgram, IsComposedWithBlanksForTabsAndBareLineFeeds) {
    const ScriptNames names(17);
    EXPECT_EQ(ComposeScriptProgram("if 1:\r\n\tx = 1", names, "a\tb\r\nc\rd\r\r\ne"),
              "if 1:\n    x = 1\n"
              "_original_result_17 = r'''a    b\nc\rd\r\ne'''\n"
              "parse_result_17 = ParseText(_original_result_17)\n");
    EXPECT_EQ(ComposeScriptProgram("x\r", names, "").substr(0, 3), "x\n_");
    EXPECT_EQ(AsTokenized("a\tb\r\nc\rd\r\r\ne\r"), "a    b\nc\nd\ne\n");
}

// The literal takes a text as it stands unless its quotes or its last backslash end it elsewhere.
TEST(ScriptProgram, TextsThatFitTheLiteral) {
    struct Row {
        const char* text;
        bool fits;
        std::size_t closes;
    };
    const Row rows[] = {
        {"", true, 0},         {"it's", true, 4},   {"'a''b", true, 5},     {"a'", false, 2},
        {"a''", false, 3},     {"a'''b", false, 4}, {"\\", false, 1},       {"a\\\\", true, 3},
        {"a\\'", true, 3},     {"\\'''", false, 4}, {"\\'\\'\\'", true, 6}, {"''\\'", true, 4},
        {"\\\n'''", false, 5}, {"\"\"\"", true, 3}, {"x\\\\\\", false, 4},  {"''x''y'x", true, 8},
    };
    for (const auto& row : rows) {
        std::size_t closes = 99;
        EXPECT_EQ(FitsRawLiteral(row.text, closes), row.fits) << row.text;
        EXPECT_EQ(closes, row.closes) << row.text;
    }
}

TEST(ScriptProgram, EncodingsThatAScriptDeclares) {
    struct Row {
        const char* script;
        const char* wanted;
    };
    const Row rows[] = {
        {"x = 1\n", ""},
        {"# coding: utf-8\n", ""},
        {"# -*- coding: UTF_8 -*-\n", ""},
        {"# coding: latin-1\n", "latin-1"},
        {"#!/bin/x\n  # vim: fileencoding=Latin_1 :\n", "latin-1"},
        {"\n\n# coding: latin-1\n", ""},
        {"x = 1\n# coding: latin-1\n", ""},
        {"x = 'coding: latin-1'\n", ""},
        {"# coding latin-1 coding= cp1252", "cp1252"},
    };
    for (const auto& row : rows) EXPECT_EQ(DeclaredEncoding(row.script), row.wanted) << row.script;
}

// PyConfigLet once stood in another module, and stored scripts still say so.
TEST(ScriptProgram, ImportsOfOldAreBroughtUpToDate) {
    EXPECT_EQ(WithPresentImports("FROM  pyapplib\n import\tPYConfigLet, PyIP\n"
                                 "from pyapplib import PyConfigLet # from pyapplib import PyIP"),
              "from pyconfiglet import PyConfigLet, PyIP\n"
              "from pyconfiglet import PyConfigLet # from pyapplib import PyIP");
}

}  // namespace
