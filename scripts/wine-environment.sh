# SPDX-License-Identifier: MIT
# Sourced by the commands at the top of the tree: a Wine prefix and a display of the build folder's own.

# start_display FOLDER: a display on a free number. What `on_exit` names ends with the script, the display last.
start_display() {
    mkdir -p "$1"
    local number_file=$1/display.$$
    Xvfb -displayfd 3 -screen 0 2880x2160x24 -nolisten tcp 3>"$number_file" 2>/dev/null &
    display_process=$!
    trap 'on_exit; stop_display' EXIT
    local waited=0
    until [ -s "$number_file" ]; do
        if [ "$waited" -ge 300 ] || ! kill -0 "$display_process" 2>/dev/null; then
            echo "The display server did not start." >&2
            return 1
        fi
        sleep 0.1
        waited=$((waited + 1))
    done
    export DISPLAY=:$(cat "$number_file")
    rm -f "$number_file"
}

on_exit() { :; }

stop_display() {
    kill "$display_process" 2>/dev/null || true
    wait "$display_process" 2>/dev/null || true
}

# start_wine FOLDER: sets the environment for `wine`, starts a display and makes the prefix if it is new. Everything that
# it started ends with the script.
start_wine() {
    export WINEPREFIX=$1/wine WINEDEBUG=-all WINEARCH=win64
    export WINEDLLOVERRIDES=mscoree,mshtml=  # no questions at the first start
    start_display "$1"
    on_exit() { wineserver -k >/dev/null 2>&1 || true; }
    # The session's own services are started here and kept by a shell window, apart from any program's output: a service
    # that a test program started would hold that program's output open long after its end.
    local boot=(wineboot)
    if [ ! -f "$WINEPREFIX/system.reg" ]; then boot=(wineboot -i); fi
    if ! "${boot[@]}" </dev/null >"$1/wineboot.log" 2>&1; then
        echo "Wine could not start its session in $WINEPREFIX:" >&2
        cat "$1/wineboot.log" >&2
        return 1
    fi
    wineserver -p >/dev/null 2>&1 || true  # stays between the programs, which then start at once
    # There is no window manager: a window that waited for one would take two seconds to open.
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /t REG_SZ /d N /f </dev/null >/dev/null 2>&1
    wine explorer.exe </dev/null >/dev/null 2>&1 &
}
