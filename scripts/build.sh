#!/usr/bin/env bash
# Configures and builds Kavori into build/ (warnings are errors, so the build stays clean).
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build -DKAVORI_WERROR=ON "$@" >/dev/null
cmake --build build -j"$(nproc)"
