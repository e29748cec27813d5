#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs into a folder, moves that, and receives with what is in it: plugin and libraries are
# found from the program, and no file knows where it was built or installed.
# usage: moved-tree.sh CMAKE BUILD SOURCE
set -euo pipefail
[ $# -eq 3 ] || { echo "usage: $0 CMAKE BUILD SOURCE" >&2; exit 2; }
cmake=$1
build=$2
source=$3

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# Stripped: what is for the debugger may name its sources.
"$cmake" --install "$build" --prefix "$work/installed" --strip >/dev/null
for path in "$build" "$source" "$work"; do
    if grep -rlF "$path" "$work/installed"; then
        echo "these files know of $path" >&2
        exit 1
    fi
done

tree="$work/somewhere else"
mv "$work/installed" "$tree"
# As a program of the desktop is started: nothing of this shell but what a sanitizer is told, and in
# another folder.
told=(ASAN_OPTIONS=detect_leaks=0)
for name in LD_PRELOAD TSAN_OPTIONS; do
    [ -z "${!name-}" ] || told+=("$name=${!name}")
done
run() { (cd / && env -i HOME="$work" LANG=C.UTF-8 "${told[@]}" "$@"); }
run "$tree/bin/velmora-host" --headless --seconds 1 --free-run --tune 7.105M \
    --out "$work/audio.wav" --report "$work/report.json" >/dev/null
for file in plugins/libZephrinNano.so virtual/libftd2xx.so; do
    found=$(find "$tree" -path "*/velmora/$file")
    if [ -z "$found" ] || ! grep -qF "\"$found\"" "$work/report.json"; then
        echo "not the installed $file:" >&2
        grep -E '"(plugin|d2xx)"' "$work/report.json" >&2
        exit 1
    fi
done
# A second of 32-bit float in stereo at 48 kHz.
[ "$(stat -c %s "$work/audio.wav")" -gt 380000 ] || { echo "no second of audio" >&2; exit 1; }

# Most likely there is no receiver here; its library is.
status=0
run "$tree/bin/velmora-host" --headless --device usb --seconds 1 >/dev/null 2>"$work/usb" || status=$?
if [ $status -ne 0 ] && ! { [ $status -eq 1 ] && grep -q "^velmora-host: no receiver found: " "$work/usb"; }; then
    echo "status $status of --device usb:" >&2
    cat "$work/usb" >&2
    exit 1
fi
run "$tree/bin/ftd2xx-info" --help | grep -q -- --eeprom
