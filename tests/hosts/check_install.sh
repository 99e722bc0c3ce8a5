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
# Hosts get every header that docs/embedding.md lists, and nothing else.
headers() { (cd "$1" && find . -name '*.h' | sort); }
diff <(headers "$source/../../../include") <(headers "$folder/tree/include")
# The engine that came along is the one that it and the program use.
if engine=$(find "$folder/tree" -name libangelscript.so) && [ -n "$engine" ]; then
    for program in "$folder/host/installed_host" "$folder/tree/bin/korvant"; do
        ldd "$program" | grep -F 'libangelscript.so' | grep -qF 'korvantide/libangelscript.so' || {
            echo "check_install: $program takes another engine" >&2
            ldd "$program" >&2
            exit 1
        }
    done
fi
printf 'int main() { Print("hello"); return 0; }\n' >"$folder/hello.as"
"$folder/tree/bin/korvant" run --gui "$folder/hello.as"
