#!/usr/bin/env bash
# fetch_sources.sh FOLDER: downloads the distribution's source packages that the Windows build
# needs into FOLDER, checks them and unpacks them. The machine's own package lists stay as they
# are: apt gets a source file and a list folder of this build's own.
set -euo pipefail
folder=$1
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$folder/lists/partial"

sources=$folder/sources.sources
options=()
if [ -f /etc/apt/sources.list.d/debian.sources ]; then
    sed 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources >"$sources"
else
    sources=$folder/sources.list
    sed -n 's/^deb /deb-src /p' /etc/apt/sources.list >"$sources"
fi
options=(-o "Dir::Etc::sourcelist=$sources" -o Dir::Etc::sourceparts=/dev/null
         -o "Dir::State::Lists=$folder/lists" -o APT::Sandbox::User=root)

cd "$folder"
if ! sha256sum --status --check "$here/sources.sha256" 2>/dev/null; then
    apt-get "${options[@]}" update -q >/dev/null
    apt-get "${options[@]}" source -q --download-only angelscript=2.35.1+ds-3 \
        wxwidgets3.2=3.2.2+dfsg-2 >/dev/null
    [ ! -s "$here/sources.sha256" ] || sha256sum --quiet --check "$here/sources.sha256"
fi
rm -rf angelscript wxwidgets
mkdir angelscript wxwidgets
tar -xf angelscript_2.35.1+ds.orig.tar.xz -C angelscript --strip-components=1
tar -xf wxwidgets3.2_3.2.2+dfsg.orig.tar.xz -C wxwidgets --strip-components=1
patch --quiet -d angelscript -p1 <"$here/angelscript-long-messages.patch"
