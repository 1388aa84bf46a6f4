// SPDX-License-Identifier: MIT
// Ratios are made of medians, since the machine does other things as well, and their mean is the geometric one: a ratio
// of two and one of a half then cancel.

#include "bench/Ratios.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace reka::bench {

namespace {

struct Means {
    std::vector<double> toNative;
    std::vector<double> toMuParser;
};

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
        times[name].push_back(run.GetAdjustedCPUTime());
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
    std::printf("\n%-38s %10s %10s %10s %12s %12s\n", form.c_str(), "REKA_ns", "C++_ns", "muParser_ns", "REKA/C++",
                "REKA/muParser");
    std::sort(groups.begin(), groups.end());  // they come in any order
    std::map<std::string, Means> means;       // by the set that a group belongs to
    for (const std::string& group : groups) {
        const double own = MedianOf(group + "/" + form + "/reka");
        const double native = MedianOf(group + "/" + form + "/native");
        const double muParser = MedianOf(group + "/" + form + "/muparser");
        if (own == 0.0 || native == 0.0 || muParser == 0.0) continue;
        std::printf("%-38s %10.2f %10.2f %10.2f %12.3f %12.3f\n", group.c_str(), own, native, muParser, own / native,
                    own / muParser);
        Means& ofSet = means[group.substr(0, group.find(':'))];
        ofSet.toNative.push_back(own / native);
        ofSet.toMuParser.push_back(own / muParser);
    }
    for (const auto& [set, ofSet] : means) {
        std::printf("%-38s %10s %10s %10s %12.3f %12.3f\n", ("mean-of-" + set).c_str(), "-", "-", "-",
                    GeometricMean(ofSet.toNative), GeometricMean(ofSet.toMuParser));
    }
}

void CRatioReporter::Finalize() {
    PrintForm("throughput");
    PrintForm("latency");
}

}  // namespace reka::bench
