#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the example simulator and has it list the packages that the manager offers, show one, print its table and solve
# a reactor, whose profile is drawn into build/toluene-hydrodealkylation.svg. With --windows the Windows build does the
# same under Wine with the registered component, but for the drawing. Further arguments replace all that:
#   ./run.sh show "Ammonia synthesis"
set -euo pipefail
started_in=$PWD
cd "$(dirname "${BASH_SOURCE[0]}")"
. scripts/install-packages.sh
. scripts/wine-environment.sh
. scripts/example-templates.sh

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
targets=(rekasim reka_data)
if [ "$preset" = mingw64-release ]; then targets+=(reka); fi
{ cmake --preset "$preset" -DREKA_BUILD_TESTS=OFF && cmake --build --preset "$preset" --target "${targets[@]}"; } \
    >"$log" 2>&1 || { cat "$log"; exit 1; }

# The templates of this user's own stay untouched: the simulator gets a configuration folder in the build folder.
export XDG_CONFIG_HOME=$PWD/build/user
configuration=$XDG_CONFIG_HOME
simulator=("$PWD/build/$preset/bin/rekasim")
if [ "$preset" = mingw64-release ]; then
    start_wine "$PWD/build/wine-run"  # apart from that of the tests, which may run at the same time
    wine regsvr32 /s "Z:$PWD/build/$preset/bin/REKA.dll"
    simulator=(wine "$PWD/build/$preset/bin/rekasim.exe")
    configuration=$(winepath -u "$(wine cmd /c 'echo %APPDATA%' </dev/null | tr -d '\r')")
fi
bring_templates_up_to_date "build/$preset/bin/data/REKAConfig.dat" "$configuration/NAVO/data/REKAConfig.dat"

if [ "$#" -gt 0 ]; then
    cd "$started_in"
    "${simulator[@]}" "$@"
    exit
fi

documents=$PWD/examples/documents
plot=()
if [ "$preset" = native-release ]; then plot=(--plot "$PWD/build/toluene-hydrodealkylation.svg"); fi
echo "== The packages of the manager"
"${simulator[@]}" list
echo
echo "== One of them"
"${simulator[@]}" show "Toluene hydrodealkylation"
echo
echo "== Its rates"
"${simulator[@]}" table "Toluene hydrodealkylation" --material "$documents/toluene-hydrodealkylation.json" \
    --from 900 --to 980 --step 20
echo
echo "== A plug flow reactor with them"
"${simulator[@]}" reactor "Toluene hydrodealkylation" --material "$documents/toluene-hydrodealkylation.json" \
    --pfr --flow 1000 --volume 200 --points 11 "${plot[@]}"
if [ "${#plot[@]}" -gt 0 ]; then echo "drawn into ${plot[1]}"; fi
