#!/usr/bin/env bash
# Every example runs to its end, in an empty folder, and has something to show for it.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

log=$(mktemp)
build release >"$log" 2>&1

run_example() {
    local program=$1 folder=$2 printed
    printed=$(cd "$folder" && QT_QPA_PLATFORM=offscreen timeout 120 "$program" 2>&1) || {
        echo "ended with status $?"
        printf '%s\n' "$printed"
        return 1
    }
    [[ -n "$printed" ]] || [[ -n "$(find "$folder" -type f)" ]] || {
        echo "printed nothing and wrote nothing"
        return 1
    }
}

for source in examples/*.cpp; do
    [[ -e "$source" ]] || break
    name=$(basename "$source" .cpp)
    if ! is_built release "examples/$name"; then
        fail "examples: $name was not built" <(tail -n 40 "$log")
        continue
    fi
    folder=$(mktemp -d)
    check "examples: $name" run_example "$PWD/build/release/examples/$name" "$folder"
    rm -rf "$folder"
done
export NODELINE="$PWD/build/release/bin/nodeline"
for script in examples/*.sh; do
    folder=$(mktemp -d)
    check "examples: $(basename "$script")" run_example "$PWD/$script" "$folder"
    rm -rf "$folder"
done
rm -f "$log"
