#!/usr/bin/env bash
# No area includes a header of an area above it. Internal headers, which are not installed, stay
# inside the library: no public header, backend or program includes one.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

# What an area may include besides itself, lowest first.
declare -A below=(
    [corvex]=""
    [checkfence]="corvex"
    [paintcore]="corvex checkfence"
    [nodeline/functor]="corvex checkfence"
    # Elements are subscribers.
    [viewkit]="corvex checkfence paintcore nodeline/functor"
    [nodeline/model]="corvex checkfence paintcore nodeline/functor"
    [nodeline/ops]="corvex checkfence paintcore nodeline/functor nodeline/model"
    [nodeline/handlers]="corvex checkfence paintcore nodeline/functor nodeline/model nodeline/ops"
    [nodeline/layout]="corvex checkfence paintcore nodeline/functor nodeline/model nodeline/ops
        nodeline/handlers"
    [nodeline/viewer]="corvex checkfence paintcore viewkit nodeline/functor nodeline/model
        nodeline/ops nodeline/handlers"
)
# The backends stand on all of it, side by side.
library="${!below[*]}"
below[backends/headless]=$library
below[backends/cairo]=$library
# Widgets write their pictures with it.
below[backends/qt]="$library backends/cairo"
# Files are read into graphs and written from them; nothing is shown.
below[formats]="corvex checkfence paintcore nodeline/functor nodeline/model nodeline/ops
    nodeline/handlers"
# The sources of the model, not its headers, also know what it sets in motion: the driver runs
# layouts, and a graph that is given no handler or layout takes the stock ones.
sources_of_model="nodeline/ops nodeline/handlers nodeline/layout"

# The area that a file or an included header belongs to: its folder, without platform/.
area_of() {
    local path=${1#platform/}
    case "$path" in
        nodeline/*/* | backends/*/*) cut -d / -f 1,2 <<<"$path" ;;
        */*) cut -d / -f 1 <<<"$path" ;;
    esac
}

for folder in platform/*/ nodeline/*/ backends/*/ formats/; do
    area=$(area_of "$folder")
    compgen -G "$folder*.h" >/dev/null || continue
    if [[ ! -v below[$area] ]]; then
        fail "layers: $area has no place among the areas"
        continue
    fi
    wrong=$(
        grep -rHoE '^#include <[^>]+>' --include='*.h' --include='*.cpp' "$folder" |
            while IFS=: read -r file line; do
                header=${line#*<}
                header=${header%>}
                allowed=" $area ${below[$area]//$'\n'/ } "
                if [[ "$area" == nodeline/model && "$file" == *.cpp ]]; then
                    allowed+="$sources_of_model "
                fi
                target=$(area_of "$header")
                if [[ -z "$target" || ! -v below[$target] ]]; then
                    continue  # no header of ours
                elif [[ "$allowed" != *" $target "* ]]; then
                    echo "$file includes $header"
                elif [[ "$header" == */internal/* ]] && {
                    [[ "$area" == backends/* && "$target" != "$area" ]] ||
                        [[ "$file" == *.h && "$file" != */internal/* ]]
                }; then
                    echo "$file includes $header"
                fi
            done
    )
    if [[ -n "$wrong" ]]; then
        fail "layers: $area" <(printf '%s\n' "$wrong")
    else
        pass 1
    fi
done

wrong=$(grep -rn '^#include <.*/internal/' formats apps examples bench --include='*.h' --include='*.cpp')
if [[ -n "$wrong" ]]; then
    fail "layers: programs include internal headers" <(printf '%s\n' "$wrong")
else
    pass 1
fi
