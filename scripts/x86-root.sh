# SPDX-License-Identifier: MIT
# Sourced by test.sh: a folder with a 32-bit system of its own, in which the x86 programs run under a 32-bit Wine. That
# can't be installed beside the 64-bit Wine on every system. Nothing of this system is mounted into it but /proc while it
# is used, so that the folder can be deleted like any other; the display is reached by the abstract socket that both share.

x86_root=$PWD/build/x86-root

# make_x86_root: installs the system if it isn't there. Needs root's rights, as does all that runs in it.
make_x86_root() {
    if [ "$(id -u)" -ne 0 ]; then
        echo "The x86 tests run in a system of their own, which root alone can make: sudo ./test.sh --x86" >&2
        return 1
    fi
    if [ ! -f "$x86_root/ready" ]; then
        leave_x86_root || return 1
        rm -rf "$x86_root"
        mkdir -p "$x86_root"
        echo "== Making a 32-bit system in $x86_root"
        install_x86_root >"$x86_root.log" 2>&1 || { tail -20 "$x86_root.log"; return 1; }
        touch "$x86_root/ready"
    fi
    mountpoint -q "$x86_root/proc" || mount -t proc proc "$x86_root/proc"
}

# With the archive and the settings that apt has here.
install_x86_root() {
    debootstrap --variant=minbase --arch=i386 bookworm "$x86_root" "$(debian_archive)" &&
        cp -r /etc/apt/apt.conf.d "$x86_root/etc/apt/" &&
        chroot "$x86_root" apt-get update &&
        chroot "$x86_root" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y --no-install-recommends wine wine32
}

debian_archive() {
    sed -n 's/^URIs: *\([^ ]*debian\)\/\? *$/\1/p; s/^deb \(\[[^]]*\] \)\?\([^ ]*debian\)\/\? bookworm .*/\2/p' \
        /etc/apt/sources.list /etc/apt/sources.list.d/* 2>/dev/null | head -1
}

# start_x86_wine: a display and a Wine session for scripts/wine-x86.sh. Both end with the script.
start_x86_wine() {
    start_display "$PWD/build/wine-x86"
    on_exit() {
        chroot "$x86_root" env WINEPREFIX=/wine wineserver -k >/dev/null 2>&1 || true
        leave_x86_root
    }
    scripts/wine-x86.sh wineboot -i </dev/null >build/wine-x86/wineboot.log 2>&1 ||
        { cat build/wine-x86/wineboot.log >&2; return 1; }
    chroot "$x86_root" env WINEPREFIX=/wine wineserver -p >/dev/null 2>&1 || true
    scripts/wine-x86.sh reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /t REG_SZ /d N /f </dev/null >/dev/null 2>&1
    scripts/wine-x86.sh explorer.exe </dev/null >/dev/null 2>&1 &
}

# put_into_x86_root PATH...: copies of files and folders of this tree, which lie there under the same full path. What
# compiling leaves behind stays here.
put_into_x86_root() {
    mkdir -p "$x86_root$PWD"
    tar -cf - --exclude=CMakeFiles --exclude='*.a' --exclude=_deps "$@" | tar -xf - -C "$x86_root$PWD"
}

leave_x86_root() {
    if mountpoint -q "$x86_root/proc"; then umount "$x86_root/proc"; fi
}
