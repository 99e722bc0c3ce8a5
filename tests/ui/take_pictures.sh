#!/usr/bin/env bash
# take_pictures.sh BUILD FOLDER [NAME]
# Takes pictures of the editor's window in each of its states: light and dark, at 1x and 2x, with the
# fonts of a furnished desktop (Inter and Hack, where they are installed or KORVANT_PICTURE_FONTS
# names a folder with them) and with those of a bare machine. FOLDER gets 1x, 2x, bare-1x and bare-2x.
# NAME limits it to one state: Stopped, Typing, ...
set -eu
build=$(cd "$1" && pwd) folder=$2 name=${3:-*}
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$folder"
folder=$(cd "$folder" && pwd)
settings=$(mktemp -d)
trap 'rm -rf "$settings"' EXIT

# use_fonts furnished|bare
use_fonts() {
    local rule=
    mkdir -p "$settings/gtk-3.0"
    if [ "$1" = furnished ]; then
        printf '[Settings]\ngtk-font-name=Inter 9.5\n' >"$settings/gtk-3.0/settings.ini"
        rule='<alias binding="strong"><family>monospace</family><prefer><family>Hack</family></prefer></alias>'
        [ -z "${KORVANT_PICTURE_FONTS:-}" ] || rule="$rule<dir>$KORVANT_PICTURE_FONTS</dir>"
    else
        printf '[Settings]\ngtk-font-name=DejaVu Sans 9.5\n' >"$settings/gtk-3.0/settings.ini"
    fi
    cat >"$settings/fonts.conf" <<XML
<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig><include ignore_missing="yes">/etc/fonts/fonts.conf</include>$rule
<cachedir>$settings/cache</cachedir></fontconfig>
XML
}

take() { # furnished|bare SCALE
    local out=$folder/$2x
    [ "$1" = furnished ] || out=$folder/bare-$2x
    mkdir -p "$out"
    use_fonts "$1"
    FONTCONFIG_FILE=$settings/fonts.conf XDG_CONFIG_DIRS=$settings KORVANT_SCREENSHOTS=$out GDK_SCALE=$2 \
        "$here/../support/with_display.sh" --wm --seconds 600 --screen "$((1320 * $2))x$((960 * $2))x24" \
        "$build/bin/ui_editor_tests" --gtest_brief=1 --gtest_filter="*/EditorPictures.$name/*:EditorIcons.$name*"
}

failed=0
for scale in 1 2; do
    take furnished "$scale" || failed=1
    take bare "$scale" || failed=1
done
ls "$folder"/*
exit $failed
