#!/bin/sh
# Renews the README's pictures of the main window: runs the screenshot tour
# on a private X server with the openbox window manager, so the windows
# have their frames. Needs the packages xvfb and openbox.
set -eu
cd "$(dirname "$0")/.."
for program in Xvfb openbox; do
  command -v "$program" >/dev/null || { echo "$program is missing: apt-get install xvfb openbox" >&2; exit 1; }
done
cmake --build build --target screenshot_tour
display=:$(( $$ % 500 + 100 ))
home=$(mktemp -d)
Xvfb "$display" -screen 0 1920x1200x24 -nolisten tcp &
server=$!
trap 'kill $server 2>/dev/null; rm -rf "$home"' EXIT
sleep 1
DISPLAY=$display openbox &
sleep 1
DISPLAY=$display QT_QPA_PLATFORM=xcb XDG_CONFIG_HOME=$home/config HOME=$home \
  QUILLET_TOOLS_DIR="$PWD/build/share/quillet/tools" LC_ALL=C.UTF-8 \
  ./build/tests/screenshot_tour docs/screenshots
