#!/usr/bin/env bash
# Every source file is formatted as .clang-format says. To mend: clang-format-14 -i FILE
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

mapfile -t files < <(sources)
log=$(mktemp)
bad=0
if ! printf '%s\n' "${files[@]}" |
    xargs -n 50 clang-format-14 --dry-run --Werror --ferror-limit=1 >"$log" 2>&1; then
    for file in $(sed -n 's/^\([^ :]*\):[0-9]*:[0-9]*: error: .*/\1/p' "$log" | sort -u); do
        fail "format: $file"
        ((bad += 1))
    done
    if ((bad == 0)); then
        fail "format: clang-format did not run" "$log"
        bad=${#files[@]}
    fi
fi
pass $((${#files[@]} - bad))
rm -f "$log"
