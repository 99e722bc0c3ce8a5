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
mount -t proc proc /proc
mount -t tmpfs tmpfs /tmp
[ -e /dev/null ] || mknod -m 666 /dev/null c 1 3
export HOME=/root
cd /opt/clone
TIMEFORMAT='first_build: %R s, of the processors %U s + %S s'
time ./dev "$@" </dev/null
TEXT
echo "first_build: ./dev $*"
timeout 5400 unshare --mount --pid --fork chroot "$root" /bin/bash /opt/try.sh "$@"
