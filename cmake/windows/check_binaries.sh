#!/usr/bin/env bash
# check_binaries.sh TARGET FOLDER: the module exports what hosts are promised, under plain names,
# and neither it nor the program needs a library that a Windows machine does not have.
set -euo pipefail
target=$1 folder=$2
objdump=$target-w64-mingw32-objdump
root=$(cd "$(dirname "$0")/../.." && pwd)
fail() { echo "check_binaries: $target: $*" >&2; exit 1; }

# The same names as on other systems.
promised=$(sed '/extern "C++"/,$d' "$root/src/module/exports.map" | tr ';' '\n' |
           sed -n 's/^ *\([A-Z][A-Za-z]*\)$/\1/p' | sort -u)
[ -n "$promised" ] || fail "no promised names found"
exported=$($objdump -p "$folder/KorvantIDE.dll" | sed -n '/\[Ordinal\/Name Pointer\]/,/^$/p' |
           sed -n 's/^[[:space:]]*\[.*\] \([^ ]*\)$/\1/p' | grep -v '^Table$' | sort -u)
plain=$(grep -vE '^(_Z|korvantEngineRevision$)' <<<"$exported" || true)  # the engine's mark is inside
diff <(echo "$promised") <(echo "$plain") >&2 || fail "the plain names differ (< promised, > exported)"
if grep '^_Z' <<<"$exported" | c++filt |
    grep -vE '^((vtable|typeinfo|typeinfo name) for )?(ScriptArray|ScriptObject|CThread|CThreadEvent|KorStamp|KorStampListener|KorvantKernelFramework)(::|$)' >&2; then
    fail "exported by mistake"
fi

system='ADVAPI32|COMCTL32|COMDLG32|GDI32|IMM32|KERNEL32|MSIMG32|msvcrt|ole32|OLEACC|OLEAUT32|SHELL32'
system="$system|SHLWAPI|USER32|UxTheme|VERSION|WINMM|WINSPOOL.DRV|WS2_32|RPCRT4|WINHTTP|GDIPLUS"
for file in KorvantIDE.dll korvant.exe; do
    needed=$($objdump -p "$folder/$file" | sed -n 's/.*DLL Name: //p')
    if grep -viE "^($system)(\.dll)?$" <<<"$needed" >&2; then
        fail "$file needs a library that is not the system's"
    fi
done
echo "dev: windows: $target: $(wc -l <<<"$plain") plain names exported, only system libraries needed"
