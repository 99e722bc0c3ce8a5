#!/usr/bin/env bash
# fetch_sources.sh FOLDER: the distribution's source packages that the Windows build needs, in
# FOLDER, checked, unpacked and with the engine's patches.
set -euo pipefail
folder=$1
here=$(cd "$(dirname "$0")" && pwd)
engine=$here/../engine
mkdir -p "$folder"
sums=$(mktemp)
trap 'rm -f "$sums"' EXIT
cat "$engine/sources.sha256" "$here/sources.sha256" >"$sums"
"$engine/fetch_packages.sh" "$folder" "$sums" angelscript=2.35.1+ds-3 wxwidgets3.2=3.2.2+dfsg-2

cd "$folder"
rm -rf angelscript wxwidgets
mkdir angelscript wxwidgets
tar -xf angelscript_2.35.1+ds.orig.tar.xz -C angelscript --strip-components=1
tar -xf wxwidgets3.2_3.2.2+dfsg.orig.tar.xz -C wxwidgets --strip-components=1
for change in "$engine"/*.patch; do patch --quiet --fuzz=0 -d angelscript -p1 <"$change"; done
