#!/usr/bin/env bash
# Shows Kavori running as XScreenSaver's screen saver, headless: a fresh program folder whose
# demo show is the chosen saver show, XScreenSaver on an Xvfb display with our module selected,
# "xscreensaver-command -activate", and a screenshot of the screen while the saver runs
# (screenshots/saver-running.png). Pass --no-build to use the build as it is.
set -euo pipefail
cd "$(dirname "$0")/.."
if [ "${1:-}" != "--no-build" ]; then
    scripts/install-deps.sh
    scripts/build.sh
fi
program="$PWD/build/src/app/Kavori"
shots="$PWD/screenshots"
mkdir -p "$shots"

demo=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$demo"' EXIT
mkdir -p "$demo/config/Kavorix" "$demo/user"
printf '[Settings]\nEXEPath=%s/home/\nProgramRun=1\n' "$demo" > "$demo/config/Kavorix/Kavorix.conf"

# XScreenSaver will not run its savers for root: a plain user runs everything below.
run_as=()
if [ "$(id -u)" -eq 0 ]; then
    chown -R nobody "$demo"
    chmod 755 "$demo"
    run_as=(setpriv --reuid=65534 --regid=65534 --clear-groups)
fi
as_user() {
    "${run_as[@]}" env HOME="$demo/user" KAVORI_HOME="$demo/home" XDG_CONFIG_HOME="$demo/config" \
        XDG_RUNTIME_DIR="$demo/user" DISPLAY=":$display" QT_QPA_PLATFORM=xcb "$@"
}

display=$((90 + RANDOM % 100))
Xvfb ":$display" -screen 0 1024x768x24 -nolisten tcp >/dev/null 2>&1 &
sleep 1

# The first start fills the program folder with the demo show; it is then made the saver show,
# and our module XScreenSaver's current saver in the lines OK in "Screen Saver Settings" writes
# (the unit tests check that it writes them so).
as_user timeout 5 "$program" >/dev/null 2>&1 || true
show="$demo/home/Slides/Demo/Demo.KAV"
[ -f "$show" ] || { echo "saver-demo: the demo show was not made" >&2; exit 1; }
printf 'CurrentSaver=%s\n' "$show" >> "$demo/config/Kavorix/Kavorix.conf"
printf 'mode:\t\tone\nselected:\t0\nlock:\t\tFalse\nprograms:\t\t\t\t\t\t\t\t      \\\n  "Kavori Screen Saver"  %s /S\t\t\t    \\n\n' \
    "$program" > "$demo/user/.xscreensaver"
[ ${#run_as[@]} -eq 0 ] || chown nobody "$demo/user/.xscreensaver"
cat "$demo/user/.xscreensaver"

as_user xscreensaver -no-splash >"$demo/xscreensaver.log" 2>&1 &
sleep 3
as_user xscreensaver-command -activate
sleep 8
as_user xscreensaver-command -time || true
pgrep -a Kavori || echo "saver-demo: Kavori is not running"
# Where our player sits: a child of the window XScreenSaver made for its saver.
xwininfo -root -tree -display ":$display" | grep -B3 '("Kavori" "Kavori")' || true
if command -v convert >/dev/null; then
    xwd -root -display ":$display" -silent | convert xwd:- "$shots/saver-running.png"
    echo "saver-demo: screenshot in $shots/saver-running.png"
else
    xwd -root -display ":$display" -silent -out "$shots/saver-running.xwd"
    echo "saver-demo: screenshot in $shots/saver-running.xwd"
fi
as_user xscreensaver-command -exit || true
