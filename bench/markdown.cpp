#include "markdown.h"

#include <algorithm>
#include <cstddef>
#include <iomanip>
#include <locale>
#include <ostream>
#include <sstream>

namespace {

void PrintCells(std::ostream& out, const MarkdownRow& cells,
                const std::vector<std::size_t>& widths) {
    for (std::size_t i = 0; i < widths.size(); ++i)
        out << "| " << cells[i] << std::string(widths[i] - cells[i].size() + 1, ' ');
    out << "|\n";
}

}  // namespace

void PrintMarkdown(std::ostream& out, const std::vector<MarkdownRow>& rows) {
    if (rows.size() < 2) return;
    std::vector<std::size_t> widths(rows.front().size());
    for (const auto& cells : rows)
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], cells[i].size());
    MarkdownRow rule;
    for (const auto width : widths) rule.emplace_back(width, '-');
    out << '\n';
    PrintCells(out, rows.front(), widths);
    PrintCells(out, rule, widths);
    for (std::size_t i = 1; i < rows.size(); ++i) PrintCells(out, rows[i], widths);
}

std::string Digits(double value, int decimals) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << std::fixed << std::setprecision(decimals) << value;
    return out.str();
}
