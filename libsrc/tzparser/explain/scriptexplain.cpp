// Explaining a script rule: the words of a script that failed, otherwise what it gave back. It gets
// the whole text whatever lines are open, and bounds play no part.
#include "tzparser/explain/kindexplain.h"
#include "tzparser/script/appparserulescript.h"

#include <algorithm>

namespace {

// So many variables are told of one by one.
constexpr std::size_t MostVariables = 20;

using Cells = std::map<int, CAppTextLet>;

// A declared column has a row -1 too, which is no row.
std::size_t RowsOf(const Cells& cells) {
    return static_cast<std::size_t>(std::distance(cells.lower_bound(0), cells.end()));
}

void TellVariables(CExplainScope& scope, CAppParseRuleScript& rule) {
    std::size_t told = 0;
    for (const auto& [name, cells] : rule.GetVariablePos()) {
        const auto first = cells.lower_bound(0);
        if (first == cells.end()) continue;
        if (told++ < MostVariables) scope.Tell(name + " = " + Quoted(first->second.text));
    }
    if (told > MostVariables)
        scope.Tell("... and " + CountInWords(told - MostVariables, "more variable"));
}

void TellTables(CExplainScope& scope, CAppParseRuleScript& rule) {
    for (const auto& [table, columns] : rule.GetTableVariablePos()) {
        std::size_t rows = 0;
        for (const auto& column : columns) rows = std::max(rows, RowsOf(column.second));
        const auto name = table.substr(!table.empty() && table.front() == '$' ? 1 : 0);
        const auto words = "table " + Quoted(name) + ": " + CountInWords(columns.size(), "column") +
                           ", " + CountInWords(rows, "row");
        if (rows > 0)
            scope.Tell(words);
        else
            scope.Warn(words);
    }
}

}  // namespace

void ExplainScript(CExplainScope& scope) {
    auto* rule = dynamic_cast<CAppParseRuleScript*>(&scope.Rule());
    if (rule == nullptr) return;
    for (const auto& run : scope.Runs()) scope.NoteRun(run, rule->LineStatus());
    scope.Below().clear();
    if (scope.Runs().empty()) return;
    if (!rule->GetLastError().empty()) {
        scope.Warn("the script failed: " + rule->GetLastError());
        return;
    }
    if (rule->GetVariablePos().empty() && rule->GetTableVariablePos().empty())
        scope.Warn("the script gave nothing back");
    TellVariables(scope, *rule);
    TellTables(scope, *rule);
}
