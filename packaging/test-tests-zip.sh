#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Tests the zip of the tests that ./package.sh made, under 64-bit Wine in a prefix of its own: runs a selection of suites by
# run-tests.cmd from a folder whose name has blanks, brackets and letters of no code page, twice, and has it report what
# fails. Returns non-zero when anything failed.
#
#   packaging/test-tests-zip.sh --whole   runs all that the zip has, once, and shows the report
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh
. scripts/wine-environment.sh
. packaging/checks.sh
install_packages "${windows_packages[@]}" "${package_packages[@]}"
export LC_ALL=C.UTF-8  # as which Wine reads the names of files

version=$(sed -n 's/^project(REKA VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
package=$PWD/build/package
name=REKA-$version-tests
work=$PWD/build/test-tests-zip
folder="$work/a folder (1) Größe 水/$name"
report=$folder/results/report.txt
class='Software\Classes\CLSID\{95E42661-1916-4261-8FCC-6F598A19E544}'

run_tests() { (cd "$folder" && wine cmd /c run-tests.cmd "$@" </dev/null >"$work/printed.txt" 2>&1); }
says() { tr -d '\r' <"$report" | grep -qxF -- "$1" || { cat "$report"; echo "no line '$1'" >&2; return 1; }; }
says_part() { grep -qF -- "$1" "$report" || { cat "$report"; echo "no '$1'" >&2; return 1; }; }
prints() { grep -qF -- "$1" "$work/printed.txt" || { cat "$work/printed.txt"; echo "no '$1' printed" >&2; return 1; }; }
without_date() { tr -d '\r' <"$report" | grep -v '^Date: '; }
sums_are_right() { (cd "$package" && grep -q " $name.zip\$" "REKA-$version-SHA256SUMS" &&
    sha256sum --quiet -c "REKA-$version-SHA256SUMS"); }
is_unregistered() { has_no_key "HKLM\\$class" && has_no_key "HKCU\\$class" && has_no_key 'HKCU\Software\NAVO'; }
# In Wine nothing but the run itself makes the user's folder.
is_user_untouched() { [ "$(cat "$WINEPREFIX"/drive_c/users/*/AppData/Roaming/NAVO/data/REKAConfig.dat)" = mine ]; }

unpack() {
    rm -rf "$work/a folder"* "$work/x64"
    mkdir -p "${folder%/*}"
    unzip -q "$package/$name.zip" -d "${folder%/*}"
    mkdir -p "$folder/x86"  # this Wine has no 32-bit side, whether the zip has that width or not
}

what_passes() {
    local selection=(--only "x64 reka_tests/Utf8" --only "x64 rekasim_tests/Shipped" --only "x64 rekadoctor_tests/"
        --only "x64 reka_figures" --only "x64 reka_editor_tests_with_manifest/WindowDpi" --only "x64 reka_com_tests/")
    echo "== What passes, twice"
    check "all passes" has_status 0 run_tests "${selection[@]}"
    without_date >"$work/first.txt"
    check "all passes again" has_status 0 run_tests "${selection[@]}"
    check "the report is the same" diff <(without_date) "$work/first.txt"
    check "it has the code page" says "Code page: 1252, of consoles 437"
    check "it has the screen" says "Screen: 2880 x 2160, 96 dots per inch"
    check "it has the system" says_part ", 64-bit, which is Wine "
    check "it has a program" says "x64 rekasim_tests"
    check "it names what wants a registration" says \
        "  x64 reka_com_tests: they register REKA, for which they want --register"
    check "it names what holds under Wine alone" says \
        "  the expression editor in the code pages 932 and 65001: Windows has one for all programs"
    check "it names the width that can't run" says "  x86: this Windows runs no programs of that width"
    check "nothing is registered" is_unregistered
}

what_fails() {
    echo "== What fails"
    mv "$folder/x64/FakeHelp.dll" "$folder/x64/data/Korvex1.pcd" "$work/"
    check "the status tells of it" has_status 1 run_tests --only "x64 reka_editor_tests/HtmlHelp" \
        --only "x64 rekasim_tests/ShippedCompounds"
    check "its words are there" says_part "Value of: library"
    check "its picture is there" says_part "picture: pictures\\x64-reka_editor_tests-failure-"
    check "the picture is one" has_status 0 sh -c "head -c 2 \"\$1\"/*.bmp | grep -q BM" - "$folder/results/pictures"
    check "it stands at the end" says "  x64 rekasim_tests: ShippedCompounds.AreMany"
    mv "$work/FakeHelp.dll" "$folder/x64/"
    mv "$work/Korvex1.pcd" "$folder/x64/data/"
    check "a selection of nothing isn't well" has_status 1 run_tests --only nothing
    check "a word that isn't known is told" has_status 2 run_tests --regster
    mv "$folder/x64" "$work/x64"
    check "a width that isn't there is told" has_status 2 run_tests
    check "by name" prints "The tests can't be run here: the folder x64 isn't there. Unpack the whole zip."
    mv "$work/x64" "$folder/"
}

# A key, a value or a file that was there before is left as it is.
what_registers() {
    local data
    echo "== What registers"
    data=$(dirname "$(find "$WINEPREFIX/drive_c/users" -path '*/AppData/Roaming' ! -path '*/Public/*')")/Roaming/NAVO/data
    mkdir -p "$data"
    wine reg add 'HKCU\Software\NAVO' /v Mine /d 1 /f >/dev/null
    check "what has settings isn't tried" has_status 2 run_tests --register --only x64\ reka_com_tests/Exports
    check "the report says so" says_part "REKA is registered here or has settings"
    check "nor is all well with other tests" has_status 2 run_tests --register --only "x64 reka_tests/Utf8"
    check "the console says so" prints "The tests that register REKA were not run: REKA is registered here or has settings"
    check "and how the others went" prints "All else is well: see "
    wine reg delete 'HKCU\Software\NAVO' /f >/dev/null
    check "it passes" has_status 0 run_tests --register --only "x64 reka_com_tests/MainRoad" --only "x64 rekadoctor" \
        --only "x64 reka_registration_tests/Registration"
    check "the registration is told" says "Registration: by turns of each width, and removed again"
    check "it names what holds under Wine alone" says_part \
        "Registration.TwiceIsLikeOnce: nothing beside the component's keys changes in the registry"
    check "nothing is registered any more" is_unregistered
    check "no templates stay behind" is_gone "$data/REKAConfig.dat"
    mkdir -p "$data"
    echo mine >"$data/REKAConfig.dat"
    check "a user's templates stay" has_status 2 run_tests --register --only "x64 reka_com_tests/MainRoad"
    check "they are as they were" is_user_untouched
    check "the report says why" says_part "this account has templates of its own, which stay untouched"
    rm -r "$(dirname "$data")"
}

if [ ! -f "$package/$name.zip" ]; then
    echo "$package/$name.zip is missing: run ./package.sh first" >&2
    exit 1
fi
unpack
start_wine "$work"
# A test program that crashes is to end; Wine's debugger would stay.
wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /d '' /f >/dev/null
if [ "${1:-}" = --whole ]; then
    status=0
    run_tests --register || status=$?
    cat "$report"
    exit "$status"
fi
check "the checksums are those of what is handed out" sums_are_right
what_passes
what_fails
what_registers
echo "The tests' zip: $checks checks, $failures failed."
[ "$failures" -eq 0 ]
