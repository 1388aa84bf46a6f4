#!/usr/bin/env bash
# Builds the example simulator and prints the table of a published reaction system. With --windows it does the same with
# the Windows build under Wine. Further arguments replace those of the simulator: ./run.sh show --document FILE
set -euo pipefail
started_in=$PWD
cd "$(dirname "${BASH_SOURCE[0]}")"
. scripts/install-packages.sh
. scripts/wine-environment.sh

preset=native-release
if [ "${1:-}" = --windows ]; then
    preset=mingw64-release
    shift
fi
if [ "$preset" = native-release ]; then
    install_packages "${native_packages[@]}"
else
    install_packages "${native_packages[@]}" "${windows_packages[@]}"
fi

mkdir -p build
log=build/$preset.run.log
{ cmake --preset "$preset" -DREKA_BUILD_TESTS=OFF && cmake --build --preset "$preset" --target rekasim; } >"$log" 2>&1 ||
    { cat "$log"; exit 1; }

if [ "$#" -eq 0 ]; then
    set -- table --document "$PWD/examples/documents/methanol-synthesis.json" --from 460 --to 560 --step 20
fi
program=$PWD/build/$preset/examples/simulator/rekasim
if [ "$preset" = native-release ]; then
    cd "$started_in"
    exec "$program" "$@"
fi
start_wine "$PWD/build/wine-run"  # apart from that of the tests, which may run at the same time
cd "$started_in"
wine "$program.exe" "$@"
