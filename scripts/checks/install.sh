#!/usr/bin/env bash
# The library as other projects meet it: installed, found by CMake and by pkg-config, and as a
# subproject.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

work=$(mktemp -d)
trap 'rm -rf "$work"; finish' EXIT
prefix="$work/prefix"

# Installs to one place and moves the result to another: nothing in it may know where it was.
install_and_move() {
    # The compiler of the other builds, by the same name, has left most of it in the cache.
    CXX=g++ build install &&
        cmake --install build/install --prefix "$work/first" &&
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

# Nothing in sight but pictures, whose paths it has to say.
runs_without_display() {
    local graph="$work/shown.txt"
    cp examples/graphs/http-parser.txt "$graph" &&
        env -u DISPLAY -u WAYLAND_DISPLAY ./run "$graph" >"$work/shown.log" &&
        cat "$work/shown.log" && grep -qF "wrote $work/shown.png: 48 nodes" "$work/shown.log" &&
        xmllint --noout --nonet "$work/shown.svg" && [[ -s "$work/shown.png" ]]
}

without_screen() {
    QT_QPA_PLATFORM=offscreen "$@"
}

run_with_libraries() {
    LD_LIBRARY_PATH="$(dirname "$(find "$prefix" -name 'libnodeline.so')")" "$@"
}

# The project in tests/install/$1, built in a folder of that name; not optimised, which takes longer.
build_inside() {
    CMAKE_CXX_COMPILER_LAUNCHER=$compiler_cache \
        cmake -S "tests/install/$1" -B "$work/$1" -G Ninja -DCMAKE_BUILD_TYPE=None \
        -DNODELINE_SOURCE="$PWD" && cmake --build "$work/$1" -j "$jobs"
}

builds_only_the_library() {
    local others
    others=$(ninja -C "$work/$1" -t targets all |
        grep -E '(_tests|nodeline_cli|bench-|example_|cairo|nodeline_qt|header_checks).*: ')
    others+=$(ninja -C "$work/$1" -t targets all | grep -E '^nodeline_(formats|viewer)')
    printf '%s\n' "$others"
    [[ -z "$others" ]]
}

# What library $1 exports is what its list says; scripts/exported-symbols.sh renews the lists.
exports_what_is_listed() {
    local library
    library=$(find "$prefix/lib" -name "lib$1.so")
    diff -u "tests/install/symbols/$1.txt" <(scripts/exported-symbols.sh "$library")
}

has_soname() {
    local library
    library=$(find "$prefix/lib" -name "lib$1.so")
    readelf -d "$library" | grep -q "soname: \[lib$1\.so\.0\]"
}

# Unpacks the packages, which need root to be installed, into one folder.
make_packages() {
    local package
    cpack --config build/install/CPackConfig.cmake -B "$work/packages" &&
        for package in "$work"/packages/*.deb; do
            dpkg-deb -x "$package" "$work/root" || return 1
        done
}

# Package $1 has the file that matches $2, and needs package $3.
package_holds() {
    local package files needs
    package=$(find "$work/packages" -maxdepth 1 -name "$1_*.deb")
    files=$(dpkg-deb -c "$package") && needs=$(dpkg-deb -f "$package" Depends) || return 1
    grep -qE " \./usr/$2( -> .*)?$" <<<"$files" && grep -qF "$3" <<<"$needs"
}

links_with_packages() {
    cmake -S tests/install/find_package -B "$work/packaged" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_PREFIX_PATH="$work/root/usr" -DNODELINE_HEADERS="$work/root/usr/include/nodeline" &&
        cmake --build "$work/packaged" --target consumer
}

line="check moved right"
version="nodeline $(sed -n 's/^    VERSION \(.*\)/\1/p' CMakeLists.txt)"
if check "install: into a prefix that is moved" install_and_move; then
    check "install: no internal header" no_internal_header
    check "install: the program" prints "$version" "$prefix/bin/nodeline" --version
    check "install: the program with a window" \
        prints "${version/nodeline/nodeline-viewer}" without_screen "$prefix/bin/nodeline-viewer" --version

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

check "install: ./run without a display" runs_without_display

for list in tests/install/symbols/*.txt; do
    name=$(basename "$list" .txt)
    check "install: what $name exports" exports_what_is_listed "$name"
    check "install: the soname of $name" has_soname "$name"
done

if check "install: packages" make_packages; then
    check "install: package of the libraries" package_holds libnodeline0 'lib.*/libnodeline\.so\.0' \
        libc6
    check "install: package for development" package_holds libnodeline-dev \
        'include/nodeline/nodeline/model/graph\.h' 'libnodeline0 (= '
    check "install: package of the programs" package_holds nodeline 'bin/nodeline-viewer' libqt6
    check "install: the packaged program" prints "$version" "$work/root/usr/bin/nodeline" --version
    check "install: find_package in packages" links_with_packages
    check "install: find_package in packages, shared" prints "$line" "$work/packaged/consumer"
fi

if check "install: subproject builds" build_inside subproject; then
    check "install: subproject" prints "$line" "$work/subproject/consumer"
    check "install: subproject builds the library alone" builds_only_the_library subproject
fi
if check "install: fetched content builds" build_inside fetch_content; then
    check "install: fetched content" prints "$line" "$work/fetch_content/consumer"
    check "install: fetched content builds the library alone" builds_only_the_library fetch_content
fi
