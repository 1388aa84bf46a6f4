#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs the native tests and prints for each file of src/, tools/ and examples/ how many of its lines and branches they
# reach. What only Windows compiles isn't in it.
#
#   ./coverage.sh            the table; the tests are built and run
#   ./coverage.sh --lines    out of the last run, the lines that were never reached
#
# Returns non-zero when a test failed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. scripts/install-packages.sh
install_packages "${native_packages[@]}" "${test_packages[@]}" "${coverage_packages[@]}"

build=$PWD/build/native-coverage
profile=$build/tests.profdata

# cover COMMAND [OPTION...]: runs llvm-cov over all programs that the tests ran.
cover() {
    local objects=() program
    while IFS= read -r program; do objects+=(-object "$program"); done < <(
        find "$build/tests" "$build/bin" -type f -executable ! -name '*.so*' | sort)
    llvm-cov "$1" "${objects[@]:1}" -instr-profile="$profile" \
        -ignore-filename-regex="^(/usr/|$build/|$PWD/tests/)" "${@:2}"
}

if [ "${1:-}" = --lines ]; then
    cover export -format=lcov | awk -v root="$PWD/" '
        function finish() { if (first) list = list " " (first == last ? first : first "-" last); first = 0 }
        /^SF:/ { file = substr($0, 4); sub(root, "", file); list = ""; first = 0 }
        /^DA:/ {
            split(substr($0, 4), entry, ",")
            if (entry[2] != 0) { finish(); next }
            if (!first) first = entry[1]
            last = entry[1]
        }
        /^end_of_record/ { finish(); if (list != "") print file ":" list }'
    exit
fi

cmake --preset native-coverage
cmake --build --preset native-coverage
rm -rf "$build/profiles"
failed=0
# Four files for each program, into which its runs add up.
LLVM_PROFILE_FILE="$build/profiles/%4m.profraw" ctest --preset native-coverage --parallel "$(nproc)" \
    >"$build/tests.log" 2>&1 || failed=1
grep -E '^[0-9]+% tests passed|\*\*\*' "$build/tests.log" || failed=1
llvm-profdata merge -sparse -o "$profile" "$build"/profiles/*.profraw
cover report -show-region-summary=false -show-branch-summary | awk '
    BEGIN { printf "%-56s %7s %7s %8s %9s %7s %8s\n", "", "Lines", "missed", "reached", "Branches", "missed", "reached" }
    NF == 10 && $4 ~ /%|^-$/ { printf "%-56s %7s %7s %8s %9s %7s %8s\n", $1, $5, $6, $7, $8, $9, $10 }'
exit "$failed"
