#!/usr/bin/env bash
# test_under_wine.sh FOLDER NATIVE: runs the tests of a Windows build under Wine, each on a virtual
# display of its own and with a time limit, and says how many there were. FOLDER: the build; NATIVE:
# a build for this machine, whose tests of the program are given the Windows program to start.
set -uo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
folder=$1 native=$2
cache=${KORVANT_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/korvantide-windows}
display=$root/tests/support/with_display.sh
logs=$folder/wine-logs
mkdir -p "$logs"
export WINEPREFIX=$cache/wine WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=" WINEARCH=win64
tests=0 failed=()

count() { # NAME RESULT LOG
    local passed
    passed=$(sed -n 's/.*\[  PASSED  \] \([0-9]*\) test.*/\1/p' "$3" | tail -n 1)
    tests=$((tests + ${passed:-0}))
    if [ "$2" -eq 0 ]; then
        echo "dev: windows: $1: ${passed:-1} passed"
        [ -n "$passed" ] || tests=$((tests + 1))
    else
        failed+=("$1")
        echo "dev: windows: $1: FAILED ($2), ${passed:-0} passed"
        grep -aE '^\[  FAILED  \]|Failure$' "$3" | sort -u | head -n 30
    fi
}

under_wine() { # NAME SECONDS PROGRAM [ARGS...]
    local name=$1 seconds=$2 log=$logs/$1.log
    shift 2
    timeout -k 10 $((seconds + 60)) "$display" --wm --seconds "$seconds" wine "$@" >"$log" 2>&1
    count "$name" $? "$log"
}

if [ ! -f "$WINEPREFIX/system.reg" ]; then
    "$display" --seconds 200 wineboot --init >"$logs/wineboot.log" 2>&1
    "$display" --seconds 60 wineserver --wait >>"$logs/wineboot.log" 2>&1
fi

# These name a device or separators of other systems, or count the bytes of line ends.
elsewhere='*.AFailedWriteIsReported*:*.AFileThatCannotBeWritten*:*.AppendingKeepsWhatIsThere*'
elsewhere+=':*.NothingPrintedIsLost*:*.PrintWritesEveryByte*:Debug.FilesAreClosedWhenTheRunIsFirst*'
elsewhere+=':Document.AnotherProgramsVersion*'
cd "$root"
for suite in expr host object editor; do
    under_wine "$suite" 400 "$folder/bin/${suite}_tests.exe" --gtest_brief=1 \
        --gtest_filter="-$elsewhere"
done

# The tests of the program run here and start the Windows program; they compare whole lines, and it
# ends its lines as its system does.
starter=$folder/korvant-under-wine
cat >"$starter" <<EOF
#!/bin/sh
output=\$(mktemp) errors=\$(mktemp)
wine "$folder/bin/korvant.exe" "\$@" >"\$output" 2>"\$errors"
code=\$?
tr -d '\\r' <"\$output"
tr -d '\\r' <"\$errors" >&2
rm -f "\$output" "\$errors"
exit \$code
EOF
chmod +x "$starter"
KORVANT_PROGRAM=$starter timeout -k 10 460 "$display" --seconds 400 "$native/bin/program_tests" \
    --gtest_brief=1 --gtest_filter="${KORVANT_WINE_PROGRAM_TESTS:-All/Script.*:All/Example.*:Eval.*}" \
    >"$logs/program.log" 2>&1
count program $? "$logs/program.log"

under_wine win32_host 200 "$folder/bin/win32_host.exe" KorvantIDE.dll "$(winepath -w "$logs" 2>/dev/null || echo "Z:$logs")"

wineserver --kill 2>/dev/null
echo "dev: windows: $tests tests passed under Wine, ${#failed[@]} programs failed"
[ "${#failed[@]}" -eq 0 ]
