#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the tests for it and starts mutants.py, which changes the named sources one small thing at a time.
#
#   tests/mutants/run.sh src/formula --count 60 --seed 1
#
# README.md tells the rest, --help the options. Returns non-zero when a change went unnoticed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
. scripts/install-packages.sh
install_packages "${native_packages[@]}" "${test_packages[@]}" "${mutant_packages[@]}"

build=${REKA_MUTANTS_BUILD:-$PWD/build/native-mutants}
{
    cmake --preset native-mutants -B "$build"
    nice -n 19 cmake --build "$build" --parallel "${REKA_MUTANTS_JOBS:-1}" --target \
        reka_tests rekatool_tests packagetext_tests rekadoctor_tests rekasim_tests
} >"$build.log" 2>&1 || {
    tail -n 30 "$build.log"
    exit 2
}
exec nice -n 19 python3 -B tests/mutants/mutants.py --build "$build" "$@"
