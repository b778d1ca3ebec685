# first-difference: for the other scripts to source; reports where two binaries begin to differ.

# section_at OFFSET FILE OBJDUMP: prints the section of a binary that contains the byte; returns 1 if there is none
section_at() {
    local number name size vma lma start rest
    while read -r number name size vma lma start rest; do
        [[ $number =~ ^[0-9]+$ && $size =~ ^[0-9a-f]{8,16}$ ]] || continue
        ((0x$start > 0 && $1 >= 0x$start && $1 < 0x$start + 0x$size)) || continue # .bss starts at 0
        echo "section $name"
        return
    done < <("$3" -h "$2")
    return 1
}

# first_difference FILE FILE OBJDUMP: prints the first difference and the first inside a section. The header of a Windows
# library contains a checksum, so it differs if anything does.
first_difference() {
    local offset rest section first=
    while read -r offset rest; do
        ((offset -= 1))
        : "${first:=$offset}"
        if section=$(section_at "$offset" "$1" "$3"); then
            printf 'first difference at byte 0x%x; first inside a section at 0x%x, %s\n' "$first" "$offset" "$section"
            return
        fi
    done < <(cmp -l "$1" "$2" 2>/dev/null | head -n 50)
    if [ -n "$first" ]; then
        printf 'first difference at byte 0x%x, in a header or a table\n' "$first"
    else
        echo "sizes $(stat -c %s "$1") and $(stat -c %s "$2") bytes; equal up to the end of the shorter file"
    fi
}
