#pragma once

#include <cstddef>
#include <vector>

// The ways to find columns and cells; the numbers are the "aligntype" of rule documents.
enum TableAlign_e {
    TableAlign_Left = 0,    // columns begin where their headers do
    TableAlign_Right = 1,   // columns end where their headers do
    TableAlign_Fixed = 2,   // columns begin at given places
    TableAlign_Tokens = 3,  // columns take given numbers of tokens
};

// What became of one line in the search for a table's header.
enum HeaderVerdict_e {
    HeaderVerdict_WholeLineFails,  // the expression of the whole header doesn't fit
    HeaderVerdict_TooFewTokens,    // neither a direct match nor as many words as headers
    HeaderVerdict_TokenFitsNone,   // a word isn't part of the header in its place
    HeaderVerdict_TooFewHeaders,   // the words are used up before all headers have a column
    HeaderVerdict_Direct,          // accepted: every header is found in the line
    HeaderVerdict_ByWords,         // accepted: the words of the line belong to the headers in order
};

// How far one line got in that search, for those who explain a definition to its author.
struct HeaderTrial {
    int line = -1;
    HeaderVerdict_e verdict = HeaderVerdict_WholeLineFails;
    int missingHeader = -1;  // the first header, from 0, not found directly; -1 when all are
    int header = -1;         // the header, from 0, at which the walk over the words ended
    int token = -1;          // the word of the line, from 0, at which it ended
    int column = -1;         // the 0-based byte column of that word in the line
};

// What the last parse of a table decided, also when it failed. Lines are 0-based, ends exclusive.
struct TableLayout {
    bool isHeaderFound = false;
    bool isWrappedHeader = false;  // the header goes on in the next line, which then counts
    int headerLine = 0;            // the line that counts as the header; 0 until one is found
    std::ptrdiff_t skip = 0;       // lines from the header line to the first row
    std::vector<std::ptrdiff_t> columns;  // byte columns, -1 for a header without a place; numbers
                                          // of tokens with TableAlign_Tokens
    int separatorLine = -1;               // the line whose groups of "===---" gave the columns
    int firstRow = 0;
    int endLine = 0;
    bool isEndFound = false;  // the end condition matched, at endLine
};
