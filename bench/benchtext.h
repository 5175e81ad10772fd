#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

class CTzParser;

// The texts and definitions that are measured. All are made here, the same bytes on every run and
// machine, so that figures of two days compare.
namespace BenchText {

using Statements = std::vector<std::string>;

// A text of 1 KB and 20 lines as "show version" prints it, and ten statements that each find their
// line in it.
const std::string& Small();
const Statements& SmallStatements();

// A text of so many lines, 50 bytes a line on the average, as "show interfaces" prints it; its last
// line stands nowhere else. Large is the one of 100 thousand lines and 5 MB.
std::string Interfaces(std::size_t lines);
const std::string& Large();
constexpr std::size_t LargeLines = 100000;

// Twelve statements whose lines all stand among the first 25 of Interfaces.
const Statements& EarlyStatements();
// Twelve that must try every line: eleven resemble lines of the text but fit none, the twelfth fits
// the last line.
const Statements& LateStatements();
// The variable that the twelfth finds.
constexpr const char* LateVariable = "interfaces";

// A definition document of so many samples, each with one keyword rule of the statements; the
// samples differ in a word of each statement.
std::string Definition(std::size_t samples, const Statements& statements);
// A parser with one sample of the statements; a fault in the benchmarks themselves ends the
// program.
std::unique_ptr<CTzParser> MakeParser(const Statements& statements);

}  // namespace BenchText
