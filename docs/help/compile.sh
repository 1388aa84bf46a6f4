#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# compile.sh SOURCES WORK CHM: makes the help file CHM out of the folder SOURCES, in the folder WORK, which it empties.
# The compiler takes the names in a project as they stand under the working folder, so it runs in a copy of the sources.
# It tells of files that aren't there and goes on, so its messages count. Only what it says of anchors is wrong for
# pages in a folder; check.sh looks after these. Styles and pictures come in by the pages that use them.
set -euo pipefail
sources=$1 work=$2 chm=$3
log=$work/compiler.log

rm -rf "$work"
mkdir -p "$work"
cp -R "$sources/NAVO.hhp" "$sources/NAVO.hhc" "$sources/NAVO.hhk" "$sources/REKA" "$work"
passed=1
(cd "$work" && chmcmd --verbosity 0 NAVO.hhp) >"$log" 2>&1 || passed=0
sed -i '/^Error: Anchor /d' "$log"
if grep -qE '^(Warning|Error): ' "$log" || [ ! -s "$work/NAVO.chm" ]; then passed=0; fi
if [ "$passed" -eq 0 ]; then
    cat "$log" >&2
    exit 1
fi
mv "$work/NAVO.chm" "$chm"
