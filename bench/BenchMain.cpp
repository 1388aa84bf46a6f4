// SPDX-License-Identifier: MIT
// The benchmarks' main program: checks first that all sides compute the same, then measures.

#include <benchmark/benchmark.h>

#include "bench/Evaluation_bench.h"
#include "bench/Ratios.h"

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    if (!reka::bench::RegisterEvaluation()) return 1;
    reka::bench::CRatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
