# wine: for the other scripts to source; runs Windows programs under Wine, with separate 32-bit and 64-bit prefixes.

export WINEDEBUG=-all

# wine_64 ARGUMENT..., wine_32 ARGUMENT...: run Wine. In the chroot, build/win32-chroot/w is /w.
wine_64() { WINEPREFIX=$PWD/build/wine64 /usr/lib/wine/wine64 "$@"; }
wine_32() {
    if [ -e /usr/lib/wine/wine ]; then
        WINEPREFIX=$PWD/build/wine32 WINEARCH=win32 /usr/lib/wine/wine "$@"
    else
        as_root env HOME=/root DISPLAY="${DISPLAY:-}" WINEPREFIX=/w/prefix WINEARCH=win32 WINEDEBUG=-all \
            WINESERVER=/usr/lib/wine/wineserver32 chroot build/win32-chroot /usr/lib/wine/wine "$@"
    fi
}

# run_win64 PROGRAM [ARGUMENT...]
# tests_win64 PROGRAM: prints the GoogleTest filter for the program
run_win64() { wine_64 "$@"; }
tests_win64() { echo '*'; }

# start_display: starts a virtual screen with its own mouse and keyboard. Call it before the first program, because Wine
# reads DISPLAY only once. stop_display ends it.
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

# place_windows BITS: creates the Wine prefix and turns window management off. Otherwise Wine waits for a window manager at
# each window.
place_windows() { "wine_$1" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null; }

# script/win32-chroot registers its emulator here if the kernel cannot run 32-bit programs.
emulation=/proc/sys/fs/binfmt_misc/tessarine-i386
win32_emulated() { [ -e "$emulation" ]; }

# kernel_runs_win32: succeeds if 32-bit programs run without an emulator; tries a minimal program that only exits
kernel_runs_win32() {
    local program status=0
    ! win32_emulated || return
    program=$(mktemp)
    printf '%b' '\x7fELF\x01\x01\x01\0\0\0\0\0\0\0\0\0\x02\0\x03\0\x01\0\0\0\x54\x80\x04\x08\x34\0\0\0\0\0\0\0' \
        '\0\0\0\0\x34\0\x20\0\x01\0\0\0\0\0\0\0\x01\0\0\0\0\0\0\0\0\x80\x04\x08\0\x80\x04\x08\x5d\0\0\0\x5d\0\0\0' \
        '\x05\0\0\0\0\x10\0\0\xb8\x01\0\0\0\x31\xdb\xcd\x80' >"$program" # mov eax, 1; xor ebx, ebx; int 0x80
    chmod +x "$program"
    "$program" 2>/dev/null || status=1
    rm -f "$program"
    return $status
}

# tests_win32 PROGRAM: prints the GoogleTest filter for the program. The emulator is about thirty times slower, computes
# 80-bit sines and powers with only 64-bit accuracy, and rounds differently in the x87's 24-bit mode.
tests_win32() {
    win32_emulated || { echo '*'; return; }
    case $1 in
    tests_kernels) echo '-Math.BesselFunctionAgreesWithItsIntegral' ;;
    tests_dsp) echo '-*/??' ;; # the first ten seeds of each
    tests_plugin) echo 'SameBits.*' ;;
    tests_host) echo '-Module.LeavesNothingBehindAfterManyLoads:Threads.*:*Stack.*' ;;
    tests_editor) echo 'Buttons.*' ;;
    *) echo '*' ;;
    esac
}

# prepare_win32: finds 32-bit Wine on the system or installs it in build/win32-chroot. Returns 3 if the kernel cannot run
# 32-bit programs, and 1 on other failures.
prepare_win32() {
    [ ! -e /usr/lib/wine/wine ] || return 0
    [ "$(id -u)" -eq 0 ] || sudo -n true 2>/dev/null || return
    as_root script/win32-chroot build/win32-chroot
}

# release_chroot TREE: unmounts its /proc, so that the folder can be removed
release_chroot() {
    if [ ! -L "$1/proc" ] && mountpoint -q "$1/proc"; then as_root umount -l "$1/proc"; fi
}
release_win32() { release_chroot build/win32-chroot; }

# run_win32 PROGRAM [ARGUMENT...]
run_win32() {
    local program=$1 library
    shift
    if [ ! -e /usr/lib/wine/wine ]; then
        library=$(dirname "$program")/tessarine.dll
        if [ -e "$library" ]; then as_root cp -u "$library" build/win32-chroot/w/; fi # tests load it from their folder
        as_root cp "$program" build/win32-chroot/w/
        program=/w/$(basename "$program")
    fi
    wine_32 "$program" "$@"
}
