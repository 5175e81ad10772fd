// Comparing two results of one definition. Cells of tables are paired by their rows' keys through
// an index that is made once a table; tables inside tables are gone through on an own stack.
#include "tzparser/value/appvariablevaluekeyindex.h"
#include "tzparser/variable/appvariabledef.h"

#include <memory>
#include <optional>
#include <string_view>

namespace {

enum { Equal = 0, Different = 1, NotComparable = -1 };

using Text = std::optional<std::string_view>;

int CompareTexts(const Text& mine, const Text& theirs) {
    return mine == theirs ? Equal : Different;
}

bool HaveEqualDefinitions(const CAppVariableDef* mine, const CAppVariableDef* theirs) {
    return mine != nullptr && theirs != nullptr && mine->EqualTo(theirs, true);
}

}  // namespace

// Two tables on the stack of a comparison. The first row goes with the checks of the columns, in
// which a table among them takes its turn; the other rows have columns to compare only.
struct CAppVariableValue::TablePair {
    CAppVariableValue* table;
    CAppVariableValue* other;
    std::size_t nextColumn = 0;
    int rows = 0;
    std::unique_ptr<const CKeyIndex> index = nullptr;

    // The answer that the shapes alone give; equal ones may still have rows that differ.
    int CompareShapes() {
        const auto& mine = table->m_childValues;
        const auto& theirs = other->m_childValues;
        if (mine.size() != theirs.size()) return NotComparable;
        if (mine.empty()) return Equal;
        rows = mine.front()->GetValueCount();
        return rows == theirs.front()->GetValueCount() ? Equal : Different;
    }

    int CompareCell(std::size_t column, int row, int otherRow) const {
        auto& mine = *table->m_childValues[column];
        auto& theirs = *other->m_childValues[column];
        if (mine.GetDataType() == AppDataType_Table) return Equal;
        return CompareTexts(mine.GetVariableText(row), theirs.GetVariableText(otherRow));
    }

    int CompareLaterRows() const {
        for (int row = 1; row < rows; ++row) {
            const int otherRow = index->Find(static_cast<std::size_t>(row));
            for (std::size_t column = 0; column < nextColumn; ++column)
                if (const int answer = CompareCell(column, row, otherRow)) return answer;
        }
        return Equal;
    }
};

int CAppVariableValue::GetCompareValue(CAppVariableValue* other, int row) {
    if (other == nullptr || !HaveEqualDefinitions(m_varDef, other->m_varDef)) return NotComparable;
    if (GetDataType() == AppDataType_Table) return CompareTableValue(other);
    if (GetDataType() != AppDataType_Array)
        return CompareTexts(GetVariableText(0), other->GetVariableText(row));
    std::map<std::string, std::string> keys;
    FillKeys(row, keys, false);
    return CompareTexts(GetVariableText(row),
                        other->GetVariableText(other->GetVariableIndex(keys)));
}

// The first answer that isn't "equal" is that of the whole.
int CAppVariableValue::CompareTableValue(CAppVariableValue* other) {
    std::vector<TablePair> pairs;
    const auto push = [&pairs](CAppVariableValue* mine, CAppVariableValue* theirs) {
        pairs.push_back({mine, theirs});
        auto& pair = pairs.back();
        if (const int answer = pair.CompareShapes()) return answer;
        if (pair.rows == 0)
            pairs.pop_back();
        else
            pair.index = std::make_unique<const CKeyIndex>(*mine, *theirs);
        return static_cast<int>(Equal);
    };
    if (const int answer = push(this, other)) return answer;
    while (!pairs.empty()) {
        auto& pair = pairs.back();
        if (pair.nextColumn == pair.table->m_childValues.size()) {
            if (const int answer = pair.CompareLaterRows()) return answer;
            pairs.pop_back();
            continue;
        }
        const auto column = pair.nextColumn++;
        auto* mine = pair.table->m_childValues[column].get();
        auto* theirs = pair.other->m_childValues[column].get();
        if (!HaveEqualDefinitions(mine->m_varDef, theirs->m_varDef)) return NotComparable;
        const int answer = mine->GetDataType() == AppDataType_Table
                               ? push(mine, theirs)
                               : pair.CompareCell(column, 0, pair.index->Find(0));
        if (answer != Equal) return answer;
    }
    return Equal;
}
