#!/usr/bin/env bash
# Builds the benchmarks and prints their table: each figure is the median of five runs of the program, and in each run the
# median of many rounds in which all that is compared takes turns.
#
#   ./bench.sh            the table
#   ./bench.sh --brief    one short run, to see that the benchmarks work
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. scripts/install-packages.sh

install_packages "${native_packages[@]}" "${bench_packages[@]}"
mkdir -p build
cmake --preset native-bench >build/native-bench.configure.log 2>&1 || { cat build/native-bench.configure.log; exit 1; }
cmake --build --preset native-bench --target reka_bench

run() {
    build/native-bench/bench/reka_bench --benchmark_enable_random_interleaving=true --benchmark_repetitions="$1" \
        --benchmark_min_time="$2"
}

if [ "${1:-}" = --brief ]; then
    run 1 0.001
    exit
fi

runs=build/native-bench/runs.txt
: >"$runs"
for _ in 1 2 3 4 5; do run 15 0.01 >>"$runs"; done
sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -1
# The lines of all runs are alike but for their figures.
awk '
    function median(line, column,    i, j, kept, sorted) {
        for (i = 1; i <= runs; ++i) sorted[i] = value[line, column, i]
        for (i = 2; i <= runs; ++i) {
            kept = sorted[i]
            for (j = i - 1; j > 0 && sorted[j] > kept; --j) sorted[j + 1] = sorted[j]
            sorted[j + 1] = kept
        }
        return sorted[int((runs + 1) / 2)]
    }
    /^(throughput|latency)/ { form = $1; if (!(form in heads)) { order[++lines] = form; heads[form] = $0 } next }
    NF {
        line = form " " $1
        if (!(line in columns)) { order[++lines] = line; columns[line] = NF }
        run = ++seen[line]
        if (run > runs) runs = run
        for (column = 2; column <= NF; ++column) value[line, column, run] = $column
    }
    END {
        for (i = 1; i <= lines; ++i) {
            line = order[i]
            if (line in heads) { print (i > 1 ? "\n" : "") heads[line]; continue }
            split(line, words, " ")
            printf "%-12s", words[2]
            skipped = 6 - columns[line]
            for (column = 1; column <= skipped - (words[2] == "e1,2,3,6"); ++column) printf " %10s", ""
            for (column = 2; column <= columns[line]; ++column) {
                place = column + skipped - (words[2] == "e1,2,3,6")
                printf (place > 4 ? " %12.3f" : " %10.2f"), median(line, column)
            }
            print ""
        }
    }' "$runs"
