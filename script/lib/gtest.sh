# gtest: for the other scripts to source; reads the log of a GoogleTest program or of ctest.

# outcome LOG: prints the number of tests by result
outcome() { sed -nE 's/^\[ +([A-Z]+) +\] ([0-9]+) tests?\b.*/\2 \L\1/p' "$1" | paste -sd ' '; }

# failures LOG: prints crashed tests, and up to 80 lines of the output of crashed and failed tests and outside tests
failures() {
    tr -d '\r' <"$1" | awk '
        function show(lines) { for (i = 1; i <= lines; i++) if (++shown <= 80) print line[i] }
        function end() { if (running) { print "[ CRASHED  ] " running; show(count) } running = "" }
        /^\[ RUN / { end(); running = substr($0, 14); count = 0; next }
        /^\[ +(OK|SKIPPED|FAILED) / { if (running && /FAILED/) { line[++count] = $0; show(count) } running = ""; next }
        / Test +#[0-9]+:|tests passed,/ { end() }
        running { line[++count] = $0; next }
        /^(\[[-=]|\[  PASSED|Note: |Running main|Test project| +Start | *[0-9]+ FAILED TEST)|: .*\.\. +Passed / || !NF { next }
        { line[1] = $0; show(1) }
        END { end() }'
}
