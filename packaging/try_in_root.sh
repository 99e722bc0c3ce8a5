#!/usr/bin/env bash
# Runs inside the root that try_package.sh makes, where the package is all there is of KorvantIDE.
set -euo pipefail
cd /opt/try
step() { echo "try_in_root: $*"; }

step "the program"
korvant --version
printf 'int main() { Print("hello from the package\\n"); return 0; }\n' >hello.as
[ "$(korvant run hello.as)" = "hello from the package" ]
[ "$(korvant eval '2*(3+4)')" = 14 ]
korvant check /usr/share/korvantide/examples/*.as

step "the module with windows, and the manual where F1 looks for it"
xvfb-run -a timeout 60 korvant run --gui hello.as
mkdir -p bin
printf '#!/bin/sh\necho "$1" >/opt/try/opened\n' >bin/xdg-open
chmod +x bin/xdg-open
PATH=$PWD/bin:$PATH korvant doc
[ -s "$(cat opened)" ]

step "desktop entry, icon, man page"
desktop-file-validate /usr/share/applications/korvant.desktop
xmllint --noout /usr/share/mime/packages/korvantide.xml
[ -s /usr/share/icons/hicolor/scalable/apps/korvant.svg ]
man --warnings -l /usr/share/man/man1/korvant.1 2>&1 >/dev/null | tee man.log
[ ! -s man.log ]

step "a host with find_package"
cmake -S installed -B by_cmake -DCMAKE_BUILD_TYPE=Debug >/dev/null
cmake --build by_cmake >/dev/null
by_cmake/installed_host
ldd by_cmake/installed_host | grep -q korvantide/libangelscript

step "the host of docs/embedding.md with pkg-config"
# shellcheck disable=SC2046
g++ -std=c++20 -Wall -Werror examples/small_host.cpp -o small_host \
    $(pkg-config --variable=engine korvantide) $(pkg-config --cflags --libs korvantide)
./small_host
ldd small_host | grep -q korvantide/libangelscript

step "the same host with the distribution's engine"
# shellcheck disable=SC2046
g++ -std=c++20 examples/small_host.cpp -o plain_host $(pkg-config --cflags --libs korvantide)
./plain_host
! ldd plain_host | grep korvantide/libangelscript

step "nothing that it needs is missing"
! ldd /usr/bin/korvant "$(pkg-config --variable=libdir korvantide)/libkorvantide.so" | grep 'not found'
