#!/usr/bin/env bash
# same_messages.sh BUILD: what the program says of the scripts of the tree is the same with our
# engine and with the distribution's.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
program=$1/bin/korvant
distribution=$(dirname "$(/sbin/ldconfig -p | sed -n 's/.*libangelscript\.so\.2.* => //p' | head -n 1)")
ours=$(ldd "$program" | sed -n 's/.*libangelscript\.so.* => \([^ ]*\) .*/\1/p')
[ "$(dirname "$ours")" != "$distribution" ] || { echo "same_messages: only one engine here"; exit 0; }
compared=0
while read -r script; do
    with_ours=$(timeout 20 "$program" check "$script" 2>&1 || true)
    with_other=$(LD_LIBRARY_PATH=$distribution timeout 20 "$program" check "$script" 2>&1 || true)
    [ "$with_ours" = "$with_other" ] || {
        diff <(echo "$with_ours") <(echo "$with_other") || true
        echo "same_messages: $script differs" >&2
        exit 1
    }
    compared=$((compared + 1))
done < <(find "$root/examples" "$root/tests" -name '*.as' | sort)
echo "same_messages: $compared scripts, the same messages"
