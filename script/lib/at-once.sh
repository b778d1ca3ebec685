# at-once: for the other scripts to source; runs background commands that end with the script.

groups=()
# in_background COMMAND...: sets $! to the process; its process group ends with this script
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
trap end_background EXIT # scripts with their own EXIT trap must call end_background there

# at_once COMMAND NAME...: runs COMMAND with every NAME at once; waits for all and returns 1 if any failed
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
