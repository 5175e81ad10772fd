#pragma once

#include "host/runtime/tzexport.h"
#include "tzparser/text/apptext.h"
#include "tzparser/text/lumoserializable.h"

#include <cstdint>
#include <string>

namespace hxJson {
class Value;
}
class CMarkup;

/// The atom of every parse result: a piece of text with the span of the sample it was taken from.
/// Rules make lets, the value tree and the exports pass them on by value.
///
/// Rows are 0-based indexes into the sample's lines. Columns are 0-based byte offsets into the line
/// as the rule matched it; `endCol` is one past the last character. `beginCol` of -1 marks a
/// capture that took no part in the match.
///
///     CAppTextLet let(12, 3, 12, 9, "Gi0/1 ");
///     let.text;                        // "Gi0/1 "
///     hxJson::Value document = let.SaveToJson(true);
///
/// Moving doesn't throw and doesn't allocate. An object is used by one thread at a time.
class TZPARSER_API CAppTextLet : public Lumo::serialization::LumoSerializable<hxJson::Value>,
                                 public CAppText {
public:
    std::int32_t beginRow = 0;
    std::int32_t beginCol = 0;
    std::int32_t endRow = 0;
    std::int32_t endCol = 0;

    CAppTextLet() = default;
    /// A let with the text and a span of zeros, which `IsEmpty` takes as empty.
    explicit CAppTextLet(std::string letText);
    CAppTextLet(std::int32_t firstRow, std::int32_t firstCol, std::int32_t lastRow,
                std::int32_t lastCol, std::string letText);

    /// True when the span begins where it ends, whatever the text is.
    bool IsEmpty() const { return beginRow == endRow && beginCol == endCol; }

    /// Puts the span in reading order: rows out of order swap rows and columns together, columns
    /// out of order on one row swap alone. The text and the lines stay. True when anything was
    /// changed.
    bool Adjust();

    /// Marks the let as changed by the library's caller. The parser neither sets nor reads the
    /// mark, it only copies it; there is no way back but assignment from another let.
    void SetModifyByOutSide() { modifyByOutSide = true; }
    bool IsModifyByOutSide() const { return modifyByOutSide; }

    /// Reads "beginRow", "beginCol", "endRow", "endCol", "text" and "lines". A missing member reads
    /// as 0, as the empty text or as no lines. Always true.
    bool Load(const hxJson::Value& value) override;
    /// Writes the members that `Load` reads; "lines" only when there are any. Always true.
    bool Save(hxJson::Value& value) override;
    /// A new object with the members of `Save`, the text only when asked for.
    hxJson::Value SaveToJson(bool withText) const;

    /// The same below the document's current element, with keys of their own: "BeginRow",
    /// "BeginCol", "EndRow", "EndCol", "Text" and, when there are any, "lines" with a "line" each.
    /// What "lines" an element holds is written for its readers and never read back: loading leaves
    /// the lines as they are. A missing element leaves its field. Always true.
    bool LoadFromXml(CMarkup& xml);
    bool SaveToXml(CMarkup& xml) const;

private:
    void WriteTo(hxJson::Value& value, bool withText) const;

    bool modifyByOutSide = false;
};
