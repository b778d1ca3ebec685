# wine: for the other scripts to source; runs Windows programs under Wine, each with a prefix of its own in build/.

export WINEDEBUG=-all

# wine_64 ARGUMENT..., wine_32 ARGUMENT...: Wine itself; the one of the chroot sees its folder w as /w.
wine_64() { WINEPREFIX=$PWD/build/wine64 /usr/lib/wine/wine64 "$@"; }
wine_32() {
    if [ -e /usr/lib/wine/wine ]; then
        WINEPREFIX=$PWD/build/wine32 WINEARCH=win32 /usr/lib/wine/wine "$@"
    else
        as_root chroot build/win32-chroot env HOME=/root DISPLAY="${DISPLAY:-}" \
            WINEPREFIX=/w/prefix WINEARCH=win32 WINEDEBUG=-all wine "$@"
    fi
}

# run_win64 PROGRAM [ARGUMENT...]
run_win64() { wine_64 "$@"; }

# start_display: a screen in memory for the programs' windows, with a mouse and a keyboard of their own. To be started
# before the first program, as Wine asks for it but once; ends with stop_display.
start_display() {
    local number tries
    number=$(mktemp)
    Xvfb -displayfd 3 -screen 0 1024x768x24 -ac -nolisten tcp 3>"$number" >/dev/null 2>&1 &
    display_process=$!
    for ((tries = 0; tries < 100; ++tries)); do
        [ ! -s "$number" ] || break
        sleep 0.1
    done
    DISPLAY=:$(cat "$number")
    rm -f "$number"
    export DISPLAY
    [ "$DISPLAY" != : ]
}

stop_display() {
    if [ -n "${display_process:-}" ]; then kill "$display_process" 2>/dev/null || true; fi
    display_process=
}

# place_windows BITS: has that Wine place windows by itself, as it waits seconds at each for a window manager otherwise.
# Makes its folder, too.
place_windows() { "wine_$1" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null; }

# prepare_win32: a 32-bit Wine of the system, or the chroot in build/win32-chroot. False where neither is to be had.
prepare_win32() {
    [ -e /usr/lib/wine/wine ] && return
    [ "$(id -u)" -eq 0 ] || sudo -n true 2>/dev/null || return
    as_root script/win32-chroot build/win32-chroot
}

# release_win32: leaves nothing mounted in the chroot, so that its folder can be removed.
release_win32() {
    if mountpoint -q build/win32-chroot/proc; then as_root umount -l build/win32-chroot/proc; fi
}

# run_win32 PROGRAM [ARGUMENT...]
run_win32() {
    local program=$1 library
    shift
    if [ ! -e /usr/lib/wine/wine ]; then
        library=$(dirname "$program")/tessarine.dll
        if [ -e "$library" ]; then as_root cp -u "$library" build/win32-chroot/w/; fi # beside it, where it is looked for
        as_root cp "$program" build/win32-chroot/w/
        program=/w/$(basename "$program")
    fi
    wine_32 "$program" "$@"
}
