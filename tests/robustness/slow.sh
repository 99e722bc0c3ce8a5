#!/usr/bin/env bash
# slow.sh BUILD [PART...] [-- GTEST ARGS]: the suites without windows in surroundings that every
# test run cannot afford. Parts, all of them without a choice:
#   C fr es tr    as in hosts of that language
#   wrap sign     with the millisecond tick just before it wraps to 0, and at 2^31, where a signed
#                 one would change its sign
#   typing        200,000 states of a text while it is typed, through the compile worker
#   names         every name of every script renamed and back, and every request about each script
#                 with each of its lines cut, doubled and emptied, in time
#   repeat        what hosts do ten thousand times in a day
#   storm         twenty thousand faulty scripts of each generator for five seeds, all systematic
#                 ones, and the messages of both engines
set -euo pipefail
build=$(cd "$1" && pwd)
shift
parts=()
while [ $# -gt 0 ] && [ "$1" != -- ]; do
    parts+=("$1")
    shift
done
[ $# -eq 0 ] || shift
arguments=("$@")
[ ${#parts[@]} -gt 0 ] || parts=(C fr es tr wrap sign typing names repeat storm)
jobs=${KORVANT_JOBS:-$(nproc)}
locales=$build/locales
logs=$(mktemp -d)
trap 'rm -rf "$logs"' EXIT
suites=(expr host object editor robustness program)

make_locale() { # NAME
    [ -e "$locales/$1.UTF-8" ] && return
    mkdir -p "$locales"
    localedef -i "$1" -f UTF-8 "$locales/$1.UTF-8"
}

run_one() { # PART SUITE [ARGUMENTS OR NAME=VALUE...]
    local part=$1 suite=$2 began=$SECONDS log=$logs/$1-$2 result=0
    shift 2
    # The program's own messages are English, and only its tests read them.
    env LOCPATH="$locales" "$@" timeout 900 "$build/bin/${suite}_tests" --gtest_brief=1 \
        "${choice[@]}" "${arguments[@]}" </dev/null >"$log" 2>&1 || result=$?
    local counted
    counted=$(grep -oE '[0-9]+ tests? from' "$log" | tail -n 1 || true)
    echo "slow: $part, $suite: ${counted% from}, $((SECONDS - began)) s"
    [ "$result" -eq 0 ] && return
    echo "slow: $part, $suite failed ($result)" >&2
    cat "$log" >&2
    touch "$logs/failed"
}

run() { # PART [NAME=VALUE...]: every suite, as many at a time as there are processors
    local part=$1 suite
    shift
    for suite in "${suites[@]}"; do
        while [ "$(jobs -rp | wc -l)" -ge "$jobs" ]; do wait -n || true; done
        run_one "$part" "$suite" "$@" &
    done
}

run_in() { # PART LOCALE
    make_locale "$2"
    run "$1" KORVANT_TEST_LOCALE="$2.UTF-8" LC_ALL="$2.UTF-8"
}

for part in "${parts[@]}"; do
    choice=(--gtest_filter=-Repetition.*)
    suites=(expr host object editor robustness program)
    case $part in
        C) run C KORVANT_TEST_LOCALE=C LC_ALL=C ;;
        fr) run_in fr fr_FR ;;
        es) run_in es es_ES ;;
        tr) run_in tr tr_TR ;;
        # Every test begins with that tick: a few milliseconds before 2^32, and at 2^31 (in the ten
        # seconds before that a run may end early, which has a test of its own).
        wrap) suites=(host object editor robustness) && run wrap KORVANT_TEST_TICK=4294967288 ;;
        sign) suites=(host object editor robustness) && run sign KORVANT_TEST_TICK=2147483648 ;;
        typing) suites=(language) choice=(--gtest_filter=*NoStateOfTyping*) &&
            run typing KORVANT_TYPING_STATES=200000 ;;
        names) suites=(language protocol) choice=(--gtest_filter=Renaming.*:*BrokenTexts*) &&
            run names KORVANT_EVERY_NAME=1 KORVANT_BROKEN_TEXTS=1 ;;
        repeat) suites=(robustness) choice=(--gtest_filter=Repetition.*) && run repeat ;;
        storm)
            suites=(robustness) choice=(--gtest_filter=ScriptStorm.*)
            run storm KORVANT_STORM=20000 KORVANT_STORM_SEEDS=5
            "$(dirname "$0")/same_messages.sh" "$build" || touch "$logs/failed"
            ;;
        *) echo "slow: no part '$part'" >&2 && exit 64 ;;
    esac
done
wait
[ ! -e "$logs/failed" ]
