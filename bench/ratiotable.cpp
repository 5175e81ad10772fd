#include "ratiotable.h"

#include "host/json/hxjson.h"

#include "markdown.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <locale>
#include <ostream>
#include <sstream>

namespace {

constexpr const char* Units[] = {"us", "MB/s", "ns", "MB", "KB"};

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

}  // namespace

std::vector<RatioRow>& CRatioTable::Rows() {
    static std::vector<RatioRow> rows;
    return rows;
}

bool CRatioTable::Add(const std::vector<RatioRow>& rows) {
    Rows().insert(Rows().end(), rows.begin(), rows.end());
    return true;
}

// The library's own medians count only where it keeps the repetitions to itself.
void CRatioTable::Note(const benchmark::BenchmarkReporter::Run& run) {
    using Run = benchmark::BenchmarkReporter::Run;
    if (run.error_occurred) return;
    auto& repetitions = m_figures[run.run_name.str()];
    if (run.run_type == Run::RT_Aggregate &&
        (run.aggregate_name != "median" || !repetitions.empty()))
        return;
    const bool isReal = !run.run_name.time_type.empty();
    const double time = isReal ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
    repetitions.push_back({time / benchmark::GetTimeUnitMultiplier(run.time_unit),
                           Counter(run.counters, "bytes_per_second"),
                           Counter(run.counters, "items_per_second"),
                           Counter(run.counters, "bytes")});
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
        case RatioMeasure_Kilobytes:
            return figures.bytes / 1e3;
    }
    return 0;
}

std::vector<double> CRatioTable::Values(const std::vector<Figures>& repetitions,
                                        RatioMeasure_e measure) {
    std::vector<double> values;
    for (const auto& figures : repetitions) values.push_back(Value(figures, measure));
    return values;
}

// A repetition of ours goes with the baseline's of the same number.
std::vector<CRatioTable::Line> CRatioTable::Lines() const {
    std::vector<Line> lines;
    for (const auto& row : Rows()) {
        const auto ours = m_figures.find(row.ours);
        const auto baseline = m_figures.find(row.baseline);
        if (ours == m_figures.end() || baseline == m_figures.end()) continue;
        const auto mine = Values(ours->second, row.measure);
        const auto theirs = Values(baseline->second, row.measure);
        std::vector<double> ratios;
        for (std::size_t i = 0; i < std::min(mine.size(), theirs.size()); ++i)
            if (theirs[i] > 0) ratios.push_back(mine[i] / theirs[i]);
        if (ratios.empty()) continue;
        Line line{&row, Median(mine), Median(theirs), Median(ratios), ratios, false};
        line.isMet = Holds(row.aim, line.ours, line.ratio);
        lines.push_back(std::move(line));
    }
    return lines;
}

std::vector<RatioRecord> CRatioTable::Records() const {
    std::vector<RatioRecord> records;
    for (const auto& line : Lines())
        records.push_back(
            {line.row->what, line.row->measure == RatioMeasure_Megabytes, line.ratios});
    return records;
}

void CRatioTable::Print(std::ostream& out) const {
    std::vector<MarkdownRow> table = {{"what", "unit", "ours", "baseline", "ratio", "aim", "met"}};
    for (const auto& line : Lines()) {
        const auto aim = AimText(line.row->aim);
        table.push_back({line.row->what, Units[line.row->measure], Figure(line.ours),
                         Figure(line.baseline), Digits(line.ratio, 2), aim,
                         aim.empty()  ? ""
                         : line.isMet ? "yes"
                                      : "no"});
    }
    PrintMarkdown(out, table);
}

bool CRatioTable::Write(const std::string& path) const {
    hxJson::Value rows(hxJson::arrayValue);
    for (const auto& line : Lines()) {
        auto& row = rows.append(hxJson::Value());
        row[RatioKey::What] = line.row->what;
        row["unit"] = Units[line.row->measure];
        row["ours"] = line.ours;
        row["baseline"] = line.baseline;
        row["ratio"] = line.ratio;
        auto& ratios = row[RatioKey::Ratios] = hxJson::Value(hxJson::arrayValue);
        for (const double ratio : line.ratios) ratios.append(hxJson::Value(ratio));
        row[RatioKey::LargerIsBetter] = line.row->measure == RatioMeasure_Megabytes;
        row["aim"] = AimText(line.row->aim);
        row["met"] = line.isMet;
    }
    std::ofstream file(path, std::ios::binary);
    file << rows.toStyledString();
    return static_cast<bool>(file.flush());
}
