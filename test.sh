#!/usr/bin/env bash
# Sets up, builds and runs the tests. ./test.sh [--sanitize]
#   --sanitize  the same under the address and undefined-behaviour sanitizers, without what needs a
#               window, and with the fuzz targets running longer.
set -euo pipefail
cd "$(dirname "$0")"

preset=release
case "${1:-}" in
  "") ;;
  --sanitize) preset=asan; export RIGSTAGE_FUZZ_SECONDS="${RIGSTAGE_FUZZ_SECONDS:-20}" ;;
  *) echo "usage: ./test.sh [--sanitize]" >&2; exit 2 ;;
esac

scripts/install-deps.sh
cmake --preset "$preset"
cmake --build --preset "$preset"
ctest --preset "$preset"
