#!/usr/bin/env bash
# first_build.sh [COMMAND...]: what a newcomer waits for. In an empty Debian root with nothing but git
# it clones this repository and runs `./dev COMMAND...` (default: run), packages and script engine
# included, and says how long that took. Needs root, mmdebstrap and a package mirror.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
[ $# -gt 0 ] || set -- run
mirror=${KORVANT_DEBIAN_MIRROR:-http://deb.debian.org/debian}
root=$(mktemp -d)
trap 'rm -rf --one-file-system "$root"' EXIT

echo "first_build: making an empty system"
mmdebstrap --quiet --mode=root --variant=apt --include=git,ca-certificates bookworm "$root" "$mirror"
git clone --quiet --no-hardlinks . "$root/opt/clone"

cat >"$root/opt/try.sh" <<'TEXT'
root=$1
shift
mount -t proc proc "$root/proc"
mount -t tmpfs tmpfs "$root/tmp"
mount --rbind /dev "$root/dev"
mount -t devpts -o newinstance,ptmxmode=0666 devpts "$root/dev/pts"
mount --bind "$root/dev/pts/ptmx" "$root/dev/ptmx"
TIMEFORMAT='first_build: %R s, of the processors %U s + %S s'
time HOME=/root chroot "$root" /bin/bash -c 'cd /opt/clone && ./dev "$@"' try "$@" </dev/null
TEXT
echo "first_build: ./dev $*"
timeout 5400 unshare --mount --pid --fork --propagation private \
    /bin/bash -e "$root/opt/try.sh" "$root" "$@"
