# build: for the other scripts to source; builds with a preset of CMakePresets.json.

# build PRESET [TARGET...]: logs to build/PRESET.log; prints errors and returns 1 on failure. Waits while another script
# builds the same preset.
build() (
    preset=$1 log=build/$1.log
    shift
    mkdir -p build
    exec 9>"build/$preset.lock"
    flock 9
    cmake --preset "$preset" >"$log" 2>&1 ||
        { tail -n 20 "$log"; echo "CMake could not configure the build; see $log"; return 1; } >&2
    cmake --build --preset "$preset" -j "$(nproc)" ${1:+--target "$@"} >>"$log" 2>&1 ||
        { grep -E -A4 'error|warning|\*\*\*' "$log" | head -n 40; echo "the build failed; see $log"; return 1; } >&2
)
