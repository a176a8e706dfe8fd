#!/usr/bin/env bash
# Installs every system package Kavori builds, runs and tests with (Debian 12).
# Quick when everything is already there: apt is only asked when a package is missing.
set -euo pipefail

PACKAGES=(
    build-essential cmake pkg-config
    qt6-base-dev qt6-base-dev-tools libqt6opengl6-dev libgl-dev
    qt6-svg-dev qt6-multimedia-dev qt6-image-formats-plugins qt6-qpa-plugins
    gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-plugins-bad
    gstreamer1.0-plugins-ugly gstreamer1.0-libav
    libgstreamer1.0-dev libgstreamer-plugins-base1.0-dev gstreamer1.0-tools
    libwmf-dev libemf2svg-dev libzip-dev breeze-icon-theme
    libfluidsynth-dev timgm6mb-soundfont
    libavif-dev libheif-dev libjxl-dev
    libheif-examples libavif-bin libjxl-tools
    gsettings-desktop-schemas dbus
    libgtest-dev libgmock-dev googletest libbenchmark-dev libjpeg62-turbo-dev
    xvfb xauth x11-utils x11-apps xscreensaver
    fonts-dejavu-core fonts-urw-base35
    desktop-file-utils shared-mime-info xdg-utils libglib2.0-bin
)

missing=()
for p in "${PACKAGES[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    echo "install-deps: all ${#PACKAGES[@]} packages present"
    exit 0
fi

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
    SUDO="sudo"
fi

echo "install-deps: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -q
$SUDO apt-get install -y -q --no-install-recommends "${missing[@]}"
