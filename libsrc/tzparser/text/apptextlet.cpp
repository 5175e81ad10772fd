#include "tzparser/text/apptextlet.h"

#include "host/json/hxjson.h"
#include "host/xml/markup.h"

#include <type_traits>
#include <utility>

namespace {

constexpr const char* kBeginRow = "beginRow";
constexpr const char* kBeginCol = "beginCol";
constexpr const char* kEndRow = "endRow";
constexpr const char* kEndCol = "endCol";
constexpr const char* kText = "text";
constexpr const char* kLines = "lines";

}  // namespace

static_assert(std::is_nothrow_move_constructible_v<CAppTextLet>);
static_assert(std::is_nothrow_move_assignable_v<CAppTextLet>);

CAppTextLet::CAppTextLet(std::string letText) : CAppText{std::move(letText), {}} {}

CAppTextLet::CAppTextLet(std::int32_t firstRow, std::int32_t firstCol, std::int32_t lastRow,
                         std::int32_t lastCol, std::string letText)
    : CAppText{std::move(letText), {}},
      beginRow(firstRow),
      beginCol(firstCol),
      endRow(lastRow),
      endCol(lastCol) {}

bool CAppTextLet::Adjust() {
    if (beginRow > endRow) {
        std::swap(beginRow, endRow);
        std::swap(beginCol, endCol);
        return true;
    }
    if (beginRow == endRow && beginCol > endCol) {
        std::swap(beginCol, endCol);
        return true;
    }
    return false;
}

bool CAppTextLet::Load(const hxJson::Value& value) {
    beginRow = value[kBeginRow].asInt();
    beginCol = value[kBeginCol].asInt();
    endRow = value[kEndRow].asInt();
    endCol = value[kEndCol].asInt();
    text = value[kText].asString();
    const hxJson::Value& lineNumbers = value[kLines];
    lines.resize(lineNumbers.size());
    for (std::size_t index = 0; index < lines.size(); ++index) {
        lines[index] = lineNumbers[index].asInt();
    }
    return true;
}

bool CAppTextLet::Save(hxJson::Value& value) {
    WriteTo(value, true);
    return true;
}

hxJson::Value CAppTextLet::SaveToJson(bool withText) const {
    hxJson::Value value(hxJson::objectValue);
    WriteTo(value, withText);
    return value;
}

void CAppTextLet::WriteTo(hxJson::Value& value, bool withText) const {
    value[kBeginRow] = beginRow;
    value[kBeginCol] = beginCol;
    value[kEndRow] = endRow;
    value[kEndCol] = endCol;
    if (withText) value[kText] = text;
    if (lines.empty()) return;
    hxJson::Value lineNumbers(hxJson::arrayValue);
    for (const std::int32_t line : lines) lineNumbers.append(line);
    value[kLines] = std::move(lineNumbers);
}

bool CAppTextLet::LoadFromXml(CMarkup& xml) {
    xml.IntoElem();
    xml.GetData("BeginRow", beginRow);
    xml.GetData("BeginCol", beginCol);
    xml.GetData("EndRow", endRow);
    xml.GetData("EndCol", endCol);
    xml.GetData("Text", text);
    xml.OutOfElem();
    return true;
}

bool CAppTextLet::SaveToXml(CMarkup& xml) const {
    xml.IntoElem();
    xml.AddElem("BeginRow", beginRow);
    xml.AddElem("BeginCol", beginCol);
    xml.AddElem("EndRow", endRow);
    xml.AddElem("EndCol", endCol);
    xml.AddElem("Text", text);
    if (!lines.empty()) {
        xml.AddElem("lines");
        xml.IntoElem();
        for (const int line : lines) xml.AddElem("line", line);
        xml.OutOfElem();
    }
    xml.OutOfElem();
    return true;
}
