#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs clang-tidy, with the checks of .clang-tidy, over the sources of the product: src/, tools/ and examples/, as far as
# they are compiled natively. A finding is a failure. FILE...: over these alone.
set -euo pipefail
files=()
for file in "$@"; do files+=("$(realpath "$file")"); done
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh
install_packages "${native_packages[@]}" "${fuzz_packages[@]}" "${check_packages[@]}"

preset=native-tidy
mkdir -p build
{ cmake --preset "$preset" && cmake --build --preset "$preset" --target reka_grammar; } >"build/$preset.log" 2>&1 ||
    { cat "build/$preset.log"; exit 1; }
if [ "$#" -eq 0 ]; then
    mapfile -t files < <(sed -n 's|^ *"file": "\(.*\)".*|\1|p' "build/$preset/compile_commands.json" |
        grep -E '/(src|tools|examples)/[^"]*\.cpp$' | grep -v "/build/$preset/")
fi
if [ "${#files[@]}" -eq 0 ]; then
    echo "build/$preset/compile_commands.json names no sources." >&2
    exit 1
fi
failed=0
printf '%s\0' "${files[@]}" |
    xargs -0 -n 1 -P "$(nproc)" sh -c '
        found=$(clang-tidy -p "$0" --quiet --warnings-as-errors="*" "$1" 2>/dev/null) || { echo "$found"; exit 1; }
    ' "build/$preset" || failed=1
echo "clang-tidy has read ${#files[@]} files."
exit "$failed"
