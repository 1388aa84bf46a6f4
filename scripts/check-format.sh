#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Says which sources aren't in the project's format, and changes none. `clang-format -i FILE` mends one.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh
install_packages "${check_packages[@]}"
mapfile -d '' files < <(find src tools examples tests bench fuzz -name '*.h' -print0 -o -name '*.cpp' -print0)
printf '%s\0' "${files[@]}" | xargs -0 clang-format --dry-run --Werror
echo "The format of ${#files[@]} files is the project's."
