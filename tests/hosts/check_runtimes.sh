#!/usr/bin/env bash
# check_runtimes.sh CXX MODULE SOURCES: hosts whose C++ run-time library is not the module's: a copy
# of their own of the same one and, where it is installed, another maker's.
set -euo pipefail
cxx=$1 module=$2 root=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
common=(-std=c++20 -O1 -I "$root/include" "$root/tests/hosts/other_runtime/host.cpp" "$module"
        -langelscript "-Wl,-rpath,$(dirname "$module")")

"$cxx" "${common[@]}" -static-libstdc++ -static-libgcc -Wl,--exclude-libs,ALL -o "$folder/own_copy"
if readelf -d "$folder/own_copy" | grep -q 'NEEDED.*libstdc++'; then
    echo "check_runtimes: the host shares the module's library" >&2
    exit 1
fi
"$folder/own_copy"

echo 'int main() {}' >"$folder/empty.cpp"
if clang++ -stdlib=libc++ "$folder/empty.cpp" -o "$folder/empty" 2>/dev/null; then
    clang++ -stdlib=libc++ "${common[@]}" -o "$folder/other_maker"
    "$folder/other_maker"
else
    echo "check_runtimes: no other library here"
fi
