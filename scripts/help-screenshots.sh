#!/usr/bin/env bash
# Takes the manual's pictures of the main window and each of its menus under a virtual
# display, with the demo show's pictures, into resources/home/Help/images/.
# Usage: scripts/help-screenshots.sh [BUILD-DIR]   (default: build)
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build}"
program="$build/src/app/Kavori"
[ -x "$program" ] || { echo "help-screenshots: build first ($program is missing)" >&2; exit 1; }
out="resources/home/Help/images"
mkdir -p "$out"

# A private program folder and home, so the user's settings and files are not touched.
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
export KAVORI_HOME="$scratch/kavori" HOME="$scratch/home" XDG_CONFIG_HOME="$scratch/home/.config"
mkdir -p "$HOME"
picture="$PWD/resources/home/Slides/Demo/Lighthouse.jpg"

shoot() { # NAME [MENU]
    local name="$1" menu="${2:-}"
    KAVORI_SCREENSHOT="$out/$name.png" KAVORI_SCREENSHOT_MENU="$menu" \
        xvfb-run -a -s "-screen 0 1024x768x24" "$program" "$picture" >/dev/null 2>&1
    [ -s "$out/$name.png" ] || { echo "help-screenshots: $name was not taken" >&2; exit 1; }
    echo "help-screenshots: $out/$name.png"
}

# A user who has run Kavori before: no first-run greetings (registry note, about box)...
mkdir -p "$XDG_CONFIG_HOME/Kavorix" "$KAVORI_HOME"
cat > "$XDG_CONFIG_HOME/Kavorix/Kavorix.conf" <<CONF
[Settings]
EXEPath=$KAVORI_HOME/
ProgramRun=1
CONF
# ...who starts without the about box, and without the folder pane (it would show this
# machine's own disks).
printf '[Viewer]\r\nStartupDialog=0\r\nShowFileBrowser=False\r\n' > "$KAVORI_HOME/KAVORI.INI"

shoot main-window
for menu in mnuFile mnuEdit mnuBrowse mnuShows mnuFiles mnuSystem mnuHelp; do
    shoot "menu-${menu#mnu}" "$menu"
done
