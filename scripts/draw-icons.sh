#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Draws the component's icons anew from their sources: src/editor/win/icons/*.svg become the .ico files beside them, each
# with 16, 24, 32 and 48 pixels. The .ico files are kept in the tree, so a build doesn't need this.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh
install_packages "${icon_packages[@]}"

icons=src/editor/win/icons
pictures=$(mktemp -d)
trap 'rm -rf "$pictures"' EXIT

for name in Reka RateWizard EditExpression; do
    for size in 16 24 32 48; do
        # Small sizes have a drawing of their own; the large one serves the rest.
        source=$icons/$name-$size.svg
        [ -f "$source" ] || source=$icons/$name-48.svg
        rsvg-convert --width "$size" --height "$size" --output "$pictures/$name-$size.png" "$source"
    done
    icotool --create --output "$icons/$name.ico" "$pictures/$name"-{16,24,32,48}.png
    echo "$icons/$name.ico"
done
