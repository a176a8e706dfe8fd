#!/usr/bin/env bash
# Installs what Kavori needs, builds it and starts it on the bundled demo picture. Without a
# display it runs under xvfb-run in a fresh program folder, saves a screenshot of the first
# window and says where.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    build/src/app/Kavori >/dev/null 2>&1 & # a first start fills the program folder
    sleep 2; kill $! 2>/dev/null || true
    home="${KAVORI_HOME:-${XDG_DATA_HOME:-$HOME/.local/share}/Kavori}"
    exec build/src/app/Kavori "$home/Slides/Demo/Morning.jpg"
fi

# Headless: a fresh program folder and per-user store, registered as installed, so the
# screenshot shows the main window rather than the first-run notice.
demo=$(mktemp -d)
mkdir -p "$demo/config/Kavorix"
printf '[Settings]\nEXEPath=%s/home/\nProgramRun=1\n' "$demo" > "$demo/config/Kavorix/Kavorix.conf"
mkdir -p screenshots
shot="$PWD/screenshots/kavori.png"
rm -f "$shot"
KAVORI_HOME="$demo/home" XDG_CONFIG_HOME="$demo/config" KAVORI_SCREENSHOT="$shot" \
    xvfb-run -a -s "-screen 0 1280x800x24" build/src/app/Kavori "$demo/home/Slides/Demo/Morning.jpg" || true
echo "No display here: the program ran under xvfb-run on the demo picture; its first window is in $shot"
