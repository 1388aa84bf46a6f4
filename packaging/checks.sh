# SPDX-License-Identifier: MIT
# Sourced by test-installer.sh: how a check is counted, and what is asked of an installation. $work, $package, $stage, $setup,
# $version and $user are those of the script.

checks=0
failures=0

# check TEXT COMMAND...: the command has to succeed.
check() {
    local text=$1
    shift
    checks=$((checks + 1))
    if ! "$@"; then
        echo "FAILED: $text" >&2
        failures=$((failures + 1))
    fi
}

# wait_until COMMAND...: for 60 s at most.
wait_until() {
    local waited=0
    until "$@"; do
        if [ "$waited" -ge 600 ]; then return 1; fi
        sleep 0.1
        waited=$((waited + 1))
    done
}

is_gone() { [ ! -e "$1" ]; }
has_status() {
    local wanted=$1 status=0
    shift
    "$@" || status=$?
    [ "$status" -eq "$wanted" ] || { echo "exit status $status instead of $wanted: $*" >&2; return 1; }
}

# registry_text KEY VALUE: the text or number of a value, nothing if there is none.
registry_text() {
    wine reg query "$1" /v "$2" 2>/dev/null | tr -d '\r' | sed -n 's/^ *'"$2"' *REG_[A-Z_]* *//p'
}
is_text() { [ "$(registry_text "$1" "$2")" = "$3" ] || { echo "$2 is '$(registry_text "$1" "$2")'" >&2; return 1; }; }
has_no_key() { ! wine reg query "$1" >/dev/null 2>&1; }
default_text() {
    wine reg query "$1" /ve 2>/dev/null | tr -d '\r' | sed -n 's/^ *[^ ].*REG_SZ *//p'
}
is_default() { [ "$(default_text "$1")" = "$2" ] || { echo "it is '$(default_text "$1")'" >&2; return 1; }; }

# install ARGUMENT...: has to do it without complaint.
install() { check "installing with '$*'" has_status 0 wine "$setup" /S "$@"; }

# is_laid_down FOLDER: every file of the package is there as it is, and beside them only what the installer writes.
is_laid_down() {
    diff -r "$stage" "$1" | grep -vxF -e "Only in $1: install.log" -e "Only in $1: uninstall.exe" \
        -e "Only in $1: my notes.txt" && return 1
    return 0
}

# has_machine FILE MACHINE: the machine of a module's header, in four hexadecimal digits.
has_machine() {
    local place
    place=$(od -An -t u4 -j 60 -N 4 "$1" | tr -d ' ')
    [ "$(od -An -t x2 -j $((place + 4)) -N 2 "$1" | tr -d ' ')" = "$2" ]
}

log_says() { iconv -f UTF-16 -t UTF-8 "$1/install.log" | grep -qF "$2"; }

# doctor FOLDER: what rekadoctor says goes to $work/doctor.txt.
doctor() { wine "$1/x64/rekadoctor.exe" </dev/null >"$work/doctor.txt"; }
has_faults() { [ "$(grep -c '^  WRONG' "$work/doctor.txt")" -eq "$1" ] || { cat "$work/doctor.txt"; return 1; }; }
doctor_says() { grep -qF "$1" "$work/doctor.txt" || { cat "$work/doctor.txt"; return 1; }; }

# is_listed ROOT FOLDER: in the list of installed programs. FOLDER as Windows writes it.
is_listed() {
    local line listing
    listing=$(wine reg query "$1\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\REKA" 2>/dev/null | tr -d '\r' |
        sed -n 's/^ *\([A-Za-z]*\) *REG_[A-Z]* */\1=/p')
    for line in DisplayName=REKA "DisplayVersion=$version" "Publisher=The REKA developers" "InstallLocation=$2" \
        "DisplayIcon=$2\\uninstall.exe" "UninstallString=\"$2\\uninstall.exe\"" \
        "QuietUninstallString=\"$2\\uninstall.exe\" /S"; do
        grep -qxF "$line" <<<"$listing" || { echo "no '$line' in '$listing'" >&2; return 1; }
    done
    grep -q '^EstimatedSize=0x' <<<"$listing"
}

# uninstall FOLDER WINDOWS-FOLDER: as the list of installed programs does it. The uninstaller goes on in a copy of itself,
# which is waited for.
uninstall() {
    check "starting the uninstaller of $2" has_status 0 wine "$2\\uninstall.exe" /S
    check "the uninstaller removes itself from $2" wait_until is_gone "$1/uninstall.exe"
    check "the copy of the uninstaller ends" wait_until is_copy_at_end
    check "it is not listed any more" is_unlisted
}
is_copy_at_end() { ! grep -lsq 'nsu[^/]*\.tmp.Un\.exe' /proc/[0-9]*/cmdline; }
is_unlisted() {
    local key='Software\Microsoft\Windows\CurrentVersion\Uninstall\REKA'
    has_no_key "HKLM\\$key" && has_no_key "HKCU\\$key"
}
