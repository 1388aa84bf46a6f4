#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Has the Windows x64 build calculate a million times, store ten thousand times and open a thousand editors under Wine, in
# a prefix of its own, and prints what the process holds meanwhile. Returns non-zero when something grew.
#
#   scripts/soak.sh 0.1    a tenth of all that
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh
. scripts/wine-environment.sh
factor=${1:-1}
if [ "$#" -gt 1 ] || ! [[ $factor =~ ^[0-9]+(\.[0-9]+)?$ ]]; then
    echo "usage: scripts/soak.sh [FACTOR]" >&2
    exit 2
fi
install_packages "${native_packages[@]}" "${test_packages[@]}" "${windows_packages[@]}"

# times COUNT: so many, by the factor.
times() { awk "BEGIN { printf \"%d\", $1 * $factor }"; }

mkdir -p build
log=build/soak.build.log
{
    cmake --preset mingw64-release -DREKA_BUILD_TESTS=ON && cmake --build --preset mingw64-release --target reka_soak reka_data
} >"$log" 2>&1 || { cat "$log"; exit 1; }
start_wine "$PWD/build/soak"
rm -f "$WINEPREFIX"/drive_c/users/*/AppData/Roaming/NAVO/data/REKAConfig.dat
wine regsvr32 /s build/mingw64-release/bin/REKA.dll
wine build/mingw64-release/tests/soak/reka_soak.exe "$(times 1000000)" "$(times 10000)" "$(times 1000)" </dev/null
