#!/usr/bin/env bash
# check_sources.sh: compiles the files that only Windows uses, without making anything of them, so
# that they cannot rot between two whole builds. Those that need the toolkit are looked at where
# ./dev windows has built it.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
cache=${KORVANT_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/korvantide-windows}
compiler=x86_64-w64-mingw32-g++-posix
if ! command -v "$compiler" >/dev/null; then
    echo "dev: windows: no $compiler here; the Windows files are not looked at"
    exit 0
fi

# The headers of the engine and of the test library alone, apart from the others of this machine.
headers=$(mktemp -d)
trap 'rm -rf "$headers"' EXIT
ln -s /usr/include/angelscript.h /usr/include/gtest "$headers/"
options=(-fsyntax-only -std=gnu++20 -Wall -Wextra -Wpedantic -Wshadow -Wno-attributes -Werror
         -DKORVANTIDE_BUILD -DAS_DEBIAN_LIB -I"$root/src" -I"$root/include" -I"$root/tests"
         -isystem "$headers")
toolkit=()
if [ -x "$cache/wx-x86_64/bin/wx-config" ]; then
    read -r -a toolkit <<<"$("$cache/wx-x86_64/bin/wx-config" --cxxflags | sed 's/-I/-isystem /g')"
fi

checked=0 left=0
while read -r file; do
    if [ ${#toolkit[@]} -eq 0 ] && grep -qE '^#include (<wx/|"ui/)' "$file"; then
        left=$((left + 1))
        continue
    fi
    "$compiler" "${options[@]}" "${toolkit[@]}" "$file"
    checked=$((checked + 1))
done < <(find "$root/src" "$root/apps" "$root/tests" -name '*win32*.cpp' | sort)
echo "dev: windows: $checked files of Windows compile, $left need the toolkit that is not here"
