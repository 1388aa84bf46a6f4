#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds and runs all tests: natively under the sanitizers, the Python module, for Windows x64 under Wine, and what is handed
# out: the installer with both widths, and the zip of the tests with those of x64.
#
#   ./test.sh PRESET...   only these builds, of native-debug, native-asan and mingw64-release
#   ./test.sh --x86       only the x86 build, under a 32-bit Wine in a 32-bit system that is made in the build folder
#
# Returns non-zero when anything failed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. scripts/install-packages.sh
. scripts/wine-environment.sh
. scripts/x86-root.sh

native_preset=native-asan  # it makes the data and the figures that the Windows builds take and compare
# The label of the tests that work dialogs by keys and clicks. One that Wine's display loses now and then is no fault of a
# dialog: what fails of these gets a second run, which has to pass. The summary tells how many runs failed.
driven=driven
dialogs=(-L "^$driven\$" --repeat until-pass:2)
manifest=WithManifest/  # before the names of those that run in a program with a manifest
failed=0

# build PRESET [OPTION...]
build() {
    echo "== Building $1"
    local preset=$1
    shift
    cmake --preset "$preset" -DREKA_BUILD_TESTS=ON "$@" >"build/$preset.configure.log" 2>&1 ||
        { cat "build/$preset.configure.log"; return 1; }
    cmake --build --preset "$preset"
}

# run_tests PRESET [OPTION...]: a failure is remembered, and the next build still gets its turn.
run_tests() {
    echo "== Testing $1"
    run_ctest "$1" "$1" "${@:2}" || failed=1
}

# run_ctest PRESET NAME [OPTION...]: NAME is that of the log and in the summary.
run_ctest() {
    local log=build/$2.test.log passed=1
    ctest --preset "$1" --parallel 2 "${@:3}" >"$log" 2>&1 || passed=0
    grep -qaE '^[0-9]+% tests passed' "$log" || passed=0
    if [ "$passed" -eq 0 ]; then grep -avE '^ *(Start|[0-9]+/[0-9]+ Test .* Passed)' "$log" || true; fi
    local repeated
    repeated=$(grep -acE 'Test +#[0-9]+: .*\*\*\*(Failed|Timeout|Exception|Not Run)' "$log" || true)
    summarize "$2" "$(grep -aE '^[0-9]+% tests passed' "$log" || echo 'no test ran'), $repeated runs failed"
    [ "$passed" -eq 1 ]
}

# summarize NAME TEXT: a line of the summary, in the order in which they come.
summarize() { echo "$1: $2" >>build/summary.txt; }

# run_in_session FOLDER PRESET NAME [OPTION...]: under an emulated Windows of its own, which ends with it.
run_in_session() (
    start_wine "$PWD/build/$1" || { summarize "$3" "its session did not start"; exit 1; }
    # Those of an earlier run may be older than what is shipped, and nobody answers the question which to take.
    rm -f "$WINEPREFIX"/drive_c/users/*/AppData/Roaming/NAVO/data/REKAConfig.dat
    run_ctest "${@:2}"
)

# What the Windows builds are compared with.
make_native_figures() {
    build "$native_preset"
    run_tests "$native_preset" -R '^figures$'
}

test_windows_x64() {
    build mingw64-release -DREKA_NATIVE_PRESET="$native_preset"
    echo "== Testing mingw64-release"
    # Those that work dialogs need a screen for themselves and wait for most of their time, so each half of them has its
    # own beside that of all others.
    local sessions=() session
    run_in_session wine-x64 mingw64-release mingw64-release -LE "^$driven\$" &
    sessions+=($!)
    run_in_session wine-x64-dialogs mingw64-release mingw64-release-dialogs "${dialogs[@]}" -E "^$manifest" &
    sessions+=($!)
    run_in_session wine-x64-manifest mingw64-release mingw64-release-manifest "${dialogs[@]}" -R "^$manifest" &
    sessions+=($!)
    for session in "${sessions[@]}"; do wait "$session" || failed=1; done
}

test_python_module() {
    install_packages "${python_packages[@]}"
    echo "== Testing the Python module"
    local log=build/python.test.log
    tests/python/check-module.sh >"$log" 2>&1 || { failed=1; cat "$log"; }
    summarize python "$(grep -E '^(Ran|FAILED)' "$log" | tr '\n' ' ')"
}

test_packages() {
    cmake --preset mingw32-release -DREKA_BUILD_TESTS=OFF -DREKA_NATIVE_PRESET="$native_preset" \
        >build/mingw32-release.configure.log
    echo "== Testing the signing"
    test_package signing packaging/test-signing.sh
    ./package.sh --tests x64
    echo "== Testing the tests' zip"
    test_package tests-zip packaging/test-tests-zip.sh
    echo "== Testing the installer"
    test_package installer packaging/test-installer.sh
}

# test_package NAME SCRIPT: NAME is that of the log and in the summary.
test_package() {
    local log=build/$1.test.log
    "$2" >"$log" 2>&1 || { failed=1; cat "$log"; }
    summarize "$1" "$(tail -1 "$log")"
}

test_x86() {
    make_x86_root
    make_native_figures
    build mingw32-release -DREKA_NATIVE_PRESET="$native_preset"
    put_into_x86_root build/mingw32-release "build/$native_preset/figures.txt" examples/documents data docs
    start_x86_wine
    trap 'echo "$at_end"; print_summary; on_exit; stop_display' EXIT
    run_tests mingw32-release -LE "^$driven\$"
    run_ctest mingw32-release mingw32-release-dialogs "${dialogs[@]}" || failed=1
}

print_summary() {
    grep -aE '^Total Test time' build/*.test.log | sed 's/^build\///; s/\.test\.log:/: /' || true
    cat build/summary.txt 2>/dev/null || true
}

install_packages "${native_packages[@]}" "${test_packages[@]}" "${fuzz_packages[@]}" "${windows_packages[@]}"
mkdir -p build
rm -f build/*.test.log build/summary.txt
at_end='Ended early.'  # unless all has had its turn
trap 'echo "$at_end"; print_summary' EXIT
if [ "${1:-}" = --x86 ]; then
    install_packages "${x86_packages[@]}"
    test_x86
elif [ "$#" -gt 0 ]; then
    for preset in "$@"; do
        if [ "$preset" = mingw64-release ]; then
            make_native_figures
            test_windows_x64
        else
            build "$preset"
            run_tests "$preset"
        fi
    done
else
    build "$native_preset"
    run_tests "$native_preset"
    test_python_module
    test_windows_x64
    test_packages
fi
at_end=
exit "$failed"
