#!/usr/bin/env bash
# Makes the pictures of the documents from the program itself: docs/images/*.png.
# Needs a release build; uses a display of its own.
set -euo pipefail
cd "$(dirname "$0")/.."

cmake --build build/release --target test_studio
mkdir -p docs/images
RIGSTAGE_PICTURES="$PWD/docs/images" \
  tests/support/with-display.sh build/release/tests/studio/test_studio --gtest_filter='PicturesTest.*'
