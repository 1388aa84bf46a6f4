// SPDX-License-Identifier: MIT
// Times of the processor rather than of the clock, the median of the repetitions. A figure that was left out of a run
// is no line of the table, so one program prints the long table and the short one.

#include "bench/Times.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace reka::bench {

bool CTimes::ReportContext(const Context&) {
    return true;
}

void CTimes::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
        times[run.run_name.function_name].push_back(run.GetAdjustedCPUTime());
    }
}

double CTimes::Median(const std::string& name) const {
    const auto found = times.find(name);
    if (found == times.end()) return std::numeric_limits<double>::quiet_NaN();
    std::vector<double> sorted = found->second;
    std::sort(sorted.begin(), sorted.end());
    return sorted[sorted.size() / 2];
}

void PrintHeading(const char* text) {
    std::printf("\n%s\n", text);
}

void PrintFigure(const std::string& what, double number, const char* unit, const char* aim) {
    if (std::isnan(number)) return;  // was left out of this run
    std::printf("  %-58s %12.*f %-9s %s\n", what.c_str(), number < 100.0 ? 2 : 0, number, unit, aim);
}

}  // namespace reka::bench
