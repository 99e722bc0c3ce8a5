#!/usr/bin/env bash
# with_display.sh [--wm] [--screen WxHxD] [--seconds N] COMMAND [ARGS...]
# Runs COMMAND on a virtual display of its own, with a home folder of its own, and takes everything
# down again. --wm starts a window manager before COMMAND. The exit code is COMMAND's; 124 when it
# took longer than N seconds.
set -u
screen=1280x1024x24 seconds=280 manager=no
while [ $# -gt 0 ]; do
    case $1 in
        --wm) manager=yes; shift ;;
        --screen) screen=$2; shift 2 ;;
        --seconds) seconds=$2; shift 2 ;;
        *) break ;;
    esac
done

folder=$(mktemp -d)
pids=()
clean_up() {
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null; done
    wait 2>/dev/null
    rm -rf "$folder"
}
trap clean_up EXIT
trap 'exit 143' TERM INT HUP

mkfifo "$folder/display"
Xvfb -displayfd 3 -screen 0 "$screen" -nolisten tcp -noreset 3>"$folder/display" \
    >"$folder/xvfb.log" 2>&1 &
pids+=($!)
if ! read -r -t 30 number <"$folder/display"; then
    echo "with_display: no display" >&2
    cat "$folder/xvfb.log" >&2
    exit 125
fi

unset WAYLAND_DISPLAY XAUTHORITY
export DISPLAY=:$number KORVANT_DISPLAY_PROCESS=${pids[0]} GDK_BACKEND=x11 NO_AT_BRIDGE=1 GSETTINGS_BACKEND=memory
export HOME=$folder/home XDG_CONFIG_HOME=$folder/home/.config XDG_RUNTIME_DIR=$folder/run
export XDG_CACHE_HOME=${KORVANT_TEST_CACHE:-$folder/home/.cache}
mkdir -p "$XDG_CONFIG_HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"

if [ "$manager" = yes ]; then
    export KORVANT_WINDOW_MANAGER=1
    mkfifo "$folder/managed"
    openbox --sm-disable --startup "sh -c 'echo ready >$folder/managed'" >/dev/null 2>&1 &
    pids+=($!)
    if ! read -r -t 30 _ <>"$folder/managed"; then
        echo "with_display: no window manager" >&2
        exit 125
    fi
fi

timeout -k 5 "$seconds" "$@" &
command=$!
pids+=("$command")
wait "$command"
