#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# check-installed-tree.sh TREE BUILD: installs what BUILD has made of the sources in TREE, builds the example host against
# that in each way that is promised, and runs it; what it prints is what its README shows. The shared library, where it
# was built, gives out the factory and the automation functions and nothing else.
set -euo pipefail
tree=$1 build=$2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix
cmake --install "$build" --prefix "$prefix" >/dev/null

fail() { echo "$*" >&2; exit 1; }

# Users' templates lie in a folder of their own; the shipped ones are put there.
export XDG_CONFIG_HOME=$work/user
mkdir -p "$XDG_CONFIG_HOME/NAVO/data"
cp "$prefix/share/reka/REKAConfig.dat" "$XDG_CONFIG_HOME/NAVO/data"
sed -n '/^    25 C/,/^$/{s/^    //p;}' "$tree/examples/host/README.md" >"$work/expected"
[ -s "$work/expected" ] || fail "the README of the host shows no output"

# expect_output PROGRAM
expect_output() {
    "$1" >"$work/output" || fail "$1 ends with $?"
    diff "$work/expected" "$work/output" || fail "$1 prints something else than its README"
}

cmake -S "$tree/examples/host" -B "$work/host" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/host" >/dev/null
expect_output "$work/host/host"

export PKG_CONFIG_PATH=$prefix/lib/pkgconfig:$prefix/lib/$(uname -m)-linux-gnu/pkgconfig
[ "$(pkg-config --modversion reka)" = "$(sed -n 's/^project(REKA VERSION \([^ ]*\).*/\1/p' "$tree/CMakeLists.txt")" ] ||
    fail "pkg-config tells another version"
read -ra flags < <(pkg-config --cflags --libs reka)
# shellcheck disable=SC2086  # several flags
"${CXX:-c++}" -std=c++20 ${CXXFLAGS:-} "$tree/examples/host/Host.cpp" "${flags[@]}" -o "$work/by-pkg-config"
LD_LIBRARY_PATH=$(dirname "$(find "$prefix" -name 'libreka.a')") expect_output "$work/by-pkg-config"

cmake -S "$tree/tests/install/subproject" -B "$work/subproject" -DREKA_TREE="$tree" >/dev/null

shared=$(find "$prefix" -name 'libreka.so')
if [ -n "$shared" ]; then
    expect_output "$work/host/host_shared"
    allowed='^(reka::CreateReactionPackManager|Sys|Variant|SafeArray|operator==\(GUID|IID_I|GUID_NULL)'
    others=$(nm --dynamic --defined-only --demangle "$shared" | cut -d ' ' -f 3- | grep -vE "$allowed" || true)
    [ -z "$others" ] || fail "the shared library gives out $others"
fi
