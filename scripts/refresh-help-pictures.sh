#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Puts the pictures that the driven tests of the dialogs have left in the Windows build into the help pages.
#
#   scripts/refresh-help-pictures.sh [FOLDER]    of pictures; that of the preset mingw64-release if none is given
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh
install_packages "${picture_packages[@]}"

from=${1:-build/mingw64-release/pictures}
to=docs/help/REKA/pictures
mkdir -p "$to"
while read -r picture test_picture; do
    convert "$from/$test_picture-96.bmp" -alpha off -strip -colors 256 "$to/$picture.png"
done <<'END'
editor HelpEditor
general-page HelpGeneral
compounds-page HelpCompounds
reactions-page HelpReactions
reaction-id HelpReactionId
pcd-file AddCompounds
compound-source CompoundSource
material-compounds MaterialCompoundsTicked
rate-wizard HelpRateWizard
expression-editor HelpExpressionEditor
template-manager HelpManager
load HelpLoad
store 207
END
