#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs the Python module as its README says, without a network, into an environment of its own, and runs its tests and
# the commands of its README. A user's own templates stay untouched.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_CONFIG_HOME=$work/user MPLCONFIGDIR=$work/matplotlib
mkdir -p "$XDG_CONFIG_HOME"
# The Debian packages belong to the system's own Python, whatever comes first in the path.
/usr/bin/python3 -m venv --system-site-packages "$work/venv"
export PATH=$work/venv/bin:$PATH
pip install --quiet --no-index --no-build-isolation --no-deps .
tree=$PWD
cd "$work"
python3 "$tree/tests/python/reka_test.py" 2>&1
python3 "$tree/examples/python/arrhenius.py" "$work/arrhenius.png" >"$work/printed"
sed -n '/^    nitrogen tetroxide/,/^$/{s/^    //p;}' "$tree/python/README.md" >"$work/shown"
diff "$work/shown" "$work/printed"
[ -s "$work/arrhenius.png" ]
# The first example of the README, as a user would type it.
awk '/^Every number/ { exit } /^    / { print substr($0, 5) }' "$tree/python/README.md" >"$work/first.py"
echo 'assert rates.shape == (101, 2, 2)' >>"$work/first.py"
python3 "$work/first.py"
