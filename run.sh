#!/usr/bin/env bash
# Sets up, builds and performs a first take: ./run.sh [OUTPUT_FOLDER]
# Records ten seconds of a tool driven by a scripted pad, simulates the take again with another
# parameter, undoes that, saves the scene and exports it. Says what it did.
set -euo pipefail
cd "$(dirname "$0")"

output=${1:-build/first_take}
scripts/install-deps.sh
cmake --preset release -DRIGSTAGE_TESTS=OFF -DRIGSTAGE_BENCH=OFF -B build/run >/dev/null
cmake --build build/run
mkdir -p "$output"
PYTHONPATH=build/run/python /usr/bin/python3 examples/first_take.py "$output"
