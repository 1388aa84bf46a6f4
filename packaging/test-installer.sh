#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Tests the installer that ./package.sh made, under 64-bit Wine in a prefix of its own: installs without a window, has
# rekadoctor look, uninstalls, and compares registry and files with those before. Returns non-zero when anything failed.
# A prefix that was left as it was found serves the next run too.
#
# REKA_PACKAGE and REKA_INSTALLER_WORK name other folders for the package and for the run.
#
# This Wine's own look-up of classes passes over what is registered for one user. There the registry itself is compared,
# and rekadoctor has to find just that one fault.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh
. scripts/wine-environment.sh
. packaging/checks.sh
. packaging/snapshots.sh
install_packages "${windows_packages[@]}" "${package_packages[@]}"

version=$(sed -n 's/^project(REKA VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
package=${REKA_PACKAGE:-$PWD/build/package}
setup=$package/REKA-$version-setup.exe
stage=$package/REKA-$version
work=${REKA_INSTALLER_WORK:-$PWD/build/test-installer}
class='CLSID\{95E42661-1916-4261-8FCC-6F598A19E544}'

for_all_users() {
    local folder="$drive/Program Files/REKA" windows_folder='C:\Program Files\REKA'
    echo "== For all users"
    check "rekadoctor finds nothing registered" has_status 1 doctor "$stage"
    check "rekadoctor says so" doctor_says "  WRONG  not registered for 64-bit programs, neither for all users nor for this one"
    install
    check "all files are laid down" is_laid_down "$folder"
    check "the x64 module is one" has_machine "$folder/x64/REKA.dll" 8664
    check "the x86 module is one" has_machine "$folder/x86/REKA.dll" 014c
    check "the x86 rekadoctor is one" has_machine "$folder/x86/rekadoctor.exe" 014c
    check "the log tells of x64" log_says "$folder" "$windows_folder\\x64\\REKA.dll: registered with "
    check "the log tells of x86" log_says "$folder" \
        "$windows_folder\\x86\\REKA.dll: not registered, since this Windows has no 32-bit side"
    check "it is listed" is_listed HKLM "$windows_folder"
    check "rekadoctor finds all well" has_status 0 doctor "$folder"
    check "rekadoctor finds no fault" has_faults 0
    check "rekadoctor lists packages" doctor_says "           Ammonia synthesis"
    has_no_user_templates
    make_user_templates
    check "a second listing" has_status 0 doctor "$folder"
    uninstall "$folder" "C:\\$(short_name_of 'Program Files')\\REKA"
    forget_user_templates
    clean_uninstaller_copy
    take_snapshot after
    check "all is as before" is_same_snapshot before after
}

# As Wine made it up; another Windows has other short names.
short_name_of() { wine cmd /c 'dir /x C:\' | tr -d '\r' | sed -n "s/.*> *\([^ ]*~[^ ]*\) *$1\$/\1/p"; }

for_this_user() {
    local folder="$drive/users/$user/AppData/Local/Programs/REKA"
    local windows_folder="C:\\users\\$user\\AppData\\Local\\Programs\\REKA"
    echo "== For this user, with a file of the user's in the folder"
    install /CURRENTUSER
    take_snapshot installed
    check "nothing of the machine's registry changed" cmp -s "$work/before.machine" "$work/installed.machine"
    check "all files are laid down" is_laid_down "$folder"
    check "the user's class names the file" is_default "HKCU\\Software\\Classes\\$class\\InprocServer32" \
        "$windows_folder\\x64\\REKA.dll"
    check "it is listed" is_listed HKCU "$windows_folder"
    check "the setting is gone again" has_no_key 'HKCU\Software\NAVO'
    check "rekadoctor finds a fault" has_status 1 doctor "$folder"
    check "rekadoctor finds just one fault" has_faults 1
    check "rekadoctor knows why" doctor_says "this is Wine, whose look-up passes over what is registered for one user"
    echo "mine" >"$folder/my notes.txt"
    echo "mine" >"$folder/x64/data/mine.pcd"
    uninstall "$folder" "$windows_folder"
    check "the user's file is there" grep -qx mine "$folder/my notes.txt"
    check "the user's data are there" grep -qx mine "$folder/x64/data/mine.pcd"
    rm -f "$folder/my notes.txt" "$folder/x64/data/mine.pcd"
    check "nothing else is left" only_folders_left "$folder"
    # The folders that held the user's files are the user's to remove.
    (cd "$drive/users/$user/AppData/Local" && rmdir -p Programs/REKA/x64/data)
    clean_uninstaller_copy
    take_snapshot after
    check "all is as before" is_same_snapshot before after
}
only_folders_left() { [ -z "$(find "$1" ! -type d)" ] && [ "$(find "$1" -type d | wc -l)" -eq 3 ]; }

with_settings_of_the_users() {
    local folder="$drive/Tools/Chemistry/REKA" windows_folder='C:\Tools\Chemistry\REKA'
    echo "== With settings of the user's, in a folder of the user's choice, with a module that is damaged later"
    wine reg add 'HKCU\Software\NAVO' /v CurrentUser /t REG_DWORD /d 7 /f >/dev/null
    take_user_snapshot before number
    install /CURRENTUSER '/D=C:\Tools\Chemistry\REKA'
    check "all files are laid down" is_laid_down "$folder"
    check "the user's class names the file" is_default "HKCU\\Software\\Classes\\$class\\InprocServer32" \
        "$windows_folder\\x64\\REKA.dll"
    check "the number is back" is_text 'HKCU\Software\NAVO' CurrentUser 0x7
    echo "damaged" >"$folder/x64/REKA.dll"
    uninstall "$folder" "$windows_folder"
    clean_uninstaller_copy
    take_snapshot after
    check "all is as before" is_same_snapshot number after

    wine reg add 'HKCU\Software\NAVO' /v CurrentUser /t REG_SZ /d 1 /f >/dev/null
    take_user_snapshot before text
    install /CURRENTUSERS '/D=C:\Tools\Chemistry\REKA' # which is not /CURRENTUSER
    check "the machine's class names the file" is_default "HKLM\\Software\\Classes\\$class\\InprocServer32" \
        "$windows_folder\\x64\\REKA.dll"
    check "the text is back" is_text 'HKCU\Software\NAVO' CurrentUser 1
    check "rekadoctor finds all well" has_status 0 doctor "$folder"
    check "rekadoctor tells of the setting" doctor_says 'the value CurrentUser of HKCU\Software\NAVO is "1"'
    uninstall "$folder" "$windows_folder"
    has_no_user_templates
    clean_uninstaller_copy
    take_snapshot after
    check "all is as before" is_same_snapshot text after
    wine reg delete 'HKCU\Software\NAVO' /f >/dev/null
}

over_an_older_one() {
    local folder="$drive/Tools/REKA" elsewhere="$drive/Tools/Elsewhere"
    echo "== Over an installed one"
    install '/D=C:\Tools\REKA'  # without a blank: Wine would put /D in quotes, which the installer can't read
    echo "damaged" >"$folder/x64/REKA.dll"
    rm -f "$folder/x86/data/Korvex1.pcd"
    echo "mine" >"$folder/my notes.txt"
    install
    check "all files are laid down again" is_laid_down "$folder"
    check "the user's file is there" grep -qx mine "$folder/my notes.txt"
    check "rekadoctor finds all well" has_status 0 doctor "$folder"
    rm -f "$folder/my notes.txt"
    has_no_user_templates
    refusals "$folder" 'C:\Tools\REKA'

    install '/D=C:\Tools\Elsewhere'
    check "the old folder is gone" is_gone "$folder"
    check "all files are in the new one" is_laid_down "$elsewhere"
    check "rekadoctor finds all well there" has_status 0 doctor "$elsewhere"
    uninstall "$elsewhere" 'C:\Tools\Elsewhere'
    has_no_user_templates
    clean_uninstaller_copy
    take_snapshot after
    check "all is as before" is_same_snapshot before after
}

# refusals FOLDER WINDOWS-FOLDER, where it is installed.
refusals() {
    echo "== Refusals"
    mkdir -p "$drive/Mine/docs" "$drive/Stray"
    echo "mine" >"$drive/Mine/docs/rekatool.md"
    echo "mine" >"$drive/Stray/README.txt"
    cp "$1/uninstall.exe" "$drive/Stray/"
    take_snapshot installed
    check "another owner is refused the folder" has_status 2 wine "$setup" /S /CURRENTUSER "/D=$2"
    check "a folder with a file of ours by name is refused" has_status 2 wine "$setup" /S '/D=C:\Mine'
    check "so it is with a stray uninstaller" has_status 2 wine "$setup" /S '/D=C:\Stray'
    check "a stray uninstaller refuses" has_status 2 wine 'C:\Stray\uninstall.exe' /S '_?=C:\Stray'
    hold 'CreateObject("NAVO_REKA.ReactionPackManager")'
    check "installing over a module in use is refused" has_status 2 wine "$setup" /S
    check "uninstalling a module in use is refused" has_status 2 wine "$2\\uninstall.exe" /S "_?=$2"
    let_go
    hold "files.OpenTextFile(\"$2\\x64\\NAVO.chm\", 1)"
    check "installing over a file in use is refused" has_status 2 wine "$setup" /S
    check "uninstalling a file in use is refused" has_status 2 wine "$2\\uninstall.exe" /S "_?=$2"
    let_go
    take_snapshot refused
    check "the refusals change nothing" is_same_snapshot installed refused
    rm -r "$drive/Mine" "$drive/Stray"
}

# hold OBJECT: a script that holds it stands for a simulator or another program. It says so by a file, and ends when another
# one appears. It can't sleep, which this Wine's scripts don't know.
hold() {
    cat >"$work/hold.vbs" <<SCRIPT
Set files = CreateObject("Scripting.FileSystemObject")
Set held = $1
files.CreateTextFile("C:\\held.txt").Close
Do Until files.FileExists("C:\\let-go.txt")
Loop
SCRIPT
    wine cscript.exe "Z:$work/hold.vbs" </dev/null >/dev/null 2>&1 &
    holder=$!
    check "a script holds $1" wait_until test -e "$drive/held.txt"
}
let_go() {
    touch "$drive/let-go.txt"
    wait "$holder" || true
    rm -f "$drive/held.txt" "$drive/let-go.txt"
}

# Another installer of the same version, whose x64 module can't be registered, as a virus scanner may leave it.
make_damaged_installer() {
    echo "damaged" >"$work/REKA.dll"
    sed "s|File \".*/x64/REKA.dll\"|File \"$work/REKA.dll\"|" "$package/files.nsh" >"$work/damaged.nsh"
    damaged_setup=$work/REKA-damaged.exe
    makensis -V1 -WX -INPUTCHARSET UTF8 -DIS_QUICK -DVERSION="$version" -DSOURCE="$PWD" -DFILES="$work/damaged.nsh" \
        -DINSTALLED_KB=1 -DOUTPUT="$damaged_setup" packaging/REKA.nsi
}

with_a_module_that_fails() {
    local folder="$drive/REKA"
    echo "== With a module that can't be registered"
    make_damaged_installer
    check "the installer tells of it" has_status 2 wine "$damaged_setup" /S '/D=C:\REKA'
    check "the log tells of it" log_says "$folder" 'C:\REKA\x64\REKA.dll: NOT registered; C:\windows\system32\regsvr32.exe '
    check "it is listed nevertheless" is_listed HKLM 'C:\REKA'
    check "rekadoctor finds it unregistered" has_status 1 doctor "$folder"
    uninstall "$folder" 'C:\REKA'
    clean_uninstaller_copy

    echo "== On a full disk"
    check "the installer tells of it" has_status 2 with_small_files_only wine "$damaged_setup" /S '/D=C:\Tools\REKA'
    check "nothing stays" is_gone "$drive/Tools"

    echo "== With a file that can't be made"
    mkdir -p "$folder/x86"
    ln -s "$work/nowhere/NAVO.chm" "$folder/x86/NAVO.chm"
    check "the installer tells of it" has_status 2 wine "$damaged_setup" /S '/D=C:\REKA'
    rm "$folder/x86/NAVO.chm"
    check "nothing else stays" rmdir "$folder/x86" "$folder"
    take_snapshot after
    check "all is as before" is_same_snapshot before after
}

# A limit to the size of files stands for a full disk: the text files come, the programs don't.
with_small_files_only() {
    (
        trap '' XFSZ
        ulimit -f 500 # KiB
        "$@"
    )
}

# Every account of Wine has the rights of an administrator, and it asks nobody: an installer for tests calls the account
# otherwise until it has asked.
without_rights() {
    local folder="$drive/REKA" asking_setup=$work/REKA-asking.exe
    echo "== For all users, uninstalled by a user without rights"
    makensis -V1 -WX -INPUTCHARSET UTF8 -DIS_QUICK -DTESTED_ACCOUNT=User -DVERSION="$version" -DSOURCE="$PWD" \
        -DFILES="$package/files.nsh" -DINSTALLED_KB=1 -DOUTPUT="$asking_setup" packaging/REKA.nsi
    check "it is installed" has_status 0 wine "$asking_setup" /S '/D=C:\REKA'
    check "a silent uninstaller asks nobody" has_status 2 wine 'C:\REKA\uninstall.exe' /S '_?=C:\REKA'
    check "which leaves all as it is" is_laid_down "$folder"
    check "another one asks" has_status 0 wine 'C:\REKA\uninstall.exe'
    check "and with the rights it uninstalls" wait_until is_gone "$folder"
    clean_uninstaller_copy
    take_snapshot after
    check "all is as before" is_same_snapshot before after
}

with_something_that_stays() {
    local folder="$drive/REKA" class_key="HKLM\\Software\\Classes\\$class"
    echo "== With something that can't be removed, and a module that is damaged later"
    install '/D=C:\REKA'
    echo "damaged" >"$folder/x64/REKA.dll"
    rm -f "$folder/x86/NAVO.chm"
    mkdir "$folder/x86/NAVO.chm"
    check "the uninstaller tells of it" has_status 2 wine 'C:\REKA\uninstall.exe' /S '_?=C:\REKA'
    check "it is listed still" is_listed HKLM 'C:\REKA'
    check "it isn't registered any more" has_no_key "$class_key"
    check "the other files are gone" is_gone "$folder/x64"
    rmdir "$folder/x86/NAVO.chm"
    uninstall "$folder" 'C:\REKA'
    clean_uninstaller_copy
    take_snapshot after
    check "all is as before" is_same_snapshot before after
}

if [ ! -f "$setup" ]; then
    echo "$setup is missing: run ./package.sh first" >&2
    exit 1
fi
if [ ! -f "$work/as-found" ]; then rm -rf "$work"; fi
rm -f "$work/as-found"
start_wine "$work"
drive=$WINEPREFIX/drive_c
user=$(basename "$(find "$drive/users" -mindepth 1 -maxdepth 1 -type d ! -name Public)")
settle_wine
take_snapshot before
for_all_users
for_this_user
with_settings_of_the_users
over_an_older_one
with_a_module_that_fails
without_rights
with_something_that_stays
if [ "$failures" -eq 0 ]; then touch "$work/as-found"; fi
echo "Installer: $checks checks, $failures failed."
[ "$failures" -eq 0 ]
