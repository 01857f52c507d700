#!/usr/bin/env bash
# Installs the Debian packages that are missing; says nothing and needs no network if none is.
#
#   scripts/install-packages.sh build    what it takes to build the programs (default)
#   scripts/install-packages.sh window   and to show windows where there is Wayland without X
#   scripts/install-packages.sh test     what it takes to build, and what ./test runs besides
set -euo pipefail

packages=(
    g++ cmake ninja-build pkg-config
    libcairo2-dev libpango1.0-dev fonts-dejavu-core
    qt6-base-dev
    libcli11-dev nlohmann-json3-dev libgraphviz-dev libpugixml-dev
)
window_packages=(qt6-wayland)
test_packages=(
    libgtest-dev googletest libbenchmark-dev
    clang-14 libclang-rt-14-dev llvm-14 clang-format-14 clang-tidy-14
    g++-multilib libxml2-utils poppler-utils python3
    xvfb xdotool dpkg-dev file doxygen ccache
)

case "${1:-build}" in
    build) ;;
    window) packages+=("${window_packages[@]}") ;;
    test) packages+=("${test_packages[@]}") ;;
    *)
        echo "usage: $0 [build|window|test]" >&2
        exit 2
        ;;
esac

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    echo "This is no Debian system. Please see to these packages, or their like, yourself:" >&2
    echo "    ${packages[*]}" >&2
    exit 0
fi

missing=()
for package in "${packages[@]}"; do
    state=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [[ "$state" == installed ]] || missing+=("$package")
done
((${#missing[@]} > 0)) || exit 0

as_root=()
if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
        echo "Missing packages, and neither root nor sudo to install them: ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

echo "Installing ${missing[*]}" >&2
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "${missing[@]}"
} >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
