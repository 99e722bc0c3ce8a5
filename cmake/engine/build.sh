#!/usr/bin/env bash
# build.sh [--where] [KIND]: builds the script engine from the distribution's source package, with
# the patches beside this file and without assertions, once for each state of those, and prints the
# folder that holds it. KIND: plain (default), or asan, tsan, fuzz for one that is instrumented.
# --where prints the folder and builds nothing. The library has the distribution's name, namespace
# and SONAME, so that it takes the place of that one wherever the loader finds it first.
set -euo pipefail
where=no
if [ "${1:-}" = --where ]; then where=yes; shift; fi
kind=${1:-plain}
here=$(cd "$(dirname "$0")" && pwd)
cache=${KORVANT_ENGINE_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/korvantide}
soname=libangelscript.so.2.35.1
say() { echo "dev: engine: $*" >&2; }

compiler=g++
# How the instructions of the interpreter lie in the processor's lines makes up to half of a script's
# time; more room between them is filled with instructions that do nothing, and done. What was stored
# one by one and is then read as one vector makes a processor wait.
export lines=
flags=(-O2 -DNDEBUG -DAS_USE_NAMESPACE -fno-strict-aliasing -fwrapv -fPIC -w
       -fstack-protector-strong)
link=(-Wl,-z,relro,-z,now -pthread)
# Nobody replaces single functions of the library, so that they may be called and compiled into one
# another without looking for others of the name.
case $kind in
    plain) flags+=(-D_FORTIFY_SOURCE=2 -fno-semantic-interposition -falign-functions=64)
           link+=(-Wl,-Bsymbolic-functions) lines="-falign-labels=16 -fno-tree-slp-vectorize" ;;
    asan) instrument=(-fsanitize=address,undefined) ;;
    tsan) instrument=(-fsanitize=thread) ;;
    fuzz) compiler=clang++ instrument=(-fsanitize=address,undefined,fuzzer-no-link) ;;
    *) say "unknown kind '$kind'"; exit 64 ;;
esac
if [ "$kind" != plain ]; then
    # It calls functions through pointers of other types and reads numbers at odd addresses: that is
    # its design, and the processors that it knows allow it.
    tolerated=vptr,alignment
    [ "$compiler" = g++ ] || tolerated+=,function
    flags+=(-O1 -g1 -fno-omit-frame-pointer "${instrument[@]}" "-fno-sanitize=$tolerated")
    link+=("${instrument[@]}")
fi

version=$({ cat "$here"/sources.sha256 "$here"/*.patch "$here/build.sh"
            echo "$kind" "${flags[@]}" "$lines" "${link[@]}"; uname -m; "$compiler" --version; } 2>&1 |
          sha256sum | cut -c1-16)
folder=$cache/engine-$kind-$version
if [ "$where" = yes ] || [ -f "$folder/$soname" ]; then echo "$folder"; exit 0; fi

unpack() { # FOLDER
    flock "$cache/lock-sources" "$here/fetch_packages.sh" "$cache/sources" \
        "$here/sources.sha256" angelscript=2.35.1+ds-3
    tar -xf "$cache/sources/angelscript_2.35.1+ds.orig.tar.xz" -C "$1" --strip-components=1
    local change
    for change in "$here"/*.patch; do patch --quiet --fuzz=0 -d "$1" -p1 <"$change"; done
}

# The largest file is begun first; two of the processor's cores are kept busy to the end.
compile() { # FOLDER
    local wrap=() sources=("$1"/angelscript/source/*.cpp)
    command -v ccache >/dev/null && wrap=(ccache)
    case $(uname -m) in
        aarch64) sources+=("$1"/angelscript/source/as_callfunc_arm64_gcc.S) ;;
        arm*) sources+=("$1"/angelscript/source/as_callfunc_arm_gcc.S) ;;
    esac
    cd "$1"
    ls -S "${sources[@]#"$1"/}" | xargs -P "${KORVANT_JOBS:-$(nproc)}" -I{} sh -c '
        file=$1 && shift
        [ "$file" = angelscript/source/as_context.cpp ] || lines=
        exec "$@" $lines -c "$file" -o "$file.o"
        ' compile {} "${wrap[@]}" "$compiler" "${flags[@]}" -I angelscript/include
}

mkdir -p "$cache"
exec 9>"$cache/lock-$kind"
flock 9  # two set-ups at once: the second finds what the first has made
if [ ! -f "$folder/$soname" ]; then
    rm -rf "$cache/unfinished-$kind"-*  # of builds that were interrupted
    work=$(mktemp -d "$cache/unfinished-$kind-XXXXXX")
    trap 'rm -rf "$work"' EXIT
    say "building it, once for this machine, less than a minute"
    mkdir "$work/source" "$work/result"
    unpack "$work/source"
    (compile "$work/source")
    strip=-s
    [ "$kind" = plain ] || strip=-g
    "$compiler" -shared "$strip" -Wl,-soname,$soname -o "$work/result/$soname" \
        "$work"/source/angelscript/source/*.o "${link[@]}"
    ln -s $soname "$work/result/libangelscript.so"
    chmod 755 "$work/result"
    mv -T "$work/result" "$folder"
fi
echo "$folder"
