// tzbench: runs the benchmarks and ends with the table of ratios.
#include "ratiotable.h"

#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr std::string_view TableFlag = "--table";
constexpr std::string_view FormatFlag = "--benchmark_format=";

// Shows what the flags ask for and notes the figures for the table.
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
        for (const auto& run : runs) m_table.Note(run);
        m_display->ReportRuns(runs);
    }
    void Finalize() override { m_display->Finalize(); }

private:
    std::unique_ptr<benchmark::BenchmarkReporter> m_display;
    CRatioTable& m_table;
};

void PrintHelp() {
    std::cout << "tzbench [--table FILE]   FILE gets the table of ratios as JSON\n"
                 "and the flags of the benchmark library:\n";
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

// Takes the flag and its value out of the arguments; empty when the flag isn't there.
std::string TakeTablePath(int& argc, char** argv) {
    for (int i = 1; i + 1 < argc; ++i) {
        if (argv[i] != TableFlag) continue;
        const std::string path = argv[i + 1];
        for (int next = i + 2; next <= argc; ++next) argv[next - 2] = argv[next];
        argc -= 2;
        return path;
    }
    return {};
}

}  // namespace

int main(int argc, char** argv) {
    const auto path = TakeTablePath(argc, argv);
    auto& tableOut = WantsReportForPrograms(argc, argv) ? std::cerr : std::cout;
    benchmark::Initialize(&argc, argv, PrintHelp);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    CRatioTable table;
    CTableReporter reporter(
        std::unique_ptr<benchmark::BenchmarkReporter>(benchmark::CreateDefaultDisplayReporter()),
        table);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    table.Print(tableOut);
    benchmark::Shutdown();
    if (path.empty() || table.Write(path)) return 0;
    std::cerr << "tzbench: can't write " << path << '\n';
    return 1;
}
