#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Says which sources aren't in the project's format, and changes none. `clang-format -i FILE` mends one.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh
install_packages "${check_packages[@]}"
git ls-files -z '*.h' '*.cpp' | xargs -0 clang-format --dry-run --Werror
echo "The format of $(git ls-files '*.h' '*.cpp' | wc -l) files is the project's."
