// SPDX-License-Identifier: MIT
// The main program of the benchmarks of everything but evaluation.

#include <benchmark/benchmark.h>

#include "bench/Parse_bench.h"
#include "bench/Stored_bench.h"
#include "bench/call/Call_bench.h"
#include "bench/call/Material_bench.h"

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    reka::bench::RegisterCall();
    reka::bench::RegisterMaterial();
    reka::bench::RegisterParse();
    reka::bench::RegisterStored();
    reka::bench::CTimes times;
    benchmark::RunSpecifiedBenchmarks(&times);
    reka::bench::PrintCall(times);
    reka::bench::PrintMaterial(times);
    reka::bench::PrintParse(times);
    reka::bench::PrintStored(times);
    return 0;
}
