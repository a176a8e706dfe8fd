#!/usr/bin/env bash
# Takes the manual's pictures of the main window, each of its menus and each window a user
# meets under a virtual display, with the demo show's pictures, into resources/home/Help/images/.
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
export HOME="$scratch/home" KAVORI_HOME="$scratch/home/Kavori" XDG_CONFIG_HOME="$scratch/home/.config"
mkdir -p "$HOME"
# The demo show from inside that folder, as a user finds it, so no path of this checkout shows.
mkdir -p "$KAVORI_HOME/Slides"
cp -r resources/home/Slides/Demo "$KAVORI_HOME/Slides/"
picture="$KAVORI_HOME/Slides/Demo/Lighthouse.jpg"

show="$KAVORI_HOME/Slides/Demo/Demo.KAV"

run() { # NAME ARGUMENT [ENVIRONMENT...]: the program opened on ARGUMENT, its picture as NAME
    local name="$1" argument="$2"
    shift 2
    rm -f "$out/$name.png"
    env KAVORI_SCREENSHOT="$out/$name.png" "$@" \
        xvfb-run -a -s "-screen 0 1024x768x24" "$program" "$argument" >/dev/null 2>&1 || true
    [ -s "$out/$name.png" ] || { echo "help-screenshots: $name was not taken" >&2; exit 1; }
    echo "help-screenshots: $out/$name.png"
}
shoot() { # NAME [MENU]: the main window, with that menu open
    run "$1" "$picture" KAVORI_SCREENSHOT_MENU="${2:-}"
}
window() { # NAME STEPS: the window that pressing STEPS (object names) opens from the main window
    run "$1" "$picture" KAVORI_SCREENSHOT_OPEN="$2"
}
editor() { # NAME [STEPS]: the slide show editor on the demo show, or a window it opens
    run "$1" "/EDIT $show" KAVORI_SCREENSHOT_OPEN="${2:-}"
}

# A user who has run Kavori before: no first-run greetings (registry note, about box)...
mkdir -p "$XDG_CONFIG_HOME/Kavorix"
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

# The windows, each with the name of its part of the manual.
editor SlideLoadFrm
editor frmPlaybackOptions CmdOptions
editor frmSlideProperties mnuSlideProperties
editor frmTransition mnuEditTransitions
editor frmEditSounds mnuEditSounds
editor frmDescription mnuEditDescription
editor frmAdvDescription mnuAdvDescriptions
editor frmExportVideo mnuExportVideo
window frmSlideWizard mnuSlideShowWizard
window frmThumbnail mnuThumbnailBrowse
window frmCopyImages mnuFileCopyImages
window frmPreferences mnuPref
window PackageFrm mnuPackage
window SaverSetup mnuSSaverSettings

# The player: the demo show's first slide as it plays.
played="$scratch/played"
mkdir -p "$played"
KAVORI_SCREENSHOT_SHOW="$played" xvfb-run -a -s "-screen 0 1024x768x24" "$program" "$show" \
    >/dev/null 2>&1 || true
[ -s "$played/slide-1.png" ] || { echo "help-screenshots: the player was not taken" >&2; exit 1; }
cp "$played/slide-1.png" "$out/FullViewFrm.png"
echo "help-screenshots: $out/FullViewFrm.png"
