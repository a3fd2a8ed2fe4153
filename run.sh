#!/usr/bin/env bash
# Sets up, builds and opens the studio with a demo scene, ready to drive.
#   ./run.sh [SCENE.glb]           the studio; with a file: that scene
#   ./run.sh --headless [FOLDER]   no window: a script performs the takes, files and a film in FOLDER
# Without a display the second is done.
set -euo pipefail
cd "$(dirname "$0")"

headless=false
if [[ ${1:-} == --headless ]]; then
  headless=true
  shift
elif [[ -z ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; then
  echo "There is no display here: the takes are performed by a script."
  headless=true
fi

scripts/install-deps.sh
cmake --preset release -DRIGSTAGE_TESTS=OFF -DRIGSTAGE_BENCH=OFF -B build/run >/dev/null
cmake --build build/run

if ! $headless; then
  if [[ $# -gt 0 ]]; then
    exec build/run/rigstage-studio "$1"
  fi
  exec build/run/rigstage-studio --demo
fi

output=${1:-build/first_take}
mkdir -p "$output"
PYTHONPATH=build/run/python /usr/bin/python3 examples/first_take.py "$output"
build/run/rigstage demo -o "$output/demo.glb" --film "$output/demo.mp4"
echo "A driven car: $output/demo.glb (opens in the studio and in other 3D programs), $output/demo.mp4"
