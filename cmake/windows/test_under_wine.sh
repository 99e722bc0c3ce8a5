#!/usr/bin/env bash
# test_under_wine.sh FOLDER NATIVE [GROUP...]: runs the tests of a Windows build under Wine, each
# group on a virtual display of its own and with a time limit for each test, and says how many there
# were. One that hangs, or ends its program, is named, and those behind it are run all the same. FOLDER:
# the build, windows-TARGET; NATIVE: a build for this machine, whose tests of the program are given
# the Windows program to start. Without a GROUP all that are for this target.
set -uo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
folder=$1 native=$2
shift 2
groups=("$@")
if [ ${#groups[@]} -eq 0 ]; then
    groups=(base expr host module object debug ui_dialog ui_form win32_host)
    # What stands above these does not depend on the processor.
    [[ $folder == *-i686 ]] || groups+=(editor language protocol ui_editor program examples)
fi
cache=${KORVANT_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/korvantide-windows}
display=$root/tests/support/with_display.sh
logs=$folder/wine-logs
mkdir -p "$logs"
export WINEPREFIX=$cache/wine WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=" WINEARCH=win64
# Programs of 32 bits are run by the 64-bit Wine, which needs only their libraries for that.
"$root/cmake/windows/fetch_wine32.sh" "$cache/wine-i386" || exit 1
export WINEDLLPATH=$cache/wine-i386
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

wanted() { [[ " ${groups[*]} " == *" $1 "* ]]; }

# Ends what runs when a log has not grown for as long as no test takes.
quiet=${KORVANT_WINE_QUIET:-150}
watch() { # PROCESS LOG
    while kill -0 "$1" 2>/dev/null; do
        sleep 1
        if [ $(($(date +%s) - $(stat -c %Y "$2"))) -gt "$quiet" ]; then
            kill "$1"
            wait "$1" 2>/dev/null
            wineserver --kill
            return 124
        fi
    done
    wait "$1"
}

suite_under_wine() { # NAME PROGRAM
    local log=$logs/$1.log part=$logs/$1.part flags=$logs/$1.flags result passed begun=0 bad=()
    local skip=("${left_out[@]}")
    : >"$log"
    while :; do
        (IFS=: && echo "--gtest_filter=${KORVANT_WINE_TESTS:-*}-${skip[*]}") >"$flags"
        : >"$part"
        "$display" --wm --seconds 7200 wine "$2" "--gtest_flagfile=Z:$flags" >>"$part" 2>&1 &
        watch $! "$part"
        result=$?
        tr -d '\r' <"$part" >>"$log"
        mapfile -t -O "${#skip[@]}" skip < <(tr -d '\r' <"$part" | sed -n 's/^\[ RUN      \] //p')
        if grep -qa '^\[==========\] .* ran\.' "$part" || ! grep -qa '^\[ RUN ' "$part" ||
            [ "${#skip[@]}" -eq "$begun" ]; then break; fi
        begun=${#skip[@]}
        bad+=("${skip[-1]}")
        echo "dev: windows: $1: ${skip[-1]} did not end ($result)"
    done
    passed=$(grep -ac '^\[       OK \]' "$log")
    tests=$((tests + passed))
    if [ "$result" -eq 0 ] && [ "${#bad[@]}" -eq 0 ] && ! grep -qa '^\[  FAILED  \]' "$log"; then
        echo "dev: windows: $1: $passed passed"
    else
        failed+=("$1")
        echo "dev: windows: $1: FAILED ($result), $passed passed, ${#bad[@]} did not end"
        grep -aE '^\[  FAILED  \] .*\(' "$log" | sort -u | head -n 30
    fi
}

under_wine() { # NAME SECONDS PROGRAM [ARGS...]
    local name=$1 seconds=$2 log=$logs/$1.log
    shift 2
    timeout -k 10 $((seconds + 60)) "$display" --wm --seconds "$seconds" wine "$@" >"$log" 2>&1
    count "$name" $? "$log"
}

# The user's folders are made as links into a home folder that is gone with the display.
make_prefix() {
    "$display" --seconds 200 wineboot --init
    "$display" --seconds 60 wineserver --wait
    local link
    for link in "$WINEPREFIX"/drive_c/users/*/*; do
        [ -L "$link" ] && rm "$link" && mkdir "$link"
    done
    # A crash is told in the log instead of asking somebody.
    "$display" --seconds 60 wine reg add 'HKCU\Software\Wine\WineDbg' \
        /v ShowCrashDialog /t REG_DWORD /d 0 /f
    "$display" --seconds 60 wineserver --wait
}
# Made anew when another version of the libraries is there.
mark=$(readlink "$cache/wine-i386/i386-windows")
if [ "$(cat "$WINEPREFIX/ready" 2>/dev/null)" != "$mark" ]; then
    rm -rf "$WINEPREFIX"
    make_prefix >"$logs/wineboot.log" 2>&1
    echo "$mark" >"$WINEPREFIX/ready"
fi

# A Wine of 64 bits starts programs of 32 only as an experiment; some fail in the system's libraries.
if ! timeout 120 "$display" --seconds 100 wine "$folder/bin/expr_tests.exe" --gtest_list_tests \
    >"$logs/start.log" 2>&1; then
    if [[ $folder == *-i686 ]]; then
        echo "dev: windows: $(basename "$folder"): this Wine starts no such programs; nothing was run"
        exit 0
    fi
    tail -n 5 "$logs/start.log"
    exit 1
fi

# Left out, with the reason:
left_out=(
    # Windows has the system's console. The window that stands in for it elsewhere hears no key
    # while its thread is busy.
    'ConsoleWindowTest.ControlCIsHeardWhileTheThreadIsBusy'
    # Return after Shift+Tab presses a button, and a link of the check leaves its row unselected:
    # not cleared up yet.
    'FormGroup.BrowsingTakes*' 'FormConfirm.LinksOfTheCheck*'
    # A second process of the tests does not get the keyboard there, and Escape does not reach the
    # box that a menu opens: not cleared up yet.
    'KilledWindow.*' 'EditorMenu.AboutBox*'
    # A loop of the toolkit's own around the editor; hosts on Windows have the system's.
    'EditorFrame.OpensInsideALoopOfTheHosts' 'EditorFrame.StaysOpenWhenTheHostEndsItsLoop'
    # Memory is handed out so slowly there that these scripts reach their time limit first.
    'Both/ScriptArrays.MemoryIsChargedByWhatIsHeld/*' 'EngineMemory.ScriptObjectsWithoutEndAreAnException'
    'Limit.ObjectsWithoutEndAreAnException'
    # A millisecond between two samples is often two.
    'Observer.SharesOfTimeAreThoseOfTheWork'
)
cd "$root" || exit 1
for suite in base expr host module object editor language debug protocol; do
    wanted "$suite" || continue
    suite_under_wine "$suite" "$folder/bin/${suite}_tests.exe"
done

# The windows. The editor's help opens the manual and the examples beside the program, as in the zip.
rm -rf "$folder/bin/scripting_manual" "$folder/bin/examples"
cp -r "$native/bin/scripting_manual" "$root/examples" "$folder/bin/"
for suite in ui_dialog ui_form ui_editor; do
    wanted "$suite" || continue
    suite_under_wine "$suite" "$folder/bin/${suite}_tests.exe"
done

# These tests run here and start the Windows program; they compare whole lines, and it ends its
# lines as its system does.
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

with_program() { # NAME PROGRAM FILTER
    KORVANT_PROGRAM=$starter timeout -k 10 460 "$display" --wm --seconds 400 "$native/bin/$2" \
        --gtest_brief=1 --gtest_filter="$3" >"$logs/$1.log" 2>&1
    count "$1" $? "$logs/$1.log"
}

! wanted program || with_program program program_tests "${KORVANT_WINE_PROGRAM_TESTS:-All/Script.*:All/Example.*:Eval.*}"
! wanted examples || with_program examples ui_form_tests 'FormExamples.*'

! wanted win32_host || under_wine win32_host 200 "$folder/bin/win32_host.exe" KorvantIDE.dll "Z:$logs"

wineserver --kill 2>/dev/null
echo "dev: windows: $(basename "$folder"): $tests tests passed under Wine, ${#failed[@]} programs failed"
[ "${#failed[@]}" -eq 0 ]
