#include "tzparser/check/checkshape.h"

#include "host/text/asciicase.h"
#include "tzparser/pattern/parserpatternhelper.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

struct ShapeRow {
    bool array;
    bool object;
    const char* words;
};

constexpr std::array<ShapeRow, 3> Shapes = {{
    {true, false, "an array"},
    {false, true, "an object"},
    {true, true, "an array or an object"},
}};

// Words that a document may give a variable though the data type for them is that of a string.
constexpr std::array<std::string_view, 4> StringWords = {"string", "mstring", "mstr", "mword"};

}  // namespace

bool HasShape(const hxJson::Value& value, CheckShape_e shape, CCheckReport& report,
              const std::string& path) {
    const auto& row = Shapes[shape];
    if ((row.array && value.isArray()) || (row.object && value.isObject())) return true;
    if (!value.isNull()) report.Add(path, CheckMessage_WrongShape, {row.words});
    return false;
}

bool IsVariableTypeWord(const std::string& word) {
    return CParserPatternHelper::GetDataType(word) != AppDataType_String ||
           std::any_of(StringWords.begin(), StringWords.end(), [&word](std::string_view known) {
               return AsciiEqualIgnoreCase(word, known);
           });
}
