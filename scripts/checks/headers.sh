#!/usr/bin/env bash
# Every public header compiles alone, and may be included twice.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

log=$(mktemp)
build release header_checks >"$log" 2>&1

unit='header_checks.dir/\(.*\)\.cpp\.o'
headers=$(ninja -C build/release -t targets all | sed -n "s|^tests/headers/CMakeFiles/$unit: .*|\1|p")
if [[ -z "$headers" ]]; then
    fail "headers: none to check" "$log"
fi
for header in $headers; do
    if is_built release "tests/headers/CMakeFiles/header_checks.dir/$header.cpp.o"; then
        pass 1
    else
        fail "headers: $header" <(grep -A 12 "^FAILED: .*/$header\.cpp\.o" "$log")
    fi
done
rm -f "$log"
