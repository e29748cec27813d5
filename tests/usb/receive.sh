#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# One reception over a real Linux USB stack: the emulated receiver plays a recording of IQ, host and
# plugin receive it through the provider on libusb, and leave what they say in BUILD/usb-machine/log.
# The machine's clock goes by its instructions, so that it is always quick enough for real time,
# however long that takes outside.
# usage: receive.sh BUILD RECORDING AUDIO REPORT HOST_OPTION...
set -euo pipefail
tests=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd)
recording=$(realpath "$2")
audio=$(realpath "$3")
report=$(realpath "$4")
shift 4
# shellcheck source=tests/usb/machine.sh
. "$tests/machine.sh"
work=$build/usb-machine
prepare_machine "$tests" "$work" \
    /bin/bash "$tests/receive-in-guest.sh" "$build" "$work/played.wav" "$@"
rm -f out/*
cp "$recording" played.wav # the machine has a folder /tmp of its own
start_machine 3600 -accel tcg,thread=single -smp 1 -icount shift=1
rm played.wav
mv out/audio.wav "$audio"
mv out/report.json "$report"
