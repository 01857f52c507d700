#!/usr/bin/env bash
# The library as other projects meet it: installed, found by CMake and by pkg-config, and as a
# subproject.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

work=$(mktemp -d)
trap 'rm -rf "$work"; finish' EXIT
prefix="$work/prefix"

# Installs to one place and moves the result to another: nothing in it may know where it was.
install_and_move() {
    build release &&
        cmake --install build/release --prefix "$work/first" &&
        mv "$work/first" "$prefix" &&
        ! grep -rlF -e "$work/first" -e "$PWD" "$prefix/include" "$prefix/lib" --include='*.h' \
            --include='*.cmake' --include='*.pc'
}

no_internal_header() {
    [[ -z "$(find "$prefix/include" -name internal)" ]]
}

# The rest of the arguments is a command that prints just the line $1.
prints() {
    local expected=$1 printed
    shift
    printed=$("$@") || return 1
    printf '%s\n' "$printed"
    [[ "$printed" == "$expected" ]]
}

# The arguments are the program in README.md; the number depends on the font.
prints_position() {
    "$@" | tee /dev/stderr | grep -qxE 'check stands at [0-9.]+'
}

# The arguments are a program; told a file name, it writes a picture there.
writes_picture() {
    rm -f "$work/picture.svg"
    "$@" "$work/picture.svg" && xmllint --noout --nonet "$work/picture.svg"
}

configure_find_package() {
    cmake -S tests/install/find_package -B "$work/found" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_PREFIX_PATH="$prefix" -DNODELINE_HEADERS="$prefix/include/nodeline"
}

# Compiles source $2 to program $1 with what pkg-config says of the packages after it.
compile_with_pkgconfig() {
    local program=$1 source=$2
    shift 2
    local flags
    flags=$(PKG_CONFIG_PATH="$prefix/lib/pkgconfig:$prefix/lib/$(gcc -print-multiarch)/pkgconfig" \
        pkg-config --cflags --libs "$@") || return 1
    # shellcheck disable=SC2086  # one word per flag
    g++ -std=c++20 "$source" -o "$program" $flags
}

without_screen() {
    QT_QPA_PLATFORM=offscreen "$@"
}

run_with_libraries() {
    LD_LIBRARY_PATH="$(dirname "$(find "$prefix" -name 'libnodeline.so')")" "$@"
}

build_subproject() {
    cmake -S tests/install/subproject -B "$work/sub" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DNODELINE_SOURCE="$PWD" && cmake --build "$work/sub" -j "$jobs"
}

builds_only_the_library() {
    local others
    others=$(ninja -C "$work/sub" -t targets all |
        grep -E '(_tests|nodeline_cli|bench-|example_|cairo|nodeline_qt|header_checks).*: ')
    printf '%s\n' "$others"
    [[ -z "$others" ]]
}

line="check moved right"
if check "install: into a prefix that is moved" install_and_move; then
    check "install: no internal header" no_internal_header
    check "install: the program" prints "nodeline $(
        sed -n 's/^    VERSION \(.*\)/\1/p' CMakeLists.txt)" "$prefix/bin/nodeline" --version

    check "install: find_package" configure_find_package
    for target in consumer consumer_static picture picture_static widget widget_static \
        all_headers; do
        check "install: find_package builds $target" cmake --build "$work/found" --target "$target"
    done
    check "install: find_package, shared" prints "$line" "$work/found/consumer"
    check "install: find_package, static" prints "$line" "$work/found/consumer_static"
    check "install: find_package, Cairo" writes_picture "$work/found/picture"
    check "install: find_package, Cairo static" writes_picture "$work/found/picture_static"
    check "install: find_package, Qt" prints "1 node shown" without_screen "$work/found/widget"
    check "install: find_package, Qt static" \
        prints "1 node shown" without_screen "$work/found/widget_static"

    check "install: pkg-config builds" \
        compile_with_pkgconfig "$work/consumer" tests/install/consumer.cpp nodeline-headless
    check "install: pkg-config" prints "$line" run_with_libraries "$work/consumer"
    check "install: pkg-config builds with Cairo" \
        compile_with_pkgconfig "$work/picture" tests/install/picture.cpp nodeline-cairo
    sed -n '/^```cpp/,/^```/{/^```/!p}' README.md >"$work/readme.cpp"
    check "install: the program in README.md builds" \
        compile_with_pkgconfig "$work/readme" "$work/readme.cpp" nodeline-cairo
    check "install: the program in README.md" \
        prints_position run_with_libraries "$work/readme"
    check "install: pkg-config, Cairo" writes_picture run_with_libraries "$work/picture"
fi

if check "install: subproject builds" build_subproject; then
    check "install: subproject" prints "$line" "$work/sub/consumer"
    check "install: subproject builds the library alone" builds_only_the_library
fi
