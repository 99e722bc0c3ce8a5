#!/usr/bin/env bash
# fetch_packages.sh FOLDER SUMS PACKAGE=VERSION...: downloads source packages of the distribution
# into FOLDER unless what the file SUMS lists is there already, and checks it against SUMS. The
# machine's own package lists stay as they are: apt gets a source file and a list folder of its own.
set -euo pipefail
folder=$1 sums=$(readlink -f "$2")
shift 2
mkdir -p "$folder"
cd "$folder"
if sha256sum --status --check "$sums" 2>/dev/null; then exit 0; fi
command -v apt-get >/dev/null || { echo "there is no apt-get here" >&2; exit 1; }

own=$(mktemp -d)  # apt clears its list folder of all that it does not know
trap 'rm -rf "$own"' EXIT
mkdir -p "$own/lists/partial"
if [ -f /etc/apt/sources.list.d/debian.sources ]; then
    sources=$own/sources.sources
    sed 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources >"$sources"
else
    sources=$own/sources.list
    sed -n 's/^deb /deb-src /p' /etc/apt/sources.list >"$sources"
fi
options=(-o "Dir::Etc::sourcelist=$sources" -o Dir::Etc::sourceparts=/dev/null
         -o "Dir::State::Lists=$own/lists" -o APT::Sandbox::User=root)
apt-get "${options[@]}" update -q >/dev/null
apt-get "${options[@]}" source -q --download-only "$@" >/dev/null
sha256sum --quiet --check "$sums" >&2
