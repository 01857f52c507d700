#!/usr/bin/env bash
# Takes what replays print now for what they have to print, and names those that have changed. The
# diff is then to be read like any other.
#
#   scripts/accept-golden.sh              all scripts below tests/data/golden
#   scripts/accept-golden.sh SCRIPT ...   these
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

cmake --preset release >/dev/null
cmake --build build/release --target nodeline_cli >/dev/null

if (($# > 0)); then
    scripts=("$@")
else
    mapfile -t scripts < <(find tests/data/golden -name '*.txt' | sort)
fi
printed=$(mktemp)
trap 'rm -f "$printed"' EXIT
for script in "${scripts[@]}"; do
    expected="${script%.txt}.out"
    build/release/bin/nodeline replay "$script" >"$printed"
    if ! cmp -s "$printed" "$expected"; then
        cat "$printed" >"$expected"
        printf '%s\n' "$expected"
    fi
done
