#include "ratiocompare.h"

#include "host/json/hxjson.h"

#include "markdown.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <ostream>

namespace {

constexpr double LeastChange = 0.05;

struct Spread {
    double least;
    double median;
    double most;

    explicit Spread(const std::vector<double>& values)
        : least(*std::min_element(values.begin(), values.end())),
          median(Median(values)),
          most(*std::max_element(values.begin(), values.end())) {}

    double Noise() const { return (most - least) / median; }
    bool Overlaps(const Spread& other) const { return least <= other.most && other.least <= most; }
};

std::string Percent(double share) {
    return Digits(share * 100, 1) + " %";
}

const RatioRecord* Find(const std::vector<RatioRecord>& records, const std::string& what) {
    const auto at = std::find_if(records.begin(), records.end(),
                                 [&what](const auto& record) { return record.what == what; });
    return at != records.end() ? &*at : nullptr;
}

}  // namespace

double Median(std::vector<double> values) {
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    const auto middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

bool ReadRatios(const std::string& path, std::vector<RatioRecord>& records, std::string& error) {
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    hxJson::Value rows;
    if (!file || !hxJson::Reader().parse(text, rows) || !rows.isArray()) {
        error = path + " can't be read as the file of an earlier run";
        return false;
    }
    for (unsigned i = 0; i < rows.size(); ++i) {
        const auto& row = rows[i];
        RatioRecord record{
            row[RatioKey::What].asString(), row[RatioKey::LargerIsBetter].asBool(), {}};
        const auto& ratios = row[RatioKey::Ratios];
        for (unsigned r = 0; ratios.isArray() && r < ratios.size(); ++r)
            record.ratios.push_back(ratios[r].asDouble());
        if (!record.ratios.empty()) records.push_back(std::move(record));
    }
    return true;
}

bool PrintComparison(std::ostream& out, const std::vector<RatioRecord>& before,
                     const std::vector<RatioRecord>& now) {
    bool isNoneWorse = true;
    std::vector<MarkdownRow> table = {{"what", "before", "now", "change", "noise", "verdict"}};
    for (const auto& record : now) {
        const auto* earlier = Find(before, record.what);
        if (earlier == nullptr) continue;
        const Spread old(earlier->ratios);
        const Spread current(record.ratios);
        const double change = current.median / old.median - 1;
        std::string verdict = "same";
        if (std::abs(change) > LeastChange && !old.Overlaps(current))
            verdict = (change > 0) == record.largerIsBetter ? "better" : "worse";
        isNoneWorse = isNoneWorse && verdict != "worse";
        table.push_back({record.what, Digits(old.median, 3), Digits(current.median, 3),
                         Percent(change), Percent(std::max(old.Noise(), current.Noise())),
                         verdict});
    }
    PrintMarkdown(out, table);
    return isNoneWorse;
}
