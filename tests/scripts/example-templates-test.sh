#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# What becomes of the example simulator's templates when the shipped ones change, and when a person has changed them.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/example-templates.sh"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
shipped=$folder/shipped.dat
own=$folder/user/NAVO/data/REKAConfig.dat
failures=0

# ship TEXT TIME: a version of the shipped file.
ship() {
    echo "$1" >"$shipped"
    touch -d "$2" "$shipped"
}

# expect WHAT CONTENT SAID: brings the templates up to date; then OWN holds CONTENT and isn't older, and SAID was printed.
expect() {
    local said status=0
    said=$(bring_templates_up_to_date "$shipped" "$own" 2>&1) || status=$?
    if [ "$status" -ne 0 ] || [ "$(cat "$own")" != "$2" ] || [ "$own" -ot "$shipped" ] || [ "$said" != "$3" ]; then
        echo "failed: $1: status $status, holds \"$(cat "$own")\", said \"$said\""
        failures=$((failures + 1))
    fi
}

kept="Kept, since it was changed here: $own (delete it to get the templates of this version)"
ship one "2026-01-01"
expect "a first run copies" one ""
expect "a second run changes nothing" one ""
ship two "2026-01-02"
expect "what was made here is replaced" two ""
ship three "2025-01-01"
expect "also by one with an older time" three ""
echo mine >"$own"
touch -d "2024-01-01" "$own"
expect "what a person has changed stays" mine "$kept"
expect "and stays" mine "$kept"
ship four "2030-01-01"
expect "whatever is shipped" mine "$kept"
rm "$own"
expect "until it is deleted" four ""
ship five "2030-01-02"
expect "and is made here again" five ""
rm "$own.made"
expect "one that is the shipped one counts as made here" five ""
ship six "2030-01-03"
expect "without a record, too" six ""
rm "$own.made"
ship seven "2030-01-04"
expect "one of unknown origin stays" six "$kept"
rm "$shipped"
if said=$(bring_templates_up_to_date "$shipped" "$own" 2>&1) ||
    [ "$said" != "There are no templates to copy: $shipped is missing." ]; then
    echo "failed: nothing to copy: said \"$said\""
    failures=$((failures + 1))
fi
[ "$failures" -eq 0 ]
