# wine: for the other scripts to source; runs Windows programs under Wine, each with a prefix of its own in build/.

export WINEDEBUG=-all

# run_win64 PROGRAM [ARGUMENT...]
run_win64() { WINEPREFIX=$PWD/build/wine64 /usr/lib/wine/wine64 "$@"; }

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
    local program=$1
    shift
    if [ -e /usr/lib/wine/wine ]; then
        WINEPREFIX=$PWD/build/wine32 WINEARCH=win32 /usr/lib/wine/wine "$program" "$@"
    else
        local library
        library=$(dirname "$program")/tessarine.dll
        if [ -e "$library" ]; then as_root cp -u "$library" build/win32-chroot/w/; fi # beside it, where it is looked for
        as_root cp "$program" build/win32-chroot/w/
        as_root chroot build/win32-chroot env HOME=/root WINEPREFIX=/w/prefix WINEARCH=win32 WINEDEBUG=-all \
            wine "/w/$(basename "$program")" "$@"
    fi
}
