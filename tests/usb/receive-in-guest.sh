#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs inside the virtual machine.
# usage: receive-in-guest.sh BUILD RECORDING HOST_OPTION...
set -u
build=$1
recording=$2
shift 2
cp "$recording" /tmp/played.wav # no wait for a disk in the stream
"$build/tests/usb/usb-emulator" 0 ZN0001 /tmp/played.wav 1 &
for _ in $(seq 100); do
    "$build/libs/d2xx/usb/ftd2xx-info" | grep -q ZN0001 && break
    sleep 0.1
done
mkdir -m 700 /tmp/runtime
export QT_QPA_PLATFORM=offscreen XDG_CONFIG_HOME=/tmp/config XDG_RUNTIME_DIR=/tmp/runtime
"$build/host/velmora-host" --headless --device usb --out /tmp/audio.wav --report /tmp/report.json "$@"
status=$?
cp /tmp/audio.wav /tmp/report.json /mnt/
exit $status
