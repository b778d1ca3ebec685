# wine: for the other scripts to source; runs Windows programs under Wine, each with a prefix of its own in build/.

export WINEDEBUG=-all

# wine_64 ARGUMENT..., wine_32 ARGUMENT...: Wine itself; the one of the chroot sees its folder w as /w.
wine_64() { WINEPREFIX=$PWD/build/wine64 /usr/lib/wine/wine64 "$@"; }
wine_32() {
    if [ -e /usr/lib/wine/wine ]; then
        WINEPREFIX=$PWD/build/wine32 WINEARCH=win32 /usr/lib/wine/wine "$@"
    else
        as_root env HOME=/root DISPLAY="${DISPLAY:-}" WINEPREFIX=/w/prefix WINEARCH=win32 WINEDEBUG=-all \
            WINESERVER=/usr/lib/wine/wineserver32 chroot build/win32-chroot /usr/lib/wine/wine "$@"
    fi
}

# run_win64 PROGRAM [ARGUMENT...]; tests_win64 PROGRAM: the tests of it to run
run_win64() { wine_64 "$@"; }
tests_win64() { echo '*'; }

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

# Where the kernel does not run 32-bit programs, script/win32-chroot registers an emulator for them under this name.
emulation=/proc/sys/fs/binfmt_misc/tessarine-i386
win32_emulated() { [ -e "$emulation" ]; }

# kernel_runs_win32: whether it does without; tries the smallest program, that only ends.
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

# tests_win32 PROGRAM: the tests of it that run_win32 is to run. The emulator is some thirty times slower; its sines and
# powers of 80 bits are no more exact than those of 64, and its x87 rounds differently when set to 24 bits.
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

# prepare_win32: a 32-bit Wine of the system, or the chroot in build/win32-chroot. False where neither is to be had, and 3
# where that is because the kernel does not run 32-bit programs.
prepare_win32() {
    [ ! -e /usr/lib/wine/wine ] || return 0
    [ "$(id -u)" -eq 0 ] || sudo -n true 2>/dev/null || return
    as_root script/win32-chroot build/win32-chroot
}

# release_chroot TREE: leaves nothing mounted there, so that its folder can be removed. Its proc may be a link to ours.
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
        if [ -e "$library" ]; then as_root cp -u "$library" build/win32-chroot/w/; fi # beside it, where it is looked for
        as_root cp "$program" build/win32-chroot/w/
        program=/w/$(basename "$program")
    fi
    wine_32 "$program" "$@"
}
