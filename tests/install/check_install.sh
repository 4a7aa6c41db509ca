#!/bin/sh
# Installs the build into a fresh prefix and checks that the installed
# quillet finds its own tools and resources there, not the build tree's.
set -eu
build=$1
prefix=$(mktemp -d)
work=$(mktemp -d)
trap 'rm -rf "$prefix" "$work"' EXIT

cmake --install "$build" --prefix "$prefix" >/dev/null
for file in bin/quillet share/applications/quillet.desktop \
    share/icons/hicolor/scalable/apps/quillet.svg \
    share/quillet/tools/7za share/quillet/tools/arj share/quillet/tools/lha \
    share/quillet/tools/unrar share/quillet/tools/r share/quillet/tools/rar-free \
    "share/quillet/sfxmodule.app/Contents/MacOS/sfxmodule" \
    "share/quillet/backupmodule.app/Contents/MacOS/backupmodule" \
    "share/quillet/backupmodule.app/Restore Backup" share/quillet/tools/hdiutil \
    share/quillet/filemanager/kio/quillet-compress.desktop \
    share/quillet/filemanager/kio/quillet-extract.desktop \
    "share/quillet/filemanager/nautilus/Compress with Quillet" \
    "share/quillet/filemanager/nautilus/Extract with Quillet"; do
  [ -e "$prefix/$file" ] || { echo "missing after install: $file" >&2; exit 1; }
done
grep -q '^Exec=quillet %F$' "$prefix/share/applications/quillet.desktop"

printf 'hello\n' >"$work/a.txt"
(cd "$work" && 7z a -bd t.zip a.txt >/dev/null)
listing=$(env -u QUILLET_TOOLS_DIR "$prefix/bin/quillet" --list "$work/t.zip")
case $listing in
  a.txt*) ;;
  *) echo "the installed quillet listed: $listing" >&2; exit 1 ;;
esac
