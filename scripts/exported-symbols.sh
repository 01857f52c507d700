#!/usr/bin/env bash
# Prints what the shared libraries export, or accepts it.
#
#   scripts/exported-symbols.sh LIBRARY     the functions and objects that LIBRARY exports, sorted
#   scripts/exported-symbols.sh --accept    takes those of build/install as the ones to be
#
# Weak symbols are left out: which inline functions and templates a library holds is the compiler's
# choice.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

exported_by() {
    nm -D -C --defined-only "$1" | sed -n 's|^[0-9a-f]* [TDBR] ||p' | grep -vxE '__bss_start|_edata|_end' |
        LC_ALL=C sort -u
}

case "${1:-}" in
    --accept)
        for list in tests/install/symbols/*.txt; do
            exported_by "$(find build/install -name "lib$(basename "$list" .txt).so")" >"$list"
        done
        ;;
    -* | "")
        sed -n '2,9s/^# \{0,1\}//p' "${BASH_SOURCE[0]}" >&2
        exit 2
        ;;
    *) exported_by "$1" ;;
esac
