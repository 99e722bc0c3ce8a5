#!/usr/bin/env bash
# check_odr.sh BUILD: compiles the program and the module once more, for link-time optimisation, and
# lets the linker compare all of their types and functions: two of one name that differ are an error,
# wherever they stand. Nothing is optimised and nothing is linked to an end.
set -euo pipefail
build=$(realpath "$1") jobs=${KORVANT_JOBS:-$(nproc)}
work=$build/odr
mkdir -p "$work"
rm -f "$work"/*.o "$work/commands"
number=0
while IFS= read -r command; do
    number=$((number + 1))
    # Other flags stand behind those of the build type, the last one counts.
    command=$(sed -E "s# -MD -MT [^ ]+ -MF [^ ]+##; s# -o [^ ]+ -c # -O0 -g0 -flto -fno-fat-lto-objects -o $work/$number.o -c #" <<<"$command")
    printf '%s\0' "$command" >>"$work/commands"
done < <(ninja -C "$build" -t commands korvant ${2:-korvantide} | grep -- ' -c ')
cd "$build"
xargs -0 -P "$jobs" -I{} bash -c {} <"$work/commands"
# The program and the module answer some questions each in its own way.
"${CXX:-g++}" -O0 -flto -Werror=odr -Werror=lto-type-mismatch -r -flinker-output=rel \
    -Wl,-z,muldefs -o "$work/all.o" "$work"/[0-9]*.o
echo "check_odr: $number objects, one definition of everything"
rm -f "$work"/*.o
