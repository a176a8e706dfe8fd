#!/usr/bin/env bash
# Installs what Kavori needs, builds it with its tests and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh
cd build
ctest --output-on-failure --no-tests=error -j"$(nproc)" --timeout 300
