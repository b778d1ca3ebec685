# first-difference: for the other scripts to source; says where two files that ought to be equal begin to differ.

# section_at OFFSET FILE OBJDUMP: the section of a library or program that holds that byte of the file
section_at() {
    local number name size vma lma start rest
    while read -r number name size vma lma start rest; do
        if [[ $number =~ ^[0-9]+$ && $size =~ ^[0-9a-f]{8}$ ]] && (($1 >= 0x$start && $1 < 0x$start + 0x$size)); then
            echo "section $name"
            return
        fi
    done < <("$3" -h "$2")
    echo 'no section, so in a header or a table'
}

# first_difference FILE FILE OBJDUMP
first_difference() {
    local at
    at=$(cmp "$1" "$2" | sed -n 's/.*byte \([0-9]*\),.*/\1/p')
    if [ -z "$at" ]; then
        echo "they are $(stat -c %s "$1") and $(stat -c %s "$2") bytes long, and equal up to the end of the shorter"
    else
        printf 'they differ first at byte 0x%x, in %s\n' $((at - 1)) "$(section_at $((at - 1)) "$1" "$3")"
    fi
}
