# at-once: for the other scripts to source; runs things at the same time that all end with the script.

groups=()
# in_background COMMAND...: its process is $! then, and its whole group ends with this script
in_background() {
    set -m
    "$@" &
    set +m
    groups+=($!)
}
end_background() {
    local group
    for group in "${groups[@]}"; do kill -- -"$group" 2>/dev/null || true; done
}
trap end_background EXIT # a script with more to do at its end calls it from a trap of its own

# at_once COMMAND NAME...: runs COMMAND with every NAME; false if one of them failed, when all have ended
at_once() {
    local command=$1 job status=0 jobs=()
    shift
    for name; do
        in_background "$command" "$name"
        jobs+=($!)
    done
    for job in "${jobs[@]}"; do wait "$job" || status=1; done
    return $status
}
