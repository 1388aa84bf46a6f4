# SPDX-License-Identifier: MIT
# Sourced by test-installer.sh: pictures of registry and files, to compare. $work is where they are kept, $drive is Wine's
# drive C:, $user the name of its user.

# registry ROOT: all of it as text.
registry() {
    rm -f "$work/export.reg"
    wine regedit /E "Z:$work/export.reg" "$1" >/dev/null 2>&1
    iconv -f UTF-16 -t UTF-8 "$work/export.reg" | tr -d '\r'
}

# What Wine's session keeps for itself in the registry, and changes with every program: the devices that its services have
# seen, its network cards, the number of the next service, and the user's settings for as long as the session lasts.
without_session() {
    awk 'BEGIN { RS = ""; ORS = "\n\n" }
        /^\[HKEY_LOCAL_MACHINE\\(HARDWARE|System\\CurrentControlSet\\(Enum|Control\\(DeviceClasses|ServiceCurrent)))/ { next }
        /^\[HKEY_LOCAL_MACHINE\\Software\\(Wow6432Node\\)?Microsoft\\Windows NT\\CurrentVersion\\NetworkCards/ { next }
        /^\[HKEY_CURRENT_USER\\Software\\Wine\\Temporary System Parameters/ { next }
        { print }'
}

# take_snapshot NAME: the registry of the machine and of the user, the folders, the files with size and time of the last
# change, from which a file that was written anew is known as well as from its contents.
take_snapshot() {
    registry HKEY_LOCAL_MACHINE | without_session >"$work/$1.machine"
    registry HKEY_CURRENT_USER | without_session >"$work/$1.user"
    (cd "$drive" && find . -type d -printf '%p\n' -o -printf '%p %s %T@\n') | LC_ALL=C sort >"$work/$1.files"
}

# take_user_snapshot OLD NAME: only the user's registry is another than in OLD.
take_user_snapshot() {
    cp "$work/$1.machine" "$work/$2.machine"
    cp "$work/$1.files" "$work/$2.files"
    registry HKEY_CURRENT_USER | without_session >"$work/$2.user"
}

is_same_snapshot() {
    local part same=0
    for part in machine user files; do
        diff "$work/$1.$part" "$work/$2.$part" >"$work/difference.txt" && continue
        echo "$part of '$1' and '$2':" >&2
        head -n 40 "$work/difference.txt" >&2
        same=1
    done
    return "$same"
}

# The programs that the tests use run once before the first snapshot: Wine fills some keys at their first start. And every
# user of a Windows has classes, whose key CLSID stays when a component is unregistered; that of a new prefix has none yet.
settle_wine() {
    wine reg add 'HKCU\Software\Classes\CLSID' /f >/dev/null
    wine regedit /E "Z:$work/export.reg" HKEY_CURRENT_USER >/dev/null 2>&1
    wine reg query HKLM >/dev/null 2>&1
    wine regsvr32 /s ole32.dll >/dev/null 2>&1 || true
    : >"$work/empty.vbs"
    wine cscript.exe "Z:$work/empty.vbs" >/dev/null 2>&1 || true
    sleep 2
}

# rekadoctor only looks: a user gets the shipped packages from the first program that asks the manager for its list.
has_no_user_templates() {
    check "the user has no packages" is_gone "$drive/users/$user/AppData/Roaming/NAVO"
}

# The packages of a user are the user's, so they stay when the component goes; afterwards they are seen to be there and
# unchanged, and are removed.
make_user_templates() {
    mkdir -p "$drive/users/$user/AppData/Roaming/NAVO/data"
    cp "$stage/x64/data/REKAConfig.dat" "$drive/users/$user/AppData/Roaming/NAVO/data/"
}
forget_user_templates() {
    local folder=$drive/users/$user/AppData/Roaming/NAVO
    check "the user's packages are there" cmp "$stage/x64/data/REKAConfig.dat" "$folder/data/REKAConfig.dat"
    rm -f "$folder/data/REKAConfig.dat"
    rmdir "$folder/data" "$folder" || true
}

# No program can delete its own file, so the uninstaller goes on in a copy of itself in the user's temporary folder and asks
# the system to delete that at the next start, by the value PendingFileRenameOperations. Here the test is the next start.
clean_uninstaller_copy() {
    local key='HKLM\System\CurrentControlSet\Control\Session Manager'
    local pending
    pending=$(wine reg query "$key" /v PendingFileRenameOperations 2>/dev/null | tr -d '\r' |
        sed -n 's/.*REG_MULTI_SZ *//p' | sed 's/\\0/\n/g' | sed '/^$/d')
    check "only the uninstaller's copy waits for the next start: $pending" names_only_copies "$pending"
    wine reg delete "$key" /v PendingFileRenameOperations /f >/dev/null 2>&1 || true
    rm -rf "$drive/users/$user/Temp/"~nsu*.tmp
}
names_only_copies() {
    local line
    while IFS= read -r line; do
        case $line in
        '' | '\??\C:\users\'"$user"'\Temp\~nsu'*.tmp | '\??\C:\users\'"$user"'\Temp\~nsu'*'.tmp\Un.exe') ;;
        *) return 1 ;;
        esac
    done <<<"$1"
}
