# How ./test runs cases; it sums up in passed and failed.

# Runs ctest in a preset, with the output of all cases in a log.
run_ctest() {
    local preset=$1 log=$2
    shift 2
    ctest --preset "$preset" --timeout 600 --verbose "$@" > "$log" 2>&1
}

# What a log of ctest says of each case: a line "passed" or "failed", and its name. Where a test of
# ctest's is a program of many cases, these are the ones that GoogleTest tells of; the one that was
# running when the program came to a bad end has failed, too. Nothing if ctest came to no end.
outcomes() {
    awk '
        match($0, /^[0-9]+: /) {
            test = $1
            said = substr($0, RLENGTH + 1)
            if (said ~ /^\[ RUN      \] /) {
                running[test] = $5
                cases[test]++
            } else if (running[test] != "" && said ~ /^\[( +OK|  FAILED |  SKIPPED) \] /) {
                told[test] = told[test] (said ~ /^\[  FAILED/ ? "failed " : "passed ") running[test] "\n"
                running[test] = ""
            }
        }
        match($0, /^ *[0-9]+\/[0-9]+ Test +#[0-9]+: /) {
            test = $0
            gsub(/^[^#]*#|:.*/, "", test)
            test = test ":"
            $0 = substr($0, RLENGTH + 1)
            outcome = / Passed |\*\*\*Skipped/ ? "passed " : "failed "
            if (running[test] != "") told[test] = told[test] "failed " running[test] "\n"
            if (cases[test] < 2 || (outcome == "failed " && told[test] !~ /failed /)) {
                told[test] = outcome $1 "\n"
            }
            all = all told[test]
        }
        /tests failed out of [0-9]+$/ { printf "%s", all }
    ' "$1"
}

# Cases run side by side and share the machine's pseudo-terminals, whose numbers go round and whose
# lock files outlive them by a moment: those that open one may try once more, and are named. All
# others fail when they fail. Takes the names of those that failed and a file for the log, and prints
# those that still do.
try_again() {
    local preset=$1 failures=$2 log=$3 on_terminals names
    on_terminals=$(ctest --preset "$preset" -N -L pseudo_terminal | sed -nE 's/^ *Test +#[0-9]+: //p')
    names=$(grep -Fx "$on_terminals" <<< "$failures" || true)
    if [ -z "$on_terminals" ] || [ -z "$names" ]; then
        echo "$failures"
        return
    fi
    sed 's/^/Failed at the first try: /' <<< "$names" >&2
    run_ctest "$preset" "$log" -j 2 -L pseudo_terminal \
        -R "^($(sed 's/[][()|.*+?^$\\]/\\&/g' <<< "$names" | paste -sd '|'))\$" || true
    grep -Fxv "$(outcomes "$log" | sed -n 's/^passed //p')" <<< "$failures" || true
}

# Runs cases of a preset: all of them, or those that further arguments for ctest choose; a word says
# which these are.
run_cases() {
    local preset=$1 which=$2 log=build/$1/test_$2.log all failures bad=0
    shift 2
    say "Testing: $which ..."
    run_ctest "$preset" "$log" -j 8 "$@" || true
    all=$(outcomes "$log")
    if [ -z "$all" ]; then
        tail -n 30 "$log" >&2
        say "No test ran; $log tells more."
        failed=$((failed + 1))
        return
    fi
    failures=$(sed -n 's/^failed //p' <<< "$all")
    [ -z "$failures" ] || failures=$(try_again "$preset" "$failures" "${log%.log}_again.log")
    [ -z "$failures" ] || bad=$(wc -l <<< "$failures")
    passed=$((passed + $(wc -l <<< "$all") - bad))
    failed=$((failed + bad))
    [ "$bad" -eq 0 ] || { sed 's/^/Failed: /' <<< "$failures" >&2 && say "$log tells more."; }
}
