#!/usr/bin/env bash
# Builds and runs the benchmarks and prints one table: entry, peer [ns], ours [ns], ratio.
#   bench/run.sh [--json FILE] [--filter RE]
# An entry with no peer beside it shows its time alone. Ratios below 1: we are faster.
set -euo pipefail
cd "$(dirname "$0")/.."

json=""
filter="."
while [[ $# -gt 0 ]]; do
  case "$1" in
    --json) json=$2; shift 2 ;;
    --filter) filter=$2; shift 2 ;;
    *) echo "usage: bench/run.sh [--json FILE] [--filter RE]" >&2; exit 2 ;;
  esac
done

scripts/install-deps.sh
cmake --preset release >/dev/null
cmake --build --preset release --target benchmarks
scripts/bench_table.py --filter "$filter" ${json:+--json "$json"} build/release/bench/bench_*
