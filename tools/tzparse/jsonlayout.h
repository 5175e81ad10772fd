#pragma once

#include "outputwriter.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// CJsonLayout writes a JSON document piece by piece, laid out for people: two blanks a level, one
// member or element a line.
//
//     CJsonLayout json(out);
//     json.Begin('{');
//     json.Key("uptime");
//     json.Value() += "12";               // the caller appends the JSON text of the value
//     json.End();
//
// The caller keeps the order: a key before each value in an object, an End for each Begin. The
// stack of open brackets is on the heap, so depth costs no call stack.
class CJsonLayout {
public:
    explicit CJsonLayout(COutputWriter& out) : m_out(out) {}

    // Opens an object by '{' or an array by '['.
    void Begin(char bracket);
    // Closes the innermost open one.
    void End();
    void Key(std::string_view name);
    // Takes the place of the next value and gives the buffer to which its text goes.
    std::string& Value();

private:
    struct Level {
        char bracket;
        bool isEmpty;
    };

    void NextLine();
    void Separate();

    COutputWriter& m_out;
    std::vector<Level> m_open;
};
