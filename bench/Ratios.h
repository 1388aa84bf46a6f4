// SPDX-License-Identifier: MIT
// A table of the measured times with their ratios, which Google Benchmark doesn't print by itself.

#pragma once

#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace reka::bench {

/// Collects the times of benchmarks called "set:name/form/side", and prints a line for each name and form, and the
/// means of each set.
class CRatioReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    /// The median time of one evaluation in ns.
    double MedianOf(const std::string& name);
    void PrintForm(const std::string& form);

    std::vector<std::string> groups;
    std::map<std::string, std::vector<double>> times;
};

}  // namespace reka::bench
