# windows-library: for the other scripts to source; checks the imports and exports of a DLL.

# check_library DLL OBJDUMP: prints the imports, exports and faults; returns 1 on a fault
check_library() {
    local headers imports exports
    headers=$("$2" -p "$1")
    imports=$(sed -n 's/.*DLL Name: //p' <<<"$headers" | sort | tr '\n' ' ')
    exports=$(sed -n 's/^[[:space:]]*\[ *[0-9]*\] \(+base\[ *[0-9]*\] *[0-9a-f]* \)\{0,1\}\([A-Za-z_][A-Za-z0-9_@]*\)$/\2/p' <<<"$headers" | sort | tr '\n' ' ')
    echo "$1 imports $imports and exports $exports"
    if grep -vqE '^((ADVAPI32|GDI32|KERNEL32|USER32|msvcrt)\.dll)?$' <<<"${imports// /$'\n'}"; then
        echo "$1 must import only ADVAPI32, GDI32, KERNEL32, USER32 and msvcrt" >&2
        return 1
    fi
    [ "$exports" = 'VSTPluginMain main ' ] || { echo "$1 must export VSTPluginMain and main, and no other symbol" >&2; return 1; }
}
