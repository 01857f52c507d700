#!/usr/bin/env bash
# The readers of graph files: each seed is read, then each reader gets 20 seconds of bytes that come
# of the seeds. What breaks one of them is left in build/fuzz/found.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

readers=(text dot graphml json)
seconds=20
found=build/fuzz/found
logs=build/fuzz/logs

export ASAN_OPTIONS="detect_stack_use_after_return=0"
export ASAN_SYMBOLIZER_PATH=/usr/bin/llvm-symbolizer-14
export LSAN_OPTIONS="suppressions=$PWD/fuzz/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1"

run_reader() {
    local reader=$1 corpus
    corpus=$(mktemp -d)
    "build/asan/bin/fuzz_$reader" "$corpus" "fuzz/seeds/$reader" -max_total_time="$seconds" \
        -max_len=4096 -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
        -dict="fuzz/dictionaries/$reader.dict" -artifact_prefix="$found/$reader-" \
        >"$logs/$reader.log" 2>&1
    echo $? >"$logs/$reader.status"
    rm -rf "$corpus"
}
export -f run_reader
export seconds found logs

check "fuzz: build" build asan "${readers[@]/#/fuzz_}"
rm -rf "$found" "$logs"
mkdir -p "$found" "$logs"

built=()
for reader in "${readers[@]}"; do
    if ! is_built asan "bin/fuzz_$reader"; then
        fail "fuzz: fuzz_$reader was not built"
        continue
    fi
    built+=("$reader")
    for seed in fuzz/seeds/"$reader"/*; do
        check "fuzz: $seed" "build/asan/bin/fuzz_$reader" "$seed" \
            -artifact_prefix="$found/$reader-"
    done
done

if ((${#built[@]} > 0)); then
    printf '%s\n' "${built[@]}" | xargs -P 2 -I '{}' bash -c 'run_reader "$1"' _ '{}'
fi
for reader in "${built[@]}"; do
    if [[ "$(cat "$logs/$reader.status" 2>/dev/null)" == 0 ]]; then
        pass 1
        printf '      %-12s %8d inputs\n' "$reader" \
            "$(sed -n 's/^stat::number_of_executed_units: *//p' "$logs/$reader.log")"
    else
        fail "fuzz: $reader" <(tail -n 60 "$logs/$reader.log")
    fi
done
