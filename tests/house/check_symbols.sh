#!/usr/bin/env bash
# check_symbols.sh LIBRARY...: nothing may be defined in two places. Of archives a linker takes the
# first definition that it meets and says nothing, even where two functions of one name give
# different types.
set -euo pipefail
twice=$(nm --defined-only --extern-only --format=posix "$@" |
    awk '$2 ~ /^[TDBRS]$/ { print $1 }' | sort | uniq -d | c++filt)
[ -z "$twice" ] || { echo "defined twice:"; echo "$twice"; exit 1; }
echo "one definition each"
