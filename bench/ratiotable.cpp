#include "ratiotable.h"

#include "host/json/hxjson.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fstream>
#include <iomanip>
#include <locale>
#include <ostream>
#include <sstream>

namespace {

constexpr const char* Units[] = {"us", "MB/s", "ns", "MB"};
constexpr std::size_t ColumnCount = 7;
using Cells = std::array<std::string, ColumnCount>;

std::string Digits(double value, int decimals) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << std::fixed << std::setprecision(decimals) << value;
    return out.str();
}

// Three digits that count.
std::string Figure(double value) {
    return Digits(value, value >= 100 ? 0 : value >= 10 ? 1 : 2);
}

std::string AimText(const RatioAim& aim) {
    if (aim.subject == RatioAim::Nothing) return {};
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << (aim.subject == RatioAim::Ours ? "ours " : "ratio ") << aim.relation << ' ' << aim.limit;
    return out.str();
}

bool Holds(const RatioAim& aim, double ours, double ratio) {
    if (aim.subject == RatioAim::Nothing) return true;
    const double value = aim.subject == RatioAim::Ours ? ours : ratio;
    return aim.relation == '<' ? value <= aim.limit : value >= aim.limit;
}

double Counter(const benchmark::UserCounters& counters, const char* name) {
    const auto at = counters.find(name);
    return at != counters.end() ? at->second.value : 0;
}

void PrintCells(std::ostream& out, const Cells& cells,
                const std::array<std::size_t, ColumnCount>& widths) {
    for (std::size_t i = 0; i < ColumnCount; ++i)
        out << "| " << cells[i] << std::string(widths[i] - cells[i].size() + 1, ' ');
    out << "|\n";
}

}  // namespace

std::vector<RatioRow>& CRatioTable::Rows() {
    static std::vector<RatioRow> rows;
    return rows;
}

bool CRatioTable::Add(const std::vector<RatioRow>& rows) {
    Rows().insert(Rows().end(), rows.begin(), rows.end());
    return true;
}

void CRatioTable::Note(const benchmark::BenchmarkReporter::Run& run) {
    using Run = benchmark::BenchmarkReporter::Run;
    if (run.error_occurred) return;
    if (run.run_type == Run::RT_Aggregate && run.aggregate_name != "median") return;
    const bool isReal = !run.run_name.time_type.empty();
    const double time = isReal ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
    m_figures[run.run_name.str()] = {time / benchmark::GetTimeUnitMultiplier(run.time_unit),
                                     Counter(run.counters, "bytes_per_second"),
                                     Counter(run.counters, "items_per_second"),
                                     Counter(run.counters, "bytes")};
}

double CRatioTable::Value(const Figures& figures, RatioMeasure_e measure) {
    switch (measure) {
        case RatioMeasure_Microseconds:
            return figures.seconds * 1e6;
        case RatioMeasure_Megabytes:
            return figures.bytesPerSecond / 1e6;
        case RatioMeasure_Nanoseconds:
            return figures.itemsPerSecond > 0 ? 1e9 / figures.itemsPerSecond : 0;
        case RatioMeasure_Bytes:
            return figures.bytes / 1e6;
    }
    return 0;
}

std::vector<CRatioTable::Line> CRatioTable::Lines() const {
    std::vector<Line> lines;
    for (const auto& row : Rows()) {
        const auto ours = m_figures.find(row.ours);
        const auto baseline = m_figures.find(row.baseline);
        if (ours == m_figures.end() || baseline == m_figures.end()) continue;
        Line line{&row, Value(ours->second, row.measure), Value(baseline->second, row.measure), 0,
                  false};
        if (line.baseline <= 0) continue;
        line.ratio = line.ours / line.baseline;
        line.isMet = Holds(row.aim, line.ours, line.ratio);
        lines.push_back(line);
    }
    return lines;
}

void CRatioTable::Print(std::ostream& out) const {
    std::vector<Cells> table = {{"what", "unit", "ours", "baseline", "ratio", "aim", "met"}, {}};
    for (const auto& line : Lines()) {
        const auto aim = AimText(line.row->aim);
        table.push_back({line.row->what, Units[line.row->measure], Figure(line.ours),
                         Figure(line.baseline), Digits(line.ratio, 2), aim,
                         aim.empty()  ? ""
                         : line.isMet ? "yes"
                                      : "no"});
    }
    if (table.size() == 2) return;
    std::array<std::size_t, ColumnCount> widths{};
    for (const auto& cells : table)
        for (std::size_t i = 0; i < ColumnCount; ++i)
            widths[i] = std::max(widths[i], cells[i].size());
    for (std::size_t i = 0; i < ColumnCount; ++i) table[1][i].assign(widths[i], '-');
    out << '\n';
    for (const auto& cells : table) PrintCells(out, cells, widths);
}

bool CRatioTable::Write(const std::string& path) const {
    hxJson::Value rows(hxJson::arrayValue);
    for (const auto& line : Lines()) {
        auto& row = rows.append(hxJson::Value());
        row["what"] = line.row->what;
        row["unit"] = Units[line.row->measure];
        row["ours"] = line.ours;
        row["baseline"] = line.baseline;
        row["ratio"] = line.ratio;
        row["aim"] = AimText(line.row->aim);
        row["met"] = line.isMet;
    }
    std::ofstream file(path, std::ios::binary);
    file << rows.toStyledString();
    return static_cast<bool>(file.flush());
}
