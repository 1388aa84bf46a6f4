#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the benchmarks and prints their tables. Each figure is the median of many rounds in which all that is compared
# takes turns; those of evaluation are the medians of five such runs.
#
#   ./bench.sh            the tables
#   ./bench.sh --brief    one short run of each, to see that the benchmarks work
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. scripts/install-packages.sh
. scripts/wine-environment.sh

# build PRESET TARGET...
build() {
    cmake --preset "$1" >"build/$1.configure.log" 2>&1 || { cat "build/$1.configure.log"; return 1; }
    cmake --build --preset "$1" --target "${@:2}"
}

install_packages "${native_packages[@]}" "${bench_packages[@]}" "${windows_packages[@]}"
mkdir -p build
build native-bench reka_bench reka_work_bench
build mingw64-bench reka reka_dll_bench

# run PROGRAM REPETITIONS SECONDS
run() {
    "build/native-bench/bench/$1" --benchmark_enable_random_interleaving=true --benchmark_repetitions="$2" \
        --benchmark_min_time="$3"
}

# The module under Wine, in a prefix of its own.
run_module() {
    start_wine "$PWD/build/wine-bench"
    printf '\nThe whole call through the module, under Wine\n'
    timeout 300 wine build/mingw64-bench/bench/win/reka_dll_bench.exe "$(module_path)" "$@" </dev/null
}

module_path() {
    winepath -w "$PWD/build/mingw64-bench/bin/REKA.dll" 2>/dev/null | tr -d '\r'
}

if [ "${1:-}" = --brief ]; then
    run reka_bench 1 0.001
    run reka_work_bench 1 0.001
    run_module brief
    exit
fi

runs=build/native-bench/runs.txt
: >"$runs"
for _ in 1 2 3 4 5; do run reka_bench 15 0.003 >>"$runs"; done
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
    $2 == "REKA_ns" { form = $1; if (!(form in heads)) { order[++lines] = form; heads[form] = $0 } next }
    NF {
        line = form " " $1
        if (!(line in seen)) order[++lines] = line
        run = ++seen[line]
        if (run > runs) runs = run
        for (column = 2; column <= NF; ++column) value[line, column, run] = $column
    }
    END {
        for (i = 1; i <= lines; ++i) {
            line = order[i]
            if (line in heads) { print (i > 1 ? "\n" : "") heads[line]; continue }
            split(line, words, " ")
            printf "%-38s", words[2]
            for (column = 2; column <= 4; ++column) {
                figure = median(line, column)
                printf (figure == "-" ? " %10s" : " %10.2f"), figure
            }
            printf " %12.3f %12.3f%s\n", median(line, 5), median(line, 6), median(line, 6) < 1 ? "" : " above muParser"
        }
    }' "$runs"
run reka_work_bench 9 0.02
run_module
