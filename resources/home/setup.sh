#!/bin/sh
# Sets up the show of this package folder. A run-time package plays its show with the
# run-time player; a full package starts the program with the package's show, after adding
# a menu entry when the package asks for one (setup.ini, section "Kavori Setup").
cd "$(dirname "$0")" || exit 1
if [ -f RUN-KAV.INI ]; then
    exec ./run-kav "$@"
fi
ini_value() {
    sed -n "s/^$1=//p" setup.ini | tr -d '\r' | head -n 1
}
name=$(ini_value SlideShowName)
show="$PWD/SLIDES/$name.KAV"
if [ "$(ini_value SlideShowShortcut)" = True ]; then
    apps="${XDG_DATA_HOME:-$HOME/.local/share}/applications"
    mkdir -p "$apps"
    printf '[Desktop Entry]\nType=Application\nName=%s\nExec="%s" "%s"\n' \
        "$name" "$PWD/Kavori" "$show" >"$apps/kavori-$name.desktop"
fi
exec ./Kavori "$show"
