# first-difference: for the other scripts to source; says where two files that ought to be equal begin to differ.

# section_at OFFSET FILE OBJDUMP: the section of a library or program that holds that byte of the file; false if none does
section_at() {
    local number name size vma lma start rest
    while read -r number name size vma lma start rest; do
        [[ $number =~ ^[0-9]+$ && $size =~ ^[0-9a-f]{8,16}$ ]] || continue
        ((0x$start > 0 && $1 >= 0x$start && $1 < 0x$start + 0x$size)) || continue # one of zeros alone starts at 0
        echo "section $name"
        return
    done < <("$3" -h "$2")
    return 1
}

# first_difference FILE FILE OBJDUMP: the first one of all, and the first inside a section: the head of a Windows
# library holds a checksum of all the rest
first_difference() {
    local offset rest section first=
    while read -r offset rest; do
        ((offset -= 1))
        : "${first:=$offset}"
        if section=$(section_at "$offset" "$1" "$3"); then
            printf 'they differ first at byte 0x%x, and inside a section at 0x%x, %s\n' "$first" "$offset" "$section"
            return
        fi
    done < <(cmp -l "$1" "$2" 2>/dev/null | head -n 50)
    if [ -n "$first" ]; then
        printf 'they differ first at byte 0x%x, in a header or a table\n' "$first"
    else
        echo "they are $(stat -c %s "$1") and $(stat -c %s "$2") bytes long, and equal up to the end of the shorter"
    fi
}
