#!/usr/bin/env bash
# Builds every build and runs all tests: natively, under the sanitizers, and for Windows x64 under Wine. The x86 build is
# compiled without tests and examples, which nothing here could run. Returns non-zero when anything failed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. scripts/install-packages.sh
. scripts/wine-environment.sh

install_packages "${native_packages[@]}" "${test_packages[@]}" "${fuzz_packages[@]}" "${windows_packages[@]}"

summary=()
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

# run_tests PRESET: a failure is remembered, and the next build still gets its turn.
run_tests() {
    echo "== Testing $1"
    local log=build/$1.test.log passed=1
    ctest --preset "$1" --parallel 2 >"$log" 2>&1 || passed=0
    grep -qE '^[0-9]+% tests passed' "$log" || passed=0
    if [ "$passed" -eq 0 ]; then
        failed=1
        grep -vE '^ *(Start|[0-9]+/[0-9]+ Test .* Passed)' "$log" || true
    fi
    summary+=("$1: $(grep -E '^[0-9]+% tests passed' "$log" || echo 'no test ran')")
}

mkdir -p build
for preset in native-debug native-asan mingw64-release; do build "$preset"; done
build mingw32-release -DREKA_BUILD_TESTS=OFF -DREKA_BUILD_EXAMPLES=OFF
run_tests native-debug
run_tests native-asan
start_wine "$PWD/build/wine-x64"
run_tests mingw64-release

echo
grep -E '^Total Test time' build/*.test.log | sed 's/^build\///; s/\.test\.log:/: /' || true
printf '%s\n' "${summary[@]}"
exit "$failed"
