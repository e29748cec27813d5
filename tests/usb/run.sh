#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Tests the provider on libusb against a real Linux USB stack without hardware; a few minutes.
# usage: run.sh BUILD [SECONDS_OF_STREAM]
set -euo pipefail
tests=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd)
seconds=${2:-60}
# shellcheck source=tests/usb/machine.sh
. "$tests/machine.sh"
prepare_machine "$tests" "$build/usb-machine" /bin/bash "$tests/in-guest.sh" "$build" "$seconds"

# A recording to play, and what the receiver records of it without any USB. No rate is converted and
# nothing mixed, so its samples do not depend on the sizes of the reads.
record() { # record FILE OPTION...
    local to=$1
    shift
    rm -rf recording
    mkdir recording
    QT_QPA_PLATFORM=offscreen "$build/host/velmora-host" --headless --rate 48000 --center 7.1M \
        --tune 7.102M --mode USB --free-run --record vsdr --record-path recording "$@" >/dev/null
    mv recording/*.wav "$to"
}
record scene.wav --seconds 12
record native.wav --scene scene.wav --seconds 11

echo "Starting the virtual machine"
start_machine 1800 -accel tcg,thread=multi -smp 2
