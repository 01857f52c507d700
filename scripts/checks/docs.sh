#!/usr/bin/env bash
# Documents lead where they say, their code is that of the examples, and the site can be made of them.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

work=$(mktemp -d)
trap 'rm -rf "$work"; finish' EXIT

check "docs: links between files" scripts/check-docs.py links
check "docs: code stands in the examples" scripts/check-docs.py code
check "docs: comments of all that is public" scripts/check-reference.py

has_every_header() {
    local headers pages
    headers=$(find nodeline platform backends -name '*.h' -not -path '*/internal/*' | wc -l)
    pages=$(find "$work/html" -name '*_8h.html' | wc -l)
    printf '%s\n' "$headers headers, $pages pages"
    [[ "$headers" == "$pages" ]]
}

if check "docs: the site, without a warning" scripts/make-site.py "$work"; then
    check "docs: links of the site" scripts/check-docs.py site "$work/html"
    check "docs: every public header in the reference" has_every_header
fi
