#!/usr/bin/env bash
# Fuzzes the parsers with libFuzzer under the address and undefined sanitizers (needs clang).
#   scripts/fuzz.sh [--seconds N] [TARGET...]     default: 60 s for each target of tests/fuzz
# What is found to be of interest stays in build/fuzz/corpus/TARGET, what breaks a target in
# build/fuzz/crashes; a smaller copy of the latter belongs into tests/fuzz/corpus/TARGET.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=60
targets=()
while [[ $# -gt 0 ]]; do
  case "$1" in
    --seconds) seconds=${2:?--seconds needs a number}; shift 2 ;;
    -*) echo "usage: scripts/fuzz.sh [--seconds N] [TARGET...]" >&2; exit 2 ;;
    *) targets+=("$1"); shift ;;
  esac
done
if [[ ${#targets[@]} -eq 0 ]]; then
  for source in tests/fuzz/*_fuzz.cpp; do
    target=$(basename "$source" _fuzz.cpp)
    targets+=("$target")
  done
fi
command -v clang++ >/dev/null || { echo "clang++ is missing: apt-get install clang libclang-rt-14-dev" >&2; exit 1; }

build=build/fuzz
cmake -S . -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=Debug \
  -DCMAKE_CXX_FLAGS_DEBUG="-O1 -g1" -DRIGSTAGE_SANITIZE=address,undefined \
  -DRIGSTAGE_LIBFUZZER=ON -DRIGSTAGE_BENCH=OFF >/dev/null
cmake --build "$build" --target "${targets[@]/#/fuzz_}"

broken=()
for target in "${targets[@]}"; do
  mkdir -p "$build/corpus/$target" "$build/crashes"
  echo "== $target"
  "$build/tests/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=1500 \
    -print_final_stats=1 -verbosity=0 -artifact_prefix="$build/crashes/$target-" \
    "$build/corpus/$target" "tests/fuzz/corpus/$target" || broken+=("$target")
done
if [[ ${#broken[@]} -gt 0 ]]; then
  echo "broken: ${broken[*]}" >&2
  exit 1
fi
