// SPDX-License-Identifier: MIT
// The measured times by the names of their benchmarks, and the lines of the tables that are made of them.

#pragma once

#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace reka::bench {

/// Collects the times of all rounds: the processor's, since what else a machine does is not to count.
class CTimes : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

    /// The median time of one iteration in ns; a NaN for a benchmark that hasn't run.
    double Median(const std::string& name) const;

private:
    std::map<std::string, std::vector<double>> times;
};

/// Prints the heading of a table.
void PrintHeading(const char* text);
/// Prints one line: what was measured, the number with its unit, and behind it the aim where there is one.
void PrintFigure(const std::string& what, double number, const char* unit, const char* aim = "");

}  // namespace reka::bench
