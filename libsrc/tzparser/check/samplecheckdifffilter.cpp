// What a diff filter's node says: its baseline, row by row.
#include "tzparser/check/checkshape.h"
#include "tzparser/check/samplecheck.h"
#include "tzparser/select/difffilterkeys.h"

// A row below 0 is in no range, and a row without a text is never compared.
void CSampleCheck::CheckDiffFilter(const hxJson::Value& node, const std::string& path) {
    CheckUnused(node, path, CheckMessage_NotForFilter);
    const auto& lines = node[DiffFilterKey::Lines];
    const auto linesPath = path + "." + DiffFilterKey::Lines;
    if (!lines.isArray()) {
        m_report.Add(linesPath, CheckMessage_BaselineMissing);
        return;
    }
    std::set<int> rows;
    bool isOfUse = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto& line = lines[i];
        const auto linePath = linesPath + "[" + std::to_string(i) + "]";
        if (!HasShape(line, CheckShape_Object, m_report, linePath)) continue;
        CheckBaselineRow(line, linePath, rows);
        isOfUse |=
            line[DiffFilterKey::Row].asInt() >= 0 && !line[DiffFilterKey::Text].asString().empty();
    }
    if (!isOfUse) m_report.Add(linesPath, CheckMessage_BaselineWithoutRow);
}

void CSampleCheck::CheckBaselineRow(const hxJson::Value& line, const std::string& path,
                                    std::set<int>& rows) {
    const auto& number = line[DiffFilterKey::Row];
    const int row = number.asInt();
    if (!number.isInt())
        m_report.Add(path + "." + DiffFilterKey::Row, CheckMessage_BaselineRowNumber,
                     {std::to_string(row)});
    if (!rows.insert(row).second)
        m_report.Add(path, CheckMessage_BaselineRowTwice, {std::to_string(row)});
    const auto& added = line[DiffFilterKey::Added];
    if (!added.isNull() && !added.isBool() && !added.isInt())
        m_report.Add(path + "." + DiffFilterKey::Added, CheckMessage_BaselineAdded);
}
