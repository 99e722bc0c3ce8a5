#!/usr/bin/env bash
# build.sh TARGET...: cross builds for Windows (x86_64, i686) into build/windows-TARGET, from
# sources and a toolkit that are fetched and built once and kept outside the clone.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
here=$root/cmake/windows
cache=${KORVANT_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/korvantide-windows}
jobs=${KORVANT_JOBS:-$(nproc)}
mkdir -p "$cache"

# Two builds at once would unpack over each other.
exec 9>"$cache/lock"
flock 9

say() { echo "dev: windows: $*" >&2; }

# Done once for each version of the sources and of what is changed in them.
engine=$root/cmake/engine
version=$(cat "$here"/sources.sha256 "$here"/fetch_sources.sh "$engine"/sources.sha256 "$engine"/*.patch |
          sha256sum | cut -c1-16)
if [ ! -f "$cache/sources/.unpacked-$version" ]; then
    say "fetching the sources of the engine and the toolkit"
    "$here/fetch_sources.sh" "$cache/sources"
    touch "$cache/sources/.unpacked-$version"
fi

# Libraries that are headers only, apart from the other headers of this machine.
mkdir -p "$cache/headers"
ln -sfn /usr/include/CLI "$cache/headers/CLI"
ln -sfn /usr/include/nlohmann "$cache/headers/nlohmann"
ln -sfn /usr/include/asio "$cache/headers/asio"
ln -sfn /usr/include/asio.hpp "$cache/headers/asio.hpp"

for target in "$@"; do
    if [ ! -x "$cache/wx-$target/bin/wx-config" ]; then
        say "building the toolkit for $target, once, about 20 minutes"
        "$here/build_wx.sh" "$cache/sources/wxwidgets" "$target-w64-mingw32" "$cache/wx-$target"
    fi
done
flock -u 9

configure() { # TARGET FOLDER
    cmake -G Ninja -S "$root" -B "$2" \
        -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" \
        -DKORVANT_WINDOWS_TARGET="$1-w64-mingw32" \
        -DKORVANT_WX_PREFIX="$cache/wx-$1" \
        -DwxWidgets_CONFIG_EXECUTABLE="$cache/wx-$1/bin/wx-config" \
        -DKORVANT_ANGELSCRIPT_SOURCE="$cache/sources/angelscript" \
        -DKORVANT_HEADER_FOLDER="$cache/headers" \
        -DKORVANT_GTEST_SOURCE=/usr/src/googletest \
        -DKORVANT_WERROR=ON -DKORVANT_UNITY=ON -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_CXX_FLAGS_RELEASE=-O2
}

for target in "$@"; do
    folder=$root/build/windows-$target
    mkdir -p "$folder"
    if [ ! -f "$folder/build.ninja" ]; then
        configure "$target" "$folder" >"$folder/configure.log" 2>&1 || {
            cat "$folder/configure.log" >&2
            exit 1
        }
    fi
    say "building for $target"
    targets=(korvant korvantide korvant_worker base_tests expr_tests host_tests module_tests object_tests
             debug_tests ui_dialog_tests ui_form_tests win32_host)
    # What does not depend on the processor is tested once.
    [ "$target" != x86_64 ] ||
        targets+=(editor_tests language_tests protocol_tests ui_editor_tests)
    ninja -C "$folder" -j "$jobs" --quiet "${targets[@]}"
    "$here/check_binaries.sh" "$target" "$folder/bin"
done
