#!/usr/bin/env bash
# fetch_wine32.sh FOLDER: the libraries that the installed 64-bit Wine needs to run programs of 32
# bits, of the same version, in FOLDER/i386-windows. Nothing is installed, and the machine's own
# package lists stay as they are.
set -euo pipefail
folder=$1
version=$(dpkg-query -W -f='${Version}' libwine)
kept=$folder/libwine-$version
if [ ! -d "$kept" ]; then
    own=$(mktemp -d)
    trap 'rm -rf "$own"' EXIT
    mkdir -p "$own/lists/partial" "$folder"
    sources=/etc/apt/sources.list
    [ ! -f /etc/apt/sources.list.d/debian.sources ] || sources=/etc/apt/sources.list.d/debian.sources
    options=(-o "Dir::Etc::sourcelist=$sources" -o Dir::Etc::sourceparts=/dev/null
             -o "Dir::State::Lists=$own/lists" -o APT::Sandbox::User=root
             -o APT::Architectures::=i386 -o APT::Architectures::=amd64)
    cd "$own"
    apt-get "${options[@]}" update -q >/dev/null || true  # a mirror may be in the middle of a change
    apt-get "${options[@]}" download -q "libwine:i386=$version" >/dev/null
    dpkg-deb --extract libwine_*.deb "$own/package"
    mv "$own/package/usr/lib/i386-linux-gnu/wine/i386-windows" "$kept"
fi
ln -sfn "libwine-$version" "$folder/i386-windows"
