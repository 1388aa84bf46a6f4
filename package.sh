#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes what is handed out, in build/package: a zip with both Windows builds, their data and documents, an installer with
# the same files, and the checksums of both. Runs no tests: see ./test.sh, and packaging/test-installer.sh for what is made here.
#
#   ./package.sh --sign COMMAND   runs COMMAND FILE in the top folder for every program before it is packed, the uninstaller
#                                 included, and for the installer after
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
sign_command=
if [ "$#" -eq 2 ] && [ "$1" = --sign ] && [ -n "$2" ]; then
    sign_command=$2
elif [ "$#" -ne 0 ]; then
    echo "usage: ./package.sh [--sign COMMAND]" >&2
    exit 2
fi
. scripts/install-packages.sh
install_packages "${native_packages[@]}" "${test_packages[@]}" "${windows_packages[@]}" "${package_packages[@]}"

version=$(sed -n 's/^project(REKA VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
package=$PWD/build/package
name=REKA-$version
stage=$package/$name

# build PRESET: what is packed, and whatever else the build folder is set up for stays as it is.
build() {
    echo "== Building $1"
    local log=$package/$1.log
    {
        cmake --preset "$1" -DREKA_BUILD_EXAMPLES=ON &&
            cmake --build --preset "$1" --target reka rekadoctor rekatool reka_data reka_help
    } >"$log" 2>&1 || { cat "$log"; return 1; }
}

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

# stage_text FILE NAME: with the line ends that every Windows editor knows.
stage_text() {
    sed -e "s/@VERSION@/$version/g" -e 's/\r*$/\r/' "$1" >"$stage/$2"
}

mkdir -p "$package"
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct 2>/dev/null || echo 1577836800) # the time that linkers write into programs
export SOURCE_DATE_EPOCH
build mingw64-release
build mingw32-release

echo "== Packing"
rm -rf "$stage"
mkdir -p "$stage/docs"
stage_build mingw64-release x64 x86_64-w64-mingw32
stage_build mingw32-release x86 i686-w64-mingw32
stage_text packaging/README.txt README.txt
stage_text LICENSE LICENSE.txt
signing=()
if [ -n "$sign_command" ]; then
    make_signer
    sign_programs "$stage"
    signing=(-DSIGNER="$signer")
fi
packaging/third-party.sh "$version" >"$package/THIRD-PARTY.txt"
stage_text "$package/THIRD-PARTY.txt" THIRD-PARTY.txt
for document in expression-language reaction-systems rekadoctor rekatool; do
    stage_text "docs/$document.md" "docs/$document.md"
done

# The same bytes from the same files: all of the time of the last commit, in the order of their names.
zip=$package/$name-windows.zip
rm -f "$zip"
find "$stage" -exec touch -d "@$SOURCE_DATE_EPOCH" {} +
(cd "$package" && find "$name" | LC_ALL=C sort | TZ=UTC zip -q -X -@ "$zip")

setup=$package/$name-setup.exe
packaging/write-file-list.sh "$stage" "$package/files.nsh"
makensis -V2 -WX -INPUTCHARSET UTF8 -DVERSION="$version" -DSOURCE="$PWD" -DFILES="$package/files.nsh" \
    -DINSTALLED_KB="$(du -sk --apparent-size "$stage" | cut -f1)" -DOUTPUT="$setup" "${signing[@]}" packaging/REKA.nsi
if [ -n "$sign_command" ]; then "$signer" "$setup"; fi
(cd "$package" && sha256sum "$(basename "$zip")" "$(basename "$setup")" >"$name-SHA256SUMS")
ls -l "$zip" "$setup"
