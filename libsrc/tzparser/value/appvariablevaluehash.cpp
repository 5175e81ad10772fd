// The fingerprint of a table and the values of its two properties.
#include "host/runtime/tznoncryptographicchecksum.h"
#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appvariabletabledef.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <string_view>

namespace {

std::string WithoutAnyDollar(std::string name) {
    name.erase(std::remove(name.begin(), name.end(), '$'), name.end());
    return name;
}

// The cells of the hash columns. Cells are asked by row and by number among the hash columns; one
// that a short column hasn't is null.
class CHashCells {
public:
    CHashCells(const std::vector<CAppVariableValue*>& children, const std::set<std::string>& names)
        : m_columns(Chosen(children, names)) {}

    bool IsEmpty() const { return m_columns.empty(); }

    // Orders two rows by their texts up to a NUL.
    bool IsBefore(int row, int other) const {
        for (const auto& column : m_columns) {
            const int order = ZeroTerminated(column, row).compare(ZeroTerminated(column, other));
            if (order != 0) return order < 0;
        }
        return false;
    }

    // The row as the digest takes it. The comma behind each cell keeps the borders of cells.
    void AppendRow(int row, std::string& bytes) const {
        for (const auto& column : m_columns) {
            bytes += Text(column, row);
            bytes += ',';
        }
        bytes += '\n';
    }

private:
    struct Column {
        const CAppVariableValue* values;
        bool isArray;  // else its one value stands in each row
    };

    static std::vector<Column> Chosen(const std::vector<CAppVariableValue*>& children,
                                      const std::set<std::string>& names) {
        std::set<std::string> plainNames;
        for (const auto& name : names) plainNames.insert(WithoutAnyDollar(name));
        std::vector<Column> chosen;
        for (const auto* child : children)
            if (plainNames.count(WithoutAnyDollar(child->GetName())) != 0)
                chosen.push_back({child, child->GetDataType() == AppDataType_Array});
        return chosen;
    }

    static std::string_view Text(const Column& column, int row) {
        return column.values->GetText(column.isArray ? static_cast<std::size_t>(row) : 0);
    }

    static std::string_view ZeroTerminated(const Column& column, int row) {
        const auto text = Text(column, row);
        return text.substr(0, text.find('\0'));
    }

    std::vector<Column> m_columns;  // in the table's order, not in that of the names
};

std::string Digest(const CHashCells& cells, const std::vector<int>& rows) {
    constexpr std::size_t PieceSize = 1 << 16;
    CTzNonCryptographicChecksum checksum;
    std::string piece;
    for (const int row : rows) {
        cells.AppendRow(row, piece);
        if (piece.size() < PieceSize) continue;
        checksum.Update(piece.data(), piece.size());
        piece.clear();
    }
    checksum.Update(piece.data(), piece.size());
    return checksum.Final();
}

}  // namespace

// A definition whose hash columns name no column of it gives the digest of no rows, not an empty
// text.
std::string CAppVariableValue::GenerateTableHash() const {
    if (GetDataType() != AppDataType_Table) return std::string();
    const auto* table = dynamic_cast<const CAppVariableTableDef*>(m_varDef);
    std::set<std::string> names;
    if (table == nullptr || table->GetTableCmpColumns(names) == 0) return std::string();
    const CHashCells cells(GetChildValues(), names);
    std::vector<int> rows(cells.IsEmpty() ? 0 : static_cast<std::size_t>(GetValueCount()));
    std::iota(rows.begin(), rows.end(), 0);
    if (table->IsTableCmpSort())
        std::sort(rows.begin(), rows.end(),
                  [&cells](int a, int b) { return cells.IsBefore(a, b); });
    return Digest(cells, rows);
}

void CAppVariableValue::AddTableHashAndRowCountToProperty() {
    if (GetDataType() != AppDataType_Table) return;
    MakeDefinitionWritable();
    // What a node that isn't the root's copy points to was given as one that may be written.
    auto* table =
        const_cast<CAppVariableTableDef*>(dynamic_cast<const CAppVariableTableDef*>(m_varDef));
    if (table == nullptr) return;
    for (const auto* def : table->GetProperties()) {
        auto property = MakeNode(def, nullptr);
        property->m_rowCountLimitForHash = m_rowCountLimitForHash;
        const int rows = GetValueCount();
        std::string text;
        if (def->GetName() == "_rowCount") {
            text = std::to_string(rows);
            table->SetTableRowCount(rows);
        } else if (def->GetName() == "_hashCmp") {
            // The limit of a node below the root is 5000 whatever the engine was told.
            if (rows <= m_rowCountLimitForHash) text = GenerateTableHash();
            table->SetTableHash(text);
        }
        property->m_values.Lets().emplace_back(std::move(text));
        m_properties.push_back(std::move(property));
    }
}
