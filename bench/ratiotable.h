#pragma once

#include "ratiocompare.h"

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

// What a row of the table shows of its two benchmarks.
enum RatioMeasure_e {
    RatioMeasure_Microseconds,  // of one iteration
    RatioMeasure_Megabytes,     // a second, of 10^6 bytes
    RatioMeasure_Nanoseconds,   // of one item
    RatioMeasure_Bytes,         // the counter "bytes", shown in units of 10^6
    RatioMeasure_Kilobytes,     // the same in units of 10^3
};

// What should hold of the row; an empty aim holds always.
struct RatioAim {
    enum Subject_e { Nothing, Ours, Ratio };
    Subject_e subject = Nothing;
    char relation = '<';  // or '>', both with equality
    double limit = 0;
};

// Two benchmarks by the names that they run under, the second being the measure of the first.
struct RatioRow {
    std::string what;
    std::string ours;
    std::string baseline;
    RatioMeasure_e measure;
    RatioAim aim;
};

// CRatioTable sets what was measured against its baseline.
//
//     const bool rows = CRatioTable::Add({{"1 KB", "Parse", "Plain", RatioMeasure_Microseconds,
//     {}}});
//
// Each source of benchmarks adds its rows when the program starts; no two rows have one name. The
// runs are noted as they end, each repetition. Ratio is ours divided by the baseline, in the unit
// shown: of rates the larger is the better, of times the smaller. What is shown are medians of the
// repetitions. Rows of which a side wasn't run are left out.
class CRatioTable {
public:
    // Always true.
    static bool Add(const std::vector<RatioRow>& rows);

    void Note(const benchmark::BenchmarkReporter::Run& run);
    // Writes the rows as a Markdown table, or nothing when there are none.
    void Print(std::ostream& out) const;
    // Writes them as a JSON array, with the ratio of each repetition; false when the file can't be
    // written.
    bool Write(const std::string& path) const;
    // The rows for a comparison with another run.
    std::vector<RatioRecord> Records() const;

private:
    struct Figures {
        double seconds = 0;
        double bytesPerSecond = 0;
        double itemsPerSecond = 0;
        double bytes = 0;
    };
    struct Line {
        const RatioRow* row;
        double ours;
        double baseline;
        double ratio;
        std::vector<double> ratios;  // of the repetitions
        bool isMet;
    };

    static std::vector<RatioRow>& Rows();
    static double Value(const Figures& figures, RatioMeasure_e measure);
    static std::vector<double> Values(const std::vector<Figures>& repetitions,
                                      RatioMeasure_e measure);
    std::vector<Line> Lines() const;

    std::map<std::string, std::vector<Figures>> m_figures;  // of each repetition
};
