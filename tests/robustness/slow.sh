#!/usr/bin/env bash
# slow.sh BUILD [GTEST ARGS]: the suites of the core as in hosts that speak French, Spanish and
# Turkish, and with the millisecond tick just before each of its wraps.
set -euo pipefail
build=$1
shift
locales=$(cd "$build" && pwd)/locales
suites=(expr host object editor)

make_locale() { # NAME
    [ -e "$locales/$1.UTF-8" ] && return
    mkdir -p "$locales"
    localedef -i "$1" -f UTF-8 "$locales/$1.UTF-8"
}

failed=0
run() { # WHAT [NAME=VALUE...]
    local what=$1 suite
    shift
    for suite in "${suites[@]}"; do
        echo "slow: $suite, $what"
        if ! env LOCPATH="$locales" "$@" timeout 600 "$build/bin/${suite}_tests" --gtest_brief=1 \
            "${arguments[@]}" </dev/null; then
            echo "slow: $suite failed, $what" >&2
            failed=1
        fi
    done
}

arguments=("$@")
run "locale C" KORVANT_TEST_LOCALE=C
for name in fr_FR es_ES tr_TR; do
    make_locale "$name"
    run "locale $name" KORVANT_TEST_LOCALE="$name.UTF-8" LC_ALL="$name.UTF-8"
done
# Every test begins with that tick: a few milliseconds before 2^32, and at 2^31 (in the ten seconds
# before that a run may end early, which has a test of its own).
suites=(host object editor)
for tick in 4294967288 2147483648; do
    run "tick from $tick" KORVANT_TEST_TICK="$tick"
done
exit "$failed"
