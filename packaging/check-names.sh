#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Holds the installer, its test and rekadoctor to the registration script of the module: the identifiers and names that they
# spell out are those that it writes. Returns non-zero and says what differs when they aren't.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
script=src/server/REKA.rgs
doctor=tools/rekadoctor/RegistrationNames.h
failures=0

# Braces in a shell's pattern may be escaped, as in the text of a registry key for sed; so only what is within is taken.
identifiers() { grep -oihE '[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}' "$@" | tr a-f A-F | LC_ALL=C sort -u; }
prog_ids() { grep -ohE 'NAVO_REKA\.[A-Za-z]+(\.[0-9]+)?' "$@" | LC_ALL=C sort -u; }
# expect WHAT WANTED FOUND
expect() {
    if [ "$2" = "$3" ]; then return 0; fi
    echo "$1: $script has" $2 "and not" ${3:-anything} >&2
    failures=$((failures + 1))
}
# of_line PATTERN FILE: the identifiers in lines with the pattern.
of_line() { { grep -E "$1" "$2" || true; } | identifiers; }

class=$(of_line '^ *CLSID *=' $script)
library=$(of_line '^ *TypeLib *=' $script)
categories=$(of_line '^ *\{[^}]*\} *$' $script)
[ "$(wc -w <<<"$class $library $categories")" -eq 7 ] || { echo "$script is read wrongly" >&2; exit 1; }

expect "the class in $script" "$class" "$(of_line 'ForceRemove *\{' $script)"
expect "the class in $doctor" "$class" "$(of_line ' classId ' $doctor)"
expect "the type library in $doctor" "$library" "$(of_line ' typeLibraryId ' $doctor)"
expect "the categories in $doctor" "$categories" "$(of_line '^ *\{+"\{' $doctor)"
expect "the names in $doctor" "$(prog_ids $script)" "$(prog_ids $doctor)"
expect "the names in packaging/REKA.nsi" "$(prog_ids $script)" "$(prog_ids packaging/REKA.nsi)"
for file in packaging/REKA.nsi packaging/test-installer.sh; do
    expect "the class in $file" "$class" "$(identifiers $file)"
done
for file in packaging/*; do
    foreign=$({ identifiers "$file" || true; } | grep -vxF "$class" || true)
    expect "an identifier in $file" "" "$foreign"
    foreign=$({ prog_ids "$file" || true; } | grep -vxF "$(prog_ids $script)" || true)
    expect "a name in $file" "" "$foreign"
done
[ "$failures" -eq 0 ]
