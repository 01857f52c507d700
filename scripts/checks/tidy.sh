#!/usr/bin/env bash
# clang-tidy on every source: tidy.sh [FILE ...]
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

log=$(mktemp)
if ! cmake --preset asan >"$log" 2>&1; then
    fail "tidy: no compile commands" "$log"
fi

# The sources as the compiler gets them, without what is generated or comes from elsewhere. Tests
# are left to the warnings and the sanitizers: the analyzer takes half an hour over their macros.
compiled() {
    sed -n "s|^ *\"file\": \"$PWD/\(.*\)\".*|\1|p" build/asan/compile_commands.json |
        grep -v '^build/\|^tests/' | sort -u
}

run_tidy() {
    local report="build/asan/tidy/${1//\//_}"
    clang-tidy-14 -p build/asan --quiet "$1" >"$report.log" 2>/dev/null
    echo $? >"$report.status"
}
export -f run_tidy

mapfile -t files < <(if (($# > 0)); then printf '%s\n' "$@"; else compiled; fi)
rm -rf build/asan/tidy
mkdir -p build/asan/tidy
printf '%s\n' "${files[@]}" | xargs -P "$jobs" -I '{}' bash -c 'run_tidy "$1"' _ '{}'
for file in "${files[@]}"; do
    report="build/asan/tidy/${file//\//_}"
    if [[ "$(cat "$report.status" 2>/dev/null)" == 0 ]]; then
        pass 1
    else
        fail "tidy: $file" "$report.log"
    fi
done
rm -f "$log"
