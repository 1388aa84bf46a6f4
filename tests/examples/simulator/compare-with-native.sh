#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs rekasim of this build, which reaches the registered component, and the native one over every shipped document and
# template, and compares what they print.
#
# compare-with-native.sh NATIVE_REKASIM DOCUMENTS COMMAND...: the last is what runs rekasim of this build.
set -euo pipefail
native=$1
documents=$2
shift 2
export XDG_CONFIG_HOME=${TMPDIR:-/tmp}/reka-compare.$$
mkdir -p "$XDG_CONFIG_HOME"
trap 'rm -rf "$XDG_CONFIG_HOME"' EXIT
compared=0
different=0

# compare THIS... : the arguments of rekasim, to which both have to answer alike.
compare() {
    local expected found
    expected=$("$native" "$@" 2>&1 && echo "status 0" || echo "status $?")
    found=$("${command[@]}" "$@" 2>&1 </dev/null | tr -d '\r' && echo "status 0" || echo "status $?")
    compared=$((compared + 1))
    if [ "$expected" != "$found" ]; then
        different=$((different + 1))
        echo "different: rekasim $*"
        diff <(echo "$expected") <(echo "$found") | head -5 || true
    fi
}

command=("$@")
# Both start from the shipped templates, which are copied for a new user.
"${command[@]:0:${#command[@]}-1}" cmd /c 'del "%APPDATA%\NAVO\data\REKAConfig.dat"' </dev/null >/dev/null 2>&1 || true
compare list
for document in "$documents"/*.json; do
    compare show --document "$document"
    compare table --document "$document"
    name=$(sed -n 's/^    "Name": "\(.*\)",$/\1/p' "$document" | head -1)
    compare show "$name"
    compare table "$name" --material "$document"
done
echo "$compared outputs compared, $different different"
[ "$different" -eq 0 ] && [ "$compared" -gt 36 ]
