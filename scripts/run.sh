#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Opens the receiver's window on the built-in band. Where there is no screen it receives a station
# of that band by the same road, and leaves the audio, the pictures and the report in a folder.
# usage: run.sh BUILD OUT
set -euo pipefail
[ $# -eq 2 ] || { echo "usage: $0 BUILD OUT" >&2; exit 2; }
build=$1
out=$2
seconds=15

mkdir -p "$out"
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    echo "Opening the receiver on the built-in band; F1 lists keys and mouse."
    echo "Settings: $out/window.ini, bookmarks: $out/bookmarks.csv"
    exec "$build/host/velmora-host" --settings "$out/window.ini"
fi

echo "There is no screen, so no window: with DISPLAY or WAYLAND_DISPLAY set \`make run\` opens one."
echo "Receiving $seconds s of the built-in band at 192 kHz in USB, faster than real time ..."
"$build/host/velmora-host" --headless --rate 192k --center 7.1M --tune 7.105M --mode USB \
    --filter 300:2700 --seconds "$seconds" --free-run --settings "$out/settings.ini" \
    --out "$out/station.wav" --report "$out/report.json" \
    --panorama "$out/panorama.png" --waterfall "$out/waterfall.png"
echo
echo "Audio:     $out/station.wav"
echo "Panorama:  $out/panorama.png"
echo "Waterfall: $out/waterfall.png"
echo "Report:    $out/report.json"
