#!/usr/bin/env bash
# Installs what Rigstage builds, tests and runs with on Debian 12. Does nothing when all is there.
set -euo pipefail

packages=(
  # compiler and build
  g++ cmake ninja-build ccache pkg-config git ca-certificates
  # libraries
  qtbase5-dev libqt5svg5-dev nlohmann-json3-dev libassimp-dev libcli11-dev libbullet-dev
  # the check for new versions
  libcpp-httplib-dev
  # the 3D view: OpenGL with and without a screen; films of it
  libepoxy-dev libgl-dev libegl-dev libegl-mesa0 libgl1-mesa-dri ffmpeg
  # joysticks, pads, wheels
  libsdl2-dev
  # the Python module
  python3 python3-dev pybind11-dev
  # tests
  libgtest-dev libgmock-dev libtinygltf-dev
  # tests of the windows: a display, a window manager, a hand
  xvfb xauth openbox x11-utils xdotool fonts-dejavu-core
  # benchmarks and their peers
  libbenchmark-dev libpugixml-dev libeigen3-dev zlib1g-dev libmodpbase64-dev
)

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
  [[ $status == "install ok installed" ]] || missing+=("$package")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "Installing: ${missing[*]}"
sudo=()
if [[ $(id -u) -ne 0 ]]; then
  command -v sudo >/dev/null || { echo "These packages are missing and need root: ${missing[*]}" >&2; exit 1; }
  sudo=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -q
"${sudo[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
