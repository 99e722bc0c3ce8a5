#!/usr/bin/env bash
# build_wx.sh SOURCE TARGET PREFIX: builds the toolkit for Windows as static libraries with just
# the parts that KorvantIDE uses. TARGET: x86_64-w64-mingw32 or i686-w64-mingw32.
set -euo pipefail
source=$1 target=$2 prefix=$3
build=$prefix-build
rm -rf "$build"
mkdir -p "$build" "$prefix"
cd "$build"
wrap=""
command -v ccache >/dev/null && wrap="ccache "
"$source/configure" --prefix="$prefix" --host="$target" --with-msw --disable-shared \
    --disable-svg --without-expat --disable-xrc --without-libpng --without-libjpeg \
    --without-libtiff --without-zlib --without-liblzma --disable-webview --disable-webrequest \
    --disable-mediactrl --disable-aui --disable-ribbon --disable-richtext --disable-sockets \
    --disable-ipc --disable-url --disable-protocol --disable-debugreport --without-opengl \
    --enable-stc --enable-propgrid --enable-html \
    CC="$wrap$target-gcc-posix" CXX="$wrap$target-g++-posix" >configure.log 2>&1
make -j"${KORVANT_JOBS:-$(nproc)}" >make.log 2>&1
make install >install.log 2>&1
cd /
rm -rf "$build"
