#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs a 32-bit Windows program in the 32-bit system that ./test.sh --x86 makes, in the folder of the same name there.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)/build/x86-root
exec chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin:/usr/lib/wine HOME=/root LC_ALL=C.UTF-8 \
    DISPLAY="${DISPLAY:-}" WINEARCH=win32 WINEPREFIX=/wine WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml= \
    REKA_TESTS_MAY_REGISTER="${REKA_TESTS_MAY_REGISTER:-}" \
    sh -c 'cd "$0" && exec wine "$@"' "$PWD" "$@"
