#!/usr/bin/env bash
# check_install.sh CMAKE BUILD HOST: installs BUILD into a folder, builds HOST against it, runs it,
# and runs the installed program with windows.
set -euo pipefail
cmake=$1 build=$2 source=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
"$cmake" --install "$build" --prefix "$folder/tree" >"$folder/log" 2>&1 || {
    cat "$folder/log" >&2
    exit 1
}
{
    "$cmake" -S "$source" -B "$folder/host" -DCMAKE_PREFIX_PATH="$folder/tree" \
        -DCMAKE_BUILD_TYPE=Debug && "$cmake" --build "$folder/host"
} >"$folder/log" 2>&1 || {
    cat "$folder/log" >&2
    exit 1
}
"$folder/host/installed_host"
printf 'int main() { Print("hello"); return 0; }\n' >"$folder/hello.as"
"$folder/tree/bin/korvant" run --gui "$folder/hello.as"
