#!/usr/bin/env bash
# Builds Kavori and its tests with AddressSanitizer and UndefinedBehaviorSanitizer into
# build-asan/ and runs every test there: any invalid access, undefined behaviour or leak of
# our own fails the test it happens in. Optimised lightly and with line tables only, so the
# second build stays quick.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=None -DCMAKE_CXX_FLAGS="-O1 -g1" -DKAVORI_ASAN=ON \
    -DKAVORI_WERROR=ON "$@" >/dev/null
cmake --build build-asan -j"$(nproc)"
cd build-asan
# halt_on_error turns a UBSan report into a failed test rather than a line in its log.
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
ctest --output-on-failure --no-tests=error -j"$(nproc)" --timeout 600
