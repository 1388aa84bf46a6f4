# SPDX-License-Identifier: MIT
# Sourced by the commands at the top of the tree: installs the Debian packages that are missing.

# install_packages NAME...: does nothing when all are there.
install_packages() {
    local missing=() name
    for name in "$@"; do
        dpkg-query -W -f='${Status}' "$name" 2>/dev/null | grep -q '^install ok installed$' || missing+=("$name")
    done
    if [ "${#missing[@]}" -eq 0 ]; then return 0; fi
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then as_root=(sudo); fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -q
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
}

native_packages=(g++ cmake ninja-build bison libcli11-dev nlohmann-json3-dev libboost-dev libeigen3-dev
    gnuplot-nox fp-utils)
test_packages=(libgtest-dev libgmock-dev libmpfr-dev libgmp-dev locales libchm-bin libxml2-utils pkgconf python3)
bench_packages=(libbenchmark-dev libmuparser-dev)
python_packages=(pybind11-dev python3-dev python3-numpy python3-pip python3-venv python3-setuptools python3-wheel
    python3-matplotlib)
fuzz_packages=(clang libclang-rt-14-dev)
mutant_packages=(lld)
coverage_packages=(clang libclang-rt-14-dev llvm)
windows_packages=(g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools libwine-dev wine wine64 xvfb
    xauth libmpfr-dev libgmp-dev)
check_packages=(clang-format clang-tidy)
icon_packages=(librsvg2-bin icoutils)
picture_packages=(imagemagick)
package_packages=(nsis zip unzip)
x86_packages=(debootstrap)
