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
home=$(mktemp -d)
server=
manager=
trap 'kill $manager $server 2>/dev/null; rm -rf "$home"' EXIT
# The server picks a free display itself and writes its number.
Xvfb -displayfd 3 -screen 0 1920x1200x24 -nolisten tcp 3>"$home/display" 2>/dev/null &
server=$!
for _ in $(seq 50); do
  [ -s "$home/display" ] && break
  kill -0 "$server" 2>/dev/null || { echo "Xvfb did not start" >&2; exit 1; }
  sleep 0.1
done
[ -s "$home/display" ] || { echo "Xvfb did not start" >&2; exit 1; }
DISPLAY=:$(cat "$home/display")
export DISPLAY
openbox 2>/dev/null &
manager=$!
sleep 1
QT_QPA_PLATFORM=xcb XDG_CONFIG_HOME=$home/config HOME=$home \
  QUILLET_TOOLS_DIR="$PWD/build/share/quillet/tools" LC_ALL=C.UTF-8 \
  ./build/tests/screenshot_tour docs/screenshots
