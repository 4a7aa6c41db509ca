#!/bin/sh
# Installs the Debian packages Quillet needs (those not yet installed) and
# builds it in build/.
set -eu
cd "$(dirname "$0")/.."

missing=""
for package in $(cat scripts/packages.txt); do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "ok installed"; then
    missing="$missing $package"
  fi
done

if [ -n "$missing" ]; then
  if [ "$(id -u)" -eq 0 ]; then sudo=""; else sudo="sudo"; fi
  $sudo apt-get update -q
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -q --no-install-recommends $missing
fi

cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build
