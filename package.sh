#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes what is handed out, in build/package: a zip with both Windows builds, their data and documents, an installer with
# the same files, a zip with the tests of both builds for people with a Windows, and the checksums of all three. Runs no
# tests: see ./test.sh, and packaging/test-installer.sh and packaging/test-tests-zip.sh for what is made here.
#
#   ./package.sh --sign COMMAND   runs COMMAND FILE in the top folder for every program before it is packed, the uninstaller
#                                 included, and for the installer after
#   ./package.sh --tests WIDTHS   puts the tests of these widths alone into their zip: x64, x86 or none, with which there is
#                                 no such zip. ./test.sh has built those of x64 by then, and those of x86 take five minutes
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
sign_command=
test_widths="x64 x86"
while [ "$#" -gt 0 ]; do
    case "$1 ${2:-}" in
        "--sign "?*) sign_command=$2 ;;
        "--tests x64" | "--tests x86") test_widths=$2 ;;
        "--tests none") test_widths= ;;
        *) echo "usage: ./package.sh [--sign COMMAND] [--tests x64|x86|none]" >&2; exit 2 ;;
    esac
    shift 2
done
. scripts/install-packages.sh
install_packages "${native_packages[@]}" "${test_packages[@]}" "${windows_packages[@]}" "${package_packages[@]}"

