#include "tzparser/check/checkshape.h"

#include <array>

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

}  // namespace

bool HasShape(const hxJson::Value& value, CheckShape_e shape, CCheckReport& report,
              const std::string& path) {
    const auto& row = Shapes[shape];
    if ((row.array && value.isArray()) || (row.object && value.isObject())) return true;
    if (!value.isNull()) report.Add(path, CheckMessage_WrongShape, {row.words});
    return false;
}
