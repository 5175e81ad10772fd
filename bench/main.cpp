// tzbench: runs the benchmarks and ends with the table of ratios.
#include "ratiocompare.h"
#include "ratiotable.h"

#include <cstddef>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr const char* TableFlag = "--table";
constexpr const char* CompareFlag = "--compare";

// Repetitions tell the noise from a change; mixed with one another they share the machine's moods.
// What the user says about any of these comes behind and holds.
constexpr const char* Defaults[] = {"--benchmark_repetitions=5", "--benchmark_min_time=0.2",
                                    "--benchmark_enable_random_interleaving=true"};
constexpr std::string_view FormatFlag = "--benchmark_format=";

// Shows what the flags ask for, of repetitions the medians alone, and notes the figures for the
// table.
class CTableReporter : public benchmark::BenchmarkReporter {
public:
    CTableReporter(std::unique_ptr<benchmark::BenchmarkReporter> display, CRatioTable& table)
        : m_display(std::move(display)), m_table(table) {}

    bool ReportContext(const Context& context) override {
        m_display->SetOutputStream(&GetOutputStream());
        m_display->SetErrorStream(&GetErrorStream());
        return m_display->ReportContext(context);
    }
    void ReportRuns(const std::vector<Run>& runs) override {
        std::vector<Run> shown;
        for (const auto& run : runs) {
            m_table.Note(run);
            const bool isShown = run.run_type == Run::RT_Aggregate ? run.aggregate_name == "median"
                                                                   : run.repetitions < 2;
            if (isShown) shown.push_back(run);
        }
        if (!shown.empty()) m_display->ReportRuns(shown);
    }
    void Finalize() override { m_display->Finalize(); }

private:
    std::unique_ptr<benchmark::BenchmarkReporter> m_display;
    CRatioTable& m_table;
};

void PrintHelp() {
    std::cout << "tzbench [--table FILE] [--compare FILE]\n"
                 "  --table FILE     FILE gets the table of ratios as JSON\n"
                 "  --compare FILE   sets the ratios beside those in FILE, the table of an earlier "
                 "run;\n"
                 "                   exit status 1 when a row is clearly worse\n"
                 "and the flags of the benchmark library, of which this program sets\n ";
    for (const char* flag : Defaults) std::cout << ' ' << flag;
    std::cout << '\n';
    benchmark::PrintDefaultHelp();
}

// A report for a program isn't mixed with a table for people.
bool WantsReportForPrograms(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument.substr(0, FormatFlag.size()) == FormatFlag &&
            argument.substr(FormatFlag.size()) != "console")
            return true;
    }
    return false;
}

// Takes a flag and its value out of the arguments; empty when the flag isn't there.
std::string TakeValue(std::vector<char*>& arguments, std::string_view flag) {
    for (std::size_t i = 1; i + 1 < arguments.size(); ++i) {
        if (arguments[i] != flag) continue;
        const std::string value = arguments[i + 1];
        const auto at = arguments.begin() + static_cast<std::ptrdiff_t>(i);
        arguments.erase(at, at + 2);
        return value;
    }
    return {};
}

int Fail(const std::string& words) {
    std::cerr << "tzbench: " << words << '\n';
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<char*> arguments(argv, argv + argc);
    const auto tablePath = TakeValue(arguments, TableFlag);
    const auto earlierPath = TakeValue(arguments, CompareFlag);
    std::vector<std::string> defaults(std::begin(Defaults), std::end(Defaults));
    std::size_t place = 1;
    for (auto& flag : defaults)
        arguments.insert(arguments.begin() + static_cast<std::ptrdiff_t>(place++), flag.data());
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);

    std::vector<RatioRecord> earlier;
    std::string error;
    if (!earlierPath.empty() && !ReadRatios(earlierPath, earlier, error)) return Fail(error);
    auto& tableOut = WantsReportForPrograms(argc, argv) ? std::cerr : std::cout;
    benchmark::Initialize(&count, arguments.data(), PrintHelp);
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
    CRatioTable table;
    CTableReporter reporter(
        std::unique_ptr<benchmark::BenchmarkReporter>(benchmark::CreateDefaultDisplayReporter()),
        table);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    table.Print(tableOut);
    if (!tablePath.empty() && !table.Write(tablePath)) return Fail("can't write " + tablePath);
    if (earlierPath.empty()) return 0;
    return PrintComparison(tableOut, earlier, table.Records()) ? 0 : 1;
}
