# What the checks share: counting, reporting and building. To be sourced first.
#
# A check goes on after a failure. At its end it leaves its two counts in the file that RESULT_FILE
# names, and fails if any item of it did.

set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.." || exit 1

passed=0
failed=0
jobs=$(nproc)

# What one build has compiled another one with the same flags need not compile again.
export CCACHE_DIR="$PWD/build/ccache" CCACHE_DEPEND=1
compiler_cache=$(command -v ccache || true)

finish() {
    local status=$?
    if ((status != 0 && failed == 0)); then
        fail "the check itself ended with status $status"
    fi
    printf '%d %d\n' "$passed" "$failed" >"${RESULT_FILE:-/dev/null}"
    ((failed == 0)) || exit 1
}
trap finish EXIT

# Counts $1 items that are as they should be.
pass() {
    ((passed += $1))
    return 0
}

# Counts and reports a failed item; $2, if given, is a file with what it said.
fail() {
    ((failed += 1))
    printf 'FAIL  %s\n' "$1"
    if [[ -n "${2:-}" ]]; then
        sed 's/^/      /' "$2"
    fi
    return 0
}

# Runs a command as the item $1; what it prints is shown only if it fails.
check() {
    local name=$1 log
    shift
    log=$(mktemp)
    if "$@" >"$log" 2>&1; then
        pass 1
    else
        fail "$name" "$log"
        rm -f "$log"
        return 1
    fi
    rm -f "$log"
}

# Configures preset $1 and builds the targets after it, by default all; prints what went wrong. Goes
# on after an error, so that what can be built is built.
build() {
    local preset=$1 log
    shift
    build_succeeded=no
    log=$(mktemp)
    # The other builds share nothing.
    if [[ "$preset" == release || "$preset" == install ]]; then
        local -x CMAKE_CXX_COMPILER_LAUNCHER=$compiler_cache
    fi
    if ! cmake --preset "$preset" >"$log" 2>&1; then
        cat "$log"
    elif cmake --build "build/$preset" -j "$jobs" --target "${@:-all}" -- -k 0 >"$log" 2>&1; then
        build_succeeded=yes
    else
        sed '/^\[[0-9]*\/[0-9]*\] /d' "$log"
    fi
    rm -f "$log"
    [[ "$build_succeeded" == yes ]]
}

# Whether file $2 in the build folder of preset $1 is what its sources make, after a `build`.
is_built() {
    if [[ "$build_succeeded" == no ]] && ! ninja -C "build/$1" "$2" >/dev/null 2>&1; then
        return 1
    fi
    [[ -e "build/$1/$2" ]]
}

# The sources and headers of this project.
sources() {
    find nodeline platform backends formats apps examples bench tests fuzz -name node_modules -prune -o \
        \( -name '*.h' -o -name '*.cpp' \) -type f -print | sort
}
