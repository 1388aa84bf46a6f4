#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Tests that ./package.sh --sign signs every program and nothing else: the command marks the files it is given, by a line at
# their end. Makes the package anew without the tests, and again without marks at the end. Returns non-zero when anything failed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. packaging/checks.sh

version=$(sed -n 's/^project(REKA VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
package=$PWD/build/package
stage=$package/REKA-$version
marked=$package/marked.txt

# Called in the top folder, with a blank in its own path and an argument of its own before the file.
make_marker() {
    local folder="$package/of a signer"
    mkdir -p "$folder"
    printf '#!/bin/sh\n[ -f package.sh ] && [ "$1" = --mark ] || exit 1\nprintf "%%s\\n" "$2" >>%q\nprintf marked >>"$2"\n' \
        "$marked" >"$folder/mark.sh"
    printf '#!/bin/sh\ncase $1 in *.dll | *.exe) ;; *) exit 1 ;; esac\n' >"$folder/mark-programs.sh"
    chmod +x "$folder"/*.sh
}
is_marked() { [ "$(tail -c 6 "$1" | tr -d '\0')" = marked ]; }

# has_marks FOLDER: the programs in it, and no other file.
has_marks() {
    local file
    find "$1" -type f | while IFS= read -r file; do
        case $file in
            *.dll | *.exe) is_marked "$file" || { echo "$file is not marked" >&2; return 1; } ;;
            *) ! is_marked "$file" || { echo "$file is marked" >&2; return 1; } ;;
        esac
    done
}

sums_are_right() { (cd "$package" && sha256sum --quiet -c "REKA-$version-SHA256SUMS"); }
not_packed_by() { ! ./package.sh --tests none --sign "$1" >/dev/null 2>&1; }
not_marked() { ! is_marked "$package/REKA-$version-setup.exe" && ! is_marked "$stage/x64/REKA.dll"; }

rm -f "$marked"
make_marker
check "a command that fails ends the packing" not_packed_by false
check "so it does with the uninstaller alone" not_packed_by "'$package/of a signer/mark-programs.sh'"
check "a word that isn't known is told" has_status 2 ./package.sh --sing x
./package.sh --tests none --sign "'$package/of a signer/mark.sh' --mark"
check "the programs are marked" has_marks "$stage"
rm -rf "$package/unpacked"
unzip -q "$package/REKA-$version-windows.zip" -d "$package/unpacked"
check "so they are in the zip" has_marks "$package/unpacked"
check "the setup is marked" is_marked "$package/REKA-$version-setup.exe"
check "six programs, the uninstaller and the setup were given once" has_status 0 test "$(sort -u "$marked" | wc -l)" -eq 8
check "nothing was given twice" has_status 0 test "$(wc -l <"$marked")" -eq 8
check "the checksums are those of what is handed out" sums_are_right
./package.sh --tests none
check "nothing is marked without the option" not_marked
echo "Signing: $checks checks, $failures failed."
[ "$failures" -eq 0 ]
