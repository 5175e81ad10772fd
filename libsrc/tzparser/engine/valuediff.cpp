// A table is compared in one pass over each side: the new rows are listed by their keys, then each
// old row takes the first new one of its keys that is left; what is left at the end is new.
#include "tzparser/engine/valuediff.h"

#include "tzparser/value/appvariablevalue.h"
#include "tzparser/variable/appvariabletabledef.h"

#include <algorithm>
#include <deque>
#include <map>

namespace {

// The columns of a table on one side, with the definition's names.
struct Column {
    std::string name;
    const CAppVariableValue* before = nullptr;
    const CAppVariableValue* after = nullptr;
    bool isKey = false;
};

struct Table {
    std::string name;
    std::vector<Column> columns;
};

enum Side_e { Side_Before, Side_After };

const CAppVariableValue* OfSide(const Column& column, Side_e side) {
    return side == Side_Before ? column.before : column.after;
}

const CAppTextLet* LetAt(const CAppVariableValue* value, std::size_t index) {
    if (value == nullptr || index >= value->GetValues().size()) return nullptr;
    return &value->GetValues()[index];
}

// A stand-by value counts as no value.
std::optional<std::string> TextOf(const CAppTextLet* let) {
    if (let == nullptr || (let->IsEmpty() && let->text.empty())) return std::nullopt;
    return let->text;
}

int LineOf(const CAppTextLet* let) {
    return let != nullptr ? let->beginRow : -1;
}

const CAppVariableValue* FindChild(const CAppVariableValue& parent, const std::string& name) {
    for (const auto* child : parent.GetChildValues())
        if (child->GetName() == name) return child;
    return nullptr;
}

std::vector<std::string> KeyNames(const CAppVariableValue& table) {
    const auto* def = dynamic_cast<const CAppVariableTableDef*>(table.GetVarDef());
    if (def == nullptr) return {};
    const auto keys = def->GetTableKeysEx();
    return keys.empty() ? def->GetKeys() : std::vector<std::string>(keys.begin(), keys.end());
}

Table MakeTable(const CAppVariableValue& before, const CAppVariableValue& after) {
    Table table;
    table.name = before.GetVariableFullName();
    for (const auto* child : before.GetChildValues())
        table.columns.push_back(
            {child->GetName(), child, FindChild(after, child->GetName()), false});
    for (const auto& key : KeyNames(before))
        for (auto& column : table.columns)
            column.isKey |= column.name == key || column.name == "$" + key;
    const bool hasKey = std::any_of(table.columns.begin(), table.columns.end(),
                                    [](const Column& column) { return column.isKey; });
    if (!hasKey)
        for (auto& column : table.columns) column.isKey = true;
    return table;
}

std::size_t RowCount(const Table& table, Side_e side) {
    std::size_t count = 0;
    for (const auto& column : table.columns)
        if (const auto* value = OfSide(column, side))
            count = std::max(count, value->GetValues().size());
    return count;
}

using RowKey = std::vector<std::optional<std::string>>;

RowKey KeyOf(const Table& table, Side_e side, std::size_t row) {
    RowKey key;
    for (const auto& column : table.columns)
        if (column.isKey) key.push_back(TextOf(LetAt(OfSide(column, side), row)));
    return key;
}

int LineOfRow(const Table& table, Side_e side, std::size_t row) {
    for (const auto& column : table.columns)
        if (const auto* let = LetAt(OfSide(column, side), row)) return LineOf(let);
    return -1;
}

ValueChange MakeRowChange(const Table& table, ValueChange_e kind, Side_e side, std::size_t row) {
    ValueChange change;
    change.kind = kind;
    change.variable = table.name;
    for (const auto& column : table.columns) {
        if (!column.isKey) continue;
        change.keys.emplace_back(column.name,
                                 TextOf(LetAt(OfSide(column, side), row)).value_or(""));
    }
    return change;
}

ValueChange OneSidedRow(const Table& table, ValueChange_e kind, Side_e side, std::size_t row) {
    auto change = MakeRowChange(table, kind, side, row);
    (side == Side_Before ? change.beforeLine : change.afterLine) = LineOfRow(table, side, row);
    for (const auto& column : table.columns) {
        auto text = TextOf(LetAt(OfSide(column, side), row));
        if (column.isKey || !text) continue;
        ValueChangeCell cell{column.name, std::nullopt, std::nullopt};
        (side == Side_Before ? cell.before : cell.after) = std::move(text);
        change.cells.push_back(std::move(cell));
    }
    return change;
}

void ComparePair(const Table& table, std::size_t before, std::size_t after,
                 std::vector<ValueChange>& changes) {
    std::vector<ValueChangeCell> cells;
    for (const auto& column : table.columns) {
        if (column.isKey) continue;
        auto old = TextOf(LetAt(column.before, before));
        auto now = TextOf(LetAt(column.after, after));
        if (old != now) cells.push_back({column.name, std::move(old), std::move(now)});
    }
    if (cells.empty()) return;
    auto change = MakeRowChange(table, ValueChange_Changed, Side_Before, before);
    change.cells = std::move(cells);
    change.beforeLine = LineOfRow(table, Side_Before, before);
    change.afterLine = LineOfRow(table, Side_After, after);
    changes.push_back(std::move(change));
}

void CompareTables(const Table& table, std::vector<ValueChange>& changes) {
    std::map<RowKey, std::deque<std::size_t>> left;
    const auto afterRows = RowCount(table, Side_After);
    for (std::size_t row = 0; row < afterRows; ++row)
        left[KeyOf(table, Side_After, row)].push_back(row);
    std::vector<char> isPaired(afterRows, 0);
    const auto beforeRows = RowCount(table, Side_Before);
    for (std::size_t row = 0; row < beforeRows; ++row) {
        const auto partners = left.find(KeyOf(table, Side_Before, row));
        if (partners == left.end() || partners->second.empty()) {
            changes.push_back(OneSidedRow(table, ValueChange_Removed, Side_Before, row));
            continue;
        }
        ComparePair(table, row, partners->second.front(), changes);
        isPaired[partners->second.front()] = 1;
        partners->second.pop_front();
    }
    for (std::size_t row = 0; row < afterRows; ++row)
        if (isPaired[row] == 0)
            changes.push_back(OneSidedRow(table, ValueChange_Added, Side_After, row));
}

void CompareScalars(const CAppVariableValue& before, const CAppVariableValue& after,
                    std::vector<ValueChange>& changes) {
    const auto* old = LetAt(&before, 0);
    const auto* now = LetAt(&after, 0);
    auto oldText = TextOf(old);
    auto newText = TextOf(now);
    if (oldText == newText) return;
    ValueChange change;
    change.variable = before.GetVariableFullName();
    change.beforeLine = oldText ? LineOf(old) : -1;
    change.afterLine = newText ? LineOf(now) : -1;
    change.cells.push_back({"", std::move(oldText), std::move(newText)});
    changes.push_back(std::move(change));
}

}  // namespace

std::vector<ValueChange> CValueDiff::Compare(const CAppVariableValue& before,
                                             const CAppVariableValue& after) {
    std::vector<ValueChange> changes;
    std::vector<std::pair<const CAppVariableValue*, const CAppVariableValue*>> pending{
        {&before, &after}};
    while (!pending.empty()) {
        const auto [old, now] = pending.back();
        pending.pop_back();
        if (old->GetDataType() == AppDataType_Table) {
            CompareTables(MakeTable(*old, *now), changes);
            continue;
        }
        CompareScalars(*old, *now, changes);
        const auto children = old->GetChildValues();
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            if (const auto* partner = FindChild(*now, (*child)->GetName()))
                pending.emplace_back(*child, partner);
    }
    return changes;
}
