#!/usr/bin/env bash
# Builds a preset and runs its test programs: suite.sh PRESET [AREA ...]
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

preset=$1
shift
reports="build/$preset/reports"

export LSAN_OPTIONS="suppressions=$PWD/tests/support/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1"
if [[ "$preset" == asan ]]; then
    export ASAN_OPTIONS="check_initialization_order=1:detect_stack_use_after_return=0"
    export ASAN_SYMBOLIZER_PATH=/usr/bin/llvm-symbolizer-14
fi
if [[ "$preset" == tsan ]]; then
    # Races are what it looks for: signals and dying subscribers take their locks in opposite orders
    # on purpose, and who may do so at the same time is a rule of the interface.
    export TSAN_OPTIONS="detect_deadlocks=0"
fi

# The areas to test.
areas() {
    local area
    for area in tests/*/; do
        area=$(basename "$area")
        compgen -G "tests/$area/*_test.cpp" >/dev/null || continue
        if [[ "$preset" == m32 && "$area" =~ ^(cairo|cli|desktop|formats|qt|viewer_parts)$ ]]; then
            continue
        fi
        printf '%s\n' "$area"
        # Once more as on a screen of two device pixels to one.
        if [[ "$area" =~ ^(qt|viewer_parts)$ ]]; then
            printf '%s_fine\n' "$area"
        fi
    done
}

# What takes longest goes first, so that at the end nobody waits for it.
longest_first() {
    sed -E 's/^(property|cli|deep|desktop|memory)$/0 &/; t; s/^/1 /' | LC_ALL=C sort -s -k1,1 |
        cut -d ' ' -f 2
}

# Runs the program of one area. Nothing in the library may recurse as deep as a graph does, which
# the area "deep" proves on a small stack; sanitizers blow frames up, so there it gets a large one.
run_area() {
    local area=$1
    local report="$reports/$area"
    if [[ "$area" == *_fine ]]; then
        export QT_SCALE_FACTOR=2
    fi
    exec 2>/dev/null  # where bash reports a crash, which the status tells as well
    if [[ "$area" == deep ]]; then
        case "$preset" in
            release) ulimit -s 1024 ;;
            asan) ulimit -s unlimited 2>/dev/null || ulimit -s "$(ulimit -H -s)" ;;
        esac
    fi
    timeout --kill-after=10 1200 "build/$preset/bin/${area%_fine}_tests" \
        --gtest_output="xml:$report.xml" >"$report.log" 2>&1
    echo $? >"$report.status"
}
export -f run_area
export preset reports

# Adds up an attribute of the test suites in a report.
sum_of() {
    sed -n "s/^<testsuites .*\b$1=\"\([0-9]*\)\".*/\1/p" "$2"
}

# Counts what the program of area $1 reported. A program that did not end properly leaves no
# report: it counts as one failure, and what its log says it had done counts as passed.
count_area() {
    local area=$1
    local report="$reports/$area" status tests failures skipped
    if [[ ! -e "$report.status" ]]; then
        fail "$preset: $area was not run"
        return
    fi
    status=$(<"$report.status")
    if [[ ! -s "$report.xml" ]]; then
        pass "$(grep -c '^\[       OK \]' "$report.log")"
        fail "$preset: $area ended with status $status in $(
            sed -n 's/^\[ RUN      \] //p' "$report.log" | tail -n 1)" <(remarks "$report.log")
        return
    fi

    tests=$(sum_of tests "$report.xml")
    failures=$(sum_of failures "$report.xml")
    skipped=$(grep -c '<testcase .*\(result="skipped"\|status="notrun"\)' "$report.xml")
    pass $((tests - failures - skipped))
    printf '      %-12s %5d passed\n' "$area" $((tests - failures - skipped))
    if ((skipped > 0)); then
        printf '      %-12s %5d not run\n' "$area" "$skipped"
    fi
    if ((tests == 0)); then
        fail "$preset: $area has no test"
    elif ((failures > 0)); then
        ((failed += failures - 1))
        fail "$preset: $area, $failures failed:" <(failed_cases "$report.log")
    elif ((status != 0)); then
        fail "$preset: $area ended with status $status" <(remarks "$report.log")
    fi
}

# What a log holds besides the progress of the cases.
remarks() {
    grep -v '^\[ RUN      \]\|^\[       OK \]\|^\[----------\]\|^$' "$1"
}

# What a log holds of the cases that failed.
failed_cases() {
    awk '
        /^\[ RUN      \]/ { text = ""; inside = 1 }
        inside { text = text $0 "\n" }
        /^\[       OK \]/ { inside = 0 }
        /^\[  FAILED  \]/ && inside { printf "%s", text; inside = 0 }
    ' "$1"
}

if [[ "$preset" == m32 ]] && (($# == 0)); then
    mapfile -t all < <(areas)
    set -- "${all[@]}"
fi
# With areas named, what they need is enough.
check "$preset: build" build "$preset" "${@/%/_tests}"

mapfile -t chosen < <(if (($# > 0)); then printf '%s\n' "$@"; else areas; fi)
rm -rf "$reports"
mkdir -p "$reports"
for area in "${chosen[@]}"; do
    if is_built "$preset" "bin/${area%_fine}_tests"; then
        printf '%s\n' "$area"
    fi
done | longest_first | xargs -P "$jobs" -I '{}' bash -c 'run_area "$1"' _ '{}'
for area in "${chosen[@]}"; do
    count_area "$area"
done
