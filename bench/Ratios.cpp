// SPDX-License-Identifier: MIT
// Ratios are made of medians, since the machine does other things as well, and their mean is the geometric one: a ratio
// of two and one of a half then cancel.

#include "bench/Ratios.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace reka::bench {

namespace {

double GeometricMean(const std::vector<double>& values) {
    double sum = 0;
    for (const double value : values) sum += std::log(value);
    return values.empty() ? 0.0 : std::exp(sum / static_cast<double>(values.size()));
}

}  // namespace

bool CRatioReporter::ReportContext(const Context&) {
    return true;
}

void CRatioReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
        const std::string& name = run.run_name.function_name;
        times[name].push_back(run.GetAdjustedRealTime());
        const std::string group = name.substr(0, name.find('/'));
        if (std::find(groups.begin(), groups.end(), group) == groups.end()) groups.push_back(group);
    }
}

double CRatioReporter::MedianOf(const std::string& name) {
    std::vector<double>& all = times[name];
    if (all.empty()) return 0.0;
    const auto middle = all.begin() + static_cast<std::ptrdiff_t>(all.size() / 2);
    std::nth_element(all.begin(), middle, all.end());
    return *middle;
}

void CRatioReporter::PrintForm(const std::string& form) {
    std::printf("\n%-12s %10s %10s %10s %12s %12s\n", form.c_str(), "REKA ns", "C++ ns", "muParser", "REKA/C++",
                "REKA/muParser");
    std::vector<double> toNative;
    std::vector<double> toMuParser;
    std::vector<double> toNativeOfFunctions;  // of the formulas whose time goes into functions
    // They come in any order.
    std::sort(groups.begin(), groups.end(), [](const std::string& left, const std::string& right) {
        return std::pair(left.size() > 2, left) < std::pair(right.size() > 2, right);
    });
    for (const std::string& group : groups) {
        const double own = MedianOf(group + "/" + form + "/reka");
        const double native = MedianOf(group + "/" + form + "/native");
        const double muParser = MedianOf(group + "/" + form + "/muparser");
        if (own == 0.0 || native == 0.0 || muParser == 0.0) continue;
        std::printf("%-38s %10.2f %10.2f %10.2f %12.3f %12.3f\n", group.c_str(), own, native, muParser, own / native,
                    own / muParser);
        if (group.size() > 2) continue;  // the means are those of e1 to e6
        toNative.push_back(own / native);
        toMuParser.push_back(own / muParser);
        if (group != "e4" && group != "e5") toNativeOfFunctions.push_back(own / native);
    }
    std::printf("%-38s %10s %10s %10s %12.3f %12.3f\n", "mean", "", "", "", GeometricMean(toNative),
                GeometricMean(toMuParser));
    std::printf("%-38s %10s %10s %10s %12.3f\n", "e1,2,3,6", "", "", "", GeometricMean(toNativeOfFunctions));
}

void CRatioReporter::Finalize() {
    PrintForm("throughput");
    PrintForm("latency");
}

}  // namespace reka::bench
