#pragma once

// hxJson::Reader reads a JSON text into a tree of nodes.
//
//     hxJson::Reader reader;
//     hxJson::Value root;
//     if (!reader.parse(text, root, true)) std::cerr << reader.getErrorMessage();
//     root["samples"].size();
//
// The text is bytes: strings that are not valid UTF-8 are taken as they are, a NUL byte outside a
// string escape is an error. Taken beyond plain JSON: comments in both forms of C, and a UTF-8 byte
// order mark at the start. A text of nothing but white space and comments reads as null, with
// success. Refused: anything behind the document, nesting deeper than 1000 levels, raw control
// characters in strings, numbers beyond a double, NaN and infinity, texts of 2 GiB and more. Of
// equal keys in one object the last wins. Integers that fit 64 bits, signed or unsigned, are kept
// exactly; other numbers become the nearest double. The time taken grows with the length of the
// text, and the stack used does not grow with its depth.
//
// A reader may be used again; it is for one thread at a time. No operation throws.

#include "host/json/hxvalue.h"
#include "host/runtime/tzexport.h"

#include <cstddef>
#include <istream>
#include <string>
#include <string_view>

namespace hxJson {

class TZPARSER_API Reader {
public:
    // The deepest nesting that is read; `[[]]` has two levels.
    static constexpr size_t MaxDepth = 1000;

    Reader() = default;

    // Reads the whole text, or all that is left of the stream, into `root`. True on success. On
    // failure `root` is null and the error operations say why. Comments are read over;
    // `collectComments` asks for nothing, as no operation gives them back.
    bool parse(const std::string& text, Value& root, bool collectComments = true);
    bool parse(std::istream& stream, Value& root, bool collectComments = true);

    // Why the last parse failed, with the place: "line 3, column 7: A colon was expected
    // ...". The rest is the place itself: the byte offset from the start of the text, the line
    // counted in line feeds, and the column counted in bytes, both from 1. After a success: "", 0,
    // 0, 0.
    const std::string& getErrorMessage() const { return m_message; }
    size_t getErrorOffset() const { return m_offset; }
    int getErrorLine() const { return m_line; }
    int getErrorColumn() const { return m_column; }

private:
    bool ParseBytes(std::string_view text, Value& document);
    bool Fail(std::string_view text, size_t offset, const char* words);
    void ClearError();

    std::string m_message;
    size_t m_offset = 0;
    int m_line = 0;
    int m_column = 0;
};

}  // namespace hxJson
