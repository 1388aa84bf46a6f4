#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Writes the macros with which the installer lays down the files of a folder and removes them again, one by one, and calls
# a function for each, with its path in $R9: write-file-list.sh FOLDER OUTPUT
set -euo pipefail
folder=$1

windows_path() { printf '%s' "${1//\//\\}"; }

folders() { (cd "$folder" && find . -mindepth 1 -type d -printf '%P\n' | LC_ALL=C sort); }
files_of() { (cd "$folder/$1" && find . -maxdepth 1 -type f -printf '%P\n' | LC_ALL=C sort); }

lay_down() {
    local name
    while IFS= read -r name; do printf '  File "%s"\n' "$folder/${1:+$1/}$name"; done < <(files_of "$1")
}
remove() {
    local name
    while IFS= read -r name; do
        printf '  Delete "$INSTDIR\\%s"\n' "$(windows_path "${1:+$1/}$name")"
    done < <(files_of "$1")
}

{
    echo '!macro LayDownFiles'
    echo '  SetOutPath "$INSTDIR"'
    lay_down ""
    while IFS= read -r name; do
        printf '  SetOutPath "$INSTDIR\\%s"\n' "$(windows_path "$name")"
        lay_down "$name"
    done < <(folders)
    echo '!macroend'
    echo '!macro RemoveFiles'
    remove ""
    while IFS= read -r name; do
        remove "$name"
        printf '  RMDir "$INSTDIR\\%s"\n' "$(windows_path "$name")"
    done < <(folders | tac)
    echo '!macroend'
    echo '!macro ForEachFile function'
    while IFS= read -r name; do
        printf '  StrCpy $R9 "$INSTDIR\\%s"\n  Call ${function}\n' "$(windows_path "$name")"
    done < <(cd "$folder" && find . -type f -printf '%P\n' | LC_ALL=C sort)
    echo '!macroend'
} >"$2"
