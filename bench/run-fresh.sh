#!/bin/bash
# run-fresh.sh BENCH_BINARY [FILTER...] — each benchmark the filters name in a process of its
# own, so that each "first" figure is a fresh process's, holding the build lock so no build
# shares the cores. Then the same held to one core (taskset -c 0) for the filters given after
# --one-core. Example:
#   KAVORI_CORPUS=/tmp/corpus bench/run-fresh.sh build/bench/kavori_bench \
#       BM_CorpusFullDecode BM_CorpusProgressiveForScreen --one-core BM_CorpusFullDecode
set -euo pipefail
BIN=${1:?usage: run-fresh.sh BENCH_BINARY FILTER... [--one-core FILTER...]}
shift
ONE=0
for f in "$@"; do
  if [ "$f" = "--one-core" ]; then ONE=1; continue; fi
  echo "== $f $([ $ONE = 1 ] && echo '(one core)' || echo '(2 cores)') load $(cut -d' ' -f1-3 /proc/loadavg)"
  if [ $ONE = 1 ]; then
    flock /tmp/kavori-build.lock taskset -c 0 "$BIN" --benchmark_filter="^$f(/|\$)" 2>&1 | grep -E "^BM_|^---|Benchmark"
  else
    flock /tmp/kavori-build.lock "$BIN" --benchmark_filter="^$f(/|\$)" 2>&1 | grep -E "^BM_|^---|Benchmark"
  fi
done
