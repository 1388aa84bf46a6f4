#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the fuzzers and runs each for a number of seconds: scripts/fuzz.sh [SECONDS, 20 if not given]. What is found is
# kept in build/native-fuzz/found.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh
install_packages "${native_packages[@]}" "${fuzz_packages[@]}"

seconds=${1:-20}
cmake --preset native-fuzz
cmake --build --preset native-fuzz

export ASAN_OPTIONS=detect_stack_use_after_return=1
build=$PWD/build/native-fuzz
mkdir -p "$build/found"
for fuzzer in "$build"/fuzz/fuzz_*; do
    name=${fuzzer##*/fuzz_}
    mkdir -p "$build/corpus/$name" "$build/seeds/$name"
    log=$build/$name.log
    "$fuzzer" -max_total_time="$seconds" -timeout=30 -rss_limit_mb=4096 -artifact_prefix="$build/found/$name-" \
        "$build/corpus/$name" "$build/seeds/$name" >"$log" 2>&1 || { tail -n 60 "$log"; exit 1; }
    echo "$name: $(grep -E '^Done [0-9]+ runs' "$log")"
done
echo "All fuzzers ran for $seconds s and found nothing."
