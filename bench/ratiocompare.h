#pragma once

#include <iosfwd>
#include <string>
#include <vector>

// The keys that a comparison reads of the file of an earlier run.
namespace RatioKey {
inline constexpr const char* What = "what";
inline constexpr const char* Ratios = "ratios";
inline constexpr const char* LargerIsBetter = "largerIsBetter";
}  // namespace RatioKey

// A row of the table of ratios as a comparison sees it.
struct RatioRecord {
    std::string what;
    bool largerIsBetter = false;
    std::vector<double> ratios;  // one a repetition, at least one
};

// The value in the middle, of two the mean of both; 0 of none.
double Median(std::vector<double> values);

// Reads what CRatioTable::Write wrote. False, with words for the user, when the file can't be read
// or holds no such table; rows without ratios are left out.
bool ReadRatios(const std::string& path, std::vector<RatioRecord>& records, std::string& error);

// Writes a table of the rows that both runs have: ratio before and now, the change in percent, the
// noise in percent (the wider spread of the repetitions of the two runs, to their median) and the
// verdict. A row is better or worse when the change is above 5 percent and no repetition of one run
// lies among those of the other; else it is the same. False when some row is worse.
//
// As each ratio is to a baseline that ran beside it, the state of the machine cancels out.
bool PrintComparison(std::ostream& out, const std::vector<RatioRecord>& before,
                     const std::vector<RatioRecord>& now);
