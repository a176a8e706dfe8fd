#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (AddressSanitizer and UndefinedBehaviorSanitizer),
# seeds them and runs each for SECONDS: scripts/fuzz.sh SECONDS [TARGET...]
# The corpus grows in build-fuzz/corpus/TARGET between runs; a crashing, leaking or hanging
# input lands in build-fuzz/findings/TARGET/ and the run says which. A summary of executions
# and time per target is added to build-fuzz/summary.txt.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:?usage: scripts/fuzz.sh SECONDS [TARGET...]}"
shift
out=build-fuzz
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    targets=(ini list_input show description program_files jpeg pcx tga bmp metafile mci modern)
fi

if [ ! -f "$out/CMakeCache.txt" ]; then
    CC=clang CXX=clang++ cmake -S . -B "$out" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKAVORI_FUZZ=ON \
        -DKAVORI_TESTS=OFF >/dev/null
fi
cmake --build "$out" -j"$(nproc)" --target kavori-fuzz-seeds $(printf 'fuzz_%s ' "${targets[@]}")

export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS="${ASAN_OPTIONS:-allocator_may_return_null=1:detect_leaks=1}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}"
# Seeds per run, so two runs of different targets can go side by side.
seeds="$out/seeds-$$"
trap 'rm -rf "$seeds"' EXIT
# The seed maker encodes through libraries (x265) that keep caches for the process's life.
ASAN_OPTIONS="$ASAN_OPTIONS:detect_leaks=0" "$out/fuzz/kavori-fuzz-seeds" "$PWD" "$seeds"

status=0
for t in "${targets[@]}"; do
    mkdir -p "$out/corpus/$t" "$out/findings/$t"
    log="$out/findings/$t.log"
    started=$SECONDS
    # A picture a user could open is at most a few megabytes of header and data that matter;
    # 2 GB of memory and 10 s per input are far past what any well-formed input needs.
    if "$out/fuzz/fuzz_$t" "$out/corpus/$t" "$seeds/$t" -max_total_time="$seconds" -timeout=10 \
        -rss_limit_mb=2048 -max_len=65536 -print_final_stats=1 \
        -artifact_prefix="$out/findings/$t/" >"$log" 2>&1; then
        result=clean
    else
        result="FINDING (see $log)"
        status=1
    fi
    runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' || echo '?')
    echo "$t: $result, $runs executions in $((SECONDS - started)) s" | tee -a "$out/summary.txt"
done
exit $status