version=$(sed -n 's/^project(REKA VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
package=$PWD/build/package
name=REKA-$version
stage=$package/$name
tests_stage=$package/$name-tests

# build PRESET WIDTH: what is packed, and whatever else the build folder is set up for stays as it is.
build() {
    echo "== Building $1"
    local log=$package/$1.log options=() targets=(reka rekadoctor rekatool reka_data reka_help)
    if has_tests "$2"; then
        options=(-DREKA_BUILD_TESTS=ON)
        targets+=(rekasim reka_test_programs)
    fi
    {
        cmake --preset "$1" -DREKA_BUILD_EXAMPLES=ON "${options[@]}" &&
            cmake --build --preset "$1" --target "${targets[@]}"
    } >"$log" 2>&1 || { cat "$log"; return 1; }
}
has_tests() { [[ " $test_widths " = *" $1 "* ]]; }

# stage_build PRESET FOLDER COMPILER-FAMILY: one width of the component with what belongs beside it.
stage_build() {
    local from=build/$1/bin to=$stage/$2 program
    mkdir -p "$to/data"
    for program in REKA.dll rekadoctor.exe rekatool.exe; do
        "$3-strip" -o "$to/$program" "$from/$program"
    done
    cp "$from/data/REKAConfig.dat" "$from/data/Korvex1.pcd" "$to/data/"
    cp "$from/NAVO.chm" "$to/"
}

# stage_tests PRESET WIDTH COMPILER-FAMILY: the test programs of one width with all that they read, in one folder.
stage_tests() {
    local from=build/$1 to=$tests_stage/$2 program
    mkdir -p "$to/data" "$to/documents"
    while IFS= read -r program; do
        "$3-strip" -o "$to/$(basename "$program")" "$program"
    done <"$from/tests/test-programs.txt"
    for program in REKA.dll rekadoctor.exe rekatool.exe rekasim.exe; do
        "$3-strip" -o "$to/$program" "$from/bin/$program"
    done
    cp src/editor/win/Controls.manifest "$to/reka_editor_tests_with_manifest.exe.manifest"
    cp "$from/bin/data/REKAConfig.dat" "$from/bin/data/Korvex1.pcd" "$to/data/"
    cp "$from/bin/NAVO.chm" docs/reaction-systems.md data/compounds.tsv "$package/figures.txt" "$to/"
    cp examples/documents/*.json "$to/documents/"
}

# make_figures: those of the native build from which the Windows builds have their data.
make_figures() {
    local native log=$package/figures.log
    native=$(sed -n 's/^REKA_NATIVE_PRESET:.*=//p' "build/mingw${1}-release/CMakeCache.txt")
    {
        cmake --preset "$native" -DREKA_BUILD_TESTS=ON && cmake --build --preset "$native" --target reka_figures &&
            "build/$native/tests/figures/reka_figures" "$package/figures.txt"
    } >"$log" 2>&1 || { cat "$log"; return 1; }
}

# make_signer: what signs a file, also for the compiler of the installer, which runs it for the uninstaller.
make_signer() {
    signer=$package/sign.sh
    printf '#!/usr/bin/env bash\nset -euo pipefail\nfile=$(realpath "$1")\ncd %q\n%s "$file"\n' "$PWD" "$sign_command" >"$signer"
    chmod +x "$signer"
}

# sign_programs FOLDER: all that Windows loads or runs.
sign_programs() {
    local program
    find "$1" \( -name '*.dll' -o -name '*.exe' \) -print0 | LC_ALL=C sort -z | while IFS= read -r -d '' program; do
        "$signer" "$program"
    done
}

# stage_text FILE TARGET: with the line ends that every Windows editor knows.
stage_text() {
    sed -e "s/@VERSION@/$version/g" -e 's/\r*$/\r/' "$1" >"$2"
}

# pack FOLDER ZIP: the same bytes from the same files: all of the time of the last commit, in the order of their names.
pack() {
    rm -f "$2"
    find "$1" -exec touch -d "@$SOURCE_DATE_EPOCH" {} +
    (cd "$package" && find "$(basename "$1")" | LC_ALL=C sort | TZ=UTC zip -q -X -@ "$2")
}

# pack_tests: in a zip of their own, for people with a Windows.
pack_tests() {
    make_figures "$(has_tests x64 && echo 64 || echo 32)"
    if has_tests x64; then stage_tests mingw64-release x64 x86_64-w64-mingw32; fi
    if has_tests x86; then stage_tests mingw32-release x86 i686-w64-mingw32; fi
    stage_text packaging/TESTS-README.txt "$tests_stage/README.txt"
    stage_text packaging/run-tests.cmd "$tests_stage/run-tests.cmd"
    stage_text LICENSE "$tests_stage/LICENSE.txt"
    packaging/third-party.sh "$version" tests >"$package/THIRD-PARTY.txt"
    stage_text "$package/THIRD-PARTY.txt" "$tests_stage/THIRD-PARTY.txt"
    if [ -n "$sign_command" ]; then sign_programs "$tests_stage"; fi
    pack "$tests_stage" "$tests_zip"
}

mkdir -p "$package"
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct 2>/dev/null || echo 1577836800) # the time that linkers write into programs
export SOURCE_DATE_EPOCH
build mingw64-release x64
build mingw32-release x86

echo "== Packing"
rm -rf "$stage" "$tests_stage"
mkdir -p "$stage/docs"
stage_build mingw64-release x64 x86_64-w64-mingw32
stage_build mingw32-release x86 i686-w64-mingw32
stage_text packaging/README.txt "$stage/README.txt"
stage_text LICENSE "$stage/LICENSE.txt"
signing=()
if [ -n "$sign_command" ]; then
    make_signer
    sign_programs "$stage"
    signing=(-DSIGNER="$signer")
fi
packaging/third-party.sh "$version" >"$package/THIRD-PARTY.txt"
stage_text "$package/THIRD-PARTY.txt" "$stage/THIRD-PARTY.txt"
for document in expression-language reaction-systems rekadoctor rekatool; do
    stage_text "docs/$document.md" "$stage/docs/$document.md"
done

zip=$package/$name-windows.zip
pack "$stage" "$zip"
tests_zip=$package/$name-tests.zip
rm -f "$tests_zip"
if [ -n "$test_widths" ]; then pack_tests; fi

setup=$package/$name-setup.exe
packaging/write-file-list.sh "$stage" "$package/files.nsh"
makensis -V2 -WX -INPUTCHARSET UTF8 -DVERSION="$version" -DSOURCE="$PWD" -DFILES="$package/files.nsh" \
    -DINSTALLED_KB="$(du -sk --apparent-size "$stage" | cut -f1)" -DOUTPUT="$setup" "${signing[@]}" packaging/REKA.nsi
if [ -n "$sign_command" ]; then "$signer" "$setup"; fi
made=("$zip" "$setup")
if [ -n "$test_widths" ]; then made+=("$tests_zip"); fi
(cd "$package" && sha256sum "${made[@]##*/}" >"$name-SHA256SUMS")
ls -l "${made[@]}"
