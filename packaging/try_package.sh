#!/usr/bin/env bash
# try_package.sh [BUILD]: builds the Debian package in BUILD (default build/package), installs it in
# an empty Debian root, uses it there, and builds the example host there in both of the ways that
# host developers have. Needs root, mmdebstrap and a package mirror; KORVANT_PACKAGE_ROOT keeps the
# root in that folder.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
here=$PWD build=${1:-build/package}
mirror=${KORVANT_DEBIAN_MIRROR:-http://deb.debian.org/debian}
say() { echo "try_package: $*"; }

build_package() {
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
        -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG" -DKORVANT_UNITY=ON -DKORVANT_TESTS=OFF \
        >"$build.log" 2>&1 || { cat "$build.log" >&2; return 1; }
    ninja -C "$build" -j "${KORVANT_JOBS:-$(nproc)}" --quiet
    rm -f "$build"/*.deb
    (cd "$build" && cpack -G DEB >"$here/$build.log" 2>&1) || { cat "$build.log" >&2; return 1; }
    rm -f "$build.log"
}

# What the tree must hold, whatever else it holds.
check_contents() { # DEB
    local listing wanted
    listing=$(dpkg-deb --contents "$1")
    for wanted in bin/korvant 'lib/.*/libkorvantide.so' 'lib/.*/korvantide/libangelscript.so.2.35.1' \
        include/korvantide/korvantide.h \
        include/korvant/kor_stamp.h 'lib/.*/cmake/KorvantIDE/KorvantIDEConfig.cmake' \
        'lib/.*/pkgconfig/korvantide.pc' share/man/man1/korvant.1 \
        share/applications/korvant.desktop share/icons/hicolor/scalable/apps/korvant.svg \
        share/korvantide/scripting_manual/index.html share/korvantide/examples/tour.as \
        share/korvantide/examples/small_host.cpp share/doc/KorvantIDE/embedding.md \
        share/doc/KorvantIDE/copyright; do
        grep -qE "\./usr/$wanted\$" <<<"$listing" || { say "the package has no $wanted"; return 1; }
    done
}

# A root with what a host developer has: a compiler, CMake, pkg-config. The package is installed by
# apt, so that its dependencies are what it says they are.
make_root() { # DEB ROOT
    local install="apt-get install -q -y --no-install-recommends >/dev/null"
    mmdebstrap --quiet --mode=root --variant=apt \
        --include=g++,cmake,make,pkg-config,xvfb,xauth,desktop-file-utils,libxml2-utils,man-db \
        --customize-hook="mkdir -p \"\$1/opt/try\"" \
        --customize-hook="copy-in $1 $here/packaging/try_in_root.sh $here/tests/hosts/installed \
            $here/examples /opt/try" \
        --customize-hook="chroot \"\$1\" sh -c '$install /opt/try/*.deb && $install angelscript-dev'" \
        bookworm "$2" "$mirror"
}

say "building the package"
mkdir -p "$build"
build_package
deb=$(ls "$here/$build"/*.deb)
check_contents "$deb"
dpkg-deb --field "$deb" Package Version Depends Recommends Installed-Size

root=${KORVANT_PACKAGE_ROOT:-$(mktemp -d)}
[ -n "${KORVANT_PACKAGE_ROOT:-}" ] || trap 'rm -rf --one-file-system "$root"' EXIT
say "installing it in an empty root"
make_root "$deb" "$root"
say "using it there"
timeout 300 unshare --mount --pid --fork chroot "$root" /bin/sh -c \
    'mount -t proc proc /proc && exec bash /opt/try/try_in_root.sh'
say "the package installs, runs and can be built against"
