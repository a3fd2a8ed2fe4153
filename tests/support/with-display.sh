#!/usr/bin/env bash
# Runs a command on an X display of its own, with a window manager: with-display.sh COMMAND...
# A window has the focus only where a window manager gives it.
set -euo pipefail

for program in Xvfb openbox; do
  command -v "$program" >/dev/null || { echo "$program is missing: run scripts/install-deps.sh" >&2; exit 1; }
done

folder=$(mktemp -d)
pids=()
finish() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  rm -rf "$folder"
}
trap finish EXIT

# The server chooses a free display itself and tells which.
mkfifo "$folder/display"
exec 9<>"$folder/display"
Xvfb -displayfd 9 -screen 0 1800x1000x24 -dpi 96 -nolisten tcp >"$folder/xvfb.log" 2>&1 9>&9 &
pids+=($!)
read -r -t 20 number <&9 || { cat "$folder/xvfb.log" >&2; echo "no display" >&2; exit 1; }
export DISPLAY=":$number" QT_QPA_PLATFORM=xcb
export XDG_RUNTIME_DIR="$folder/runtime" XDG_CONFIG_HOME="$folder/config"
mkdir -m 700 "$XDG_RUNTIME_DIR" "$XDG_CONFIG_HOME"
openbox >"$folder/openbox.log" 2>&1 &
pids+=($!)
for _ in $(seq 100); do
  xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && break
  sleep 0.05
done

"$@"
