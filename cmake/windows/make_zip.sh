#!/usr/bin/env bash
# make_zip.sh TARGET FOLDER MANUAL ZIP: what a Windows user unpacks and starts. FOLDER: the build's
# bin folder; MANUAL: the scripting manual of a build for this machine.
set -euo pipefail
target=$1 folder=$2 manual=$3 zip=$4
root=$(cd "$(dirname "$0")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
top=$work/KorvantIDE
mkdir -p "$top/lib"
cp "$folder/korvant.exe" "$folder/korvant-worker.exe" "$folder/KorvantIDE.dll" "$top/"
"$target-w64-mingw32-strip" --strip-unneeded "$top/korvant.exe" "$top/korvant-worker.exe" "$top/KorvantIDE.dll"
cp "$(find "$folder/.." -name libKorvantIDE.dll.a -print -quit)" "$top/lib/"
cp -r "$root/include" "$root/examples" "$top/"
rm -rf "$top/examples/CMakeLists.txt" "$top/examples/expected"
cp -r "$manual" "$top/scripting_manual"
cp "$root/docs/windows.md" "$top/"
mkdir "$top/images"
cp "$root/docs/images/editor_windows.png" "$top/images/"
for text in README.md LICENSE; do sed 's/$/\r/' "$root/$text" >"$top/$text.txt"; done
mv "$top/README.md.txt" "$top/README.txt"
rm -f "$zip"
(cd "$work" && zip -q -r -9 "$zip" KorvantIDE)
echo "dev: windows: $zip ($(du -h "$zip" | cut -f1))"
