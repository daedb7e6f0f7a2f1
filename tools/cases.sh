# How ./test runs the cases of a preset; it sums up in passed and failed.

# Runs ctest in a preset, with its output in a log; failures are listed in failed_cases.
run_ctest() {
    local preset=$1 log=$2
    shift 2
    rm -f "build/$preset/Testing/Temporary/LastTestsFailed.log"
    ctest --preset "$preset" --timeout 600 "$@" > "$log" 2>&1
}

# The names of the cases that the last run of ctest in a preset failed.
failed_cases() {
    local list=build/$1/Testing/Temporary/LastTestsFailed.log
    [ ! -f "$list" ] || sed 's/^[0-9]*://' "$list"
}

# How many cases ran, as ctest's log says; nothing if none did.
number_of_cases() { sed -nE 's/.*tests failed out of ([0-9]+)$/\1/p' "$1"; }

# Cases run side by side and share the machine's pseudo-terminals, whose numbers go round and whose
# lock files outlive them by a moment: those that open one may try once more, and are named. All
# others fail when they fail. Takes the names of those that failed, and prints those that still do.
try_again() {
    local preset=$1 failures=$2 log=build/$1/test_again.log on_terminals names
    on_terminals=$(ctest --preset "$preset" -N -L pseudo_terminal | sed -nE 's/^ *Test +#[0-9]+: //p')
    names=$(grep -Fx "$on_terminals" <<< "$failures" || true)
    if [ -z "$on_terminals" ] || [ -z "$names" ]; then
        echo "$failures"
        return
    fi
    sed 's/^/Failed at the first try: /' <<< "$names" >&2
    run_ctest "$preset" "$log" -j 2 -L pseudo_terminal \
        -R "^($(sed 's/[][()|.*+?^$\\]/\\&/g' <<< "$names" | paste -sd '|'))\$" || true
    if [ "$(number_of_cases "$log")" != "$(wc -l <<< "$names")" ]; then
        echo "$failures"
        return
    fi
    grep -Fxv "$names" <<< "$failures" || true
    failed_cases "$preset"
}

run_cases() {
    local preset=$1 log=build/$1/test.log all failures= bad=0
    say "Testing the preset $preset ..."
    if ! run_ctest "$preset" "$log" -j 8; then
        failures=$(failed_cases "$preset")
        failures=$(try_again "$preset" "${failures:-ctest itself}")
    fi
    all=$(number_of_cases "$log")
    if [ -z "$all" ]; then
        tail -n 30 "$log" >&2
        say "No test of the preset $preset ran; $log tells more."
        failed=$((failed + 1))
        return
    fi
    [ -z "$failures" ] || bad=$(wc -l <<< "$failures")
    passed=$((passed + all - bad))
    failed=$((failed + bad))
    [ "$bad" -eq 0 ] || { sed 's/^/Failed: /' <<< "$failures" >&2 && say "$log tells more."; }
}
