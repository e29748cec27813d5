#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs inside the virtual machine. Each step says what it found; the status is that of the worst.
# usage: in-guest.sh BUILD SECONDS_OF_STREAM
set -u
build=$1
seconds=$2
info=$build/libs/d2xx/usb/ftd2xx-info
road=$build/tests/usb/usb-road
emulator=$build/tests/usb/usb-emulator
rate=18724571 # bytes per second of 3.072 MHz: frames of 512 bytes with 84 samples
worst=0

step() { echo "== $*"; }
check() { # check TEXT COMMAND...
    local text=$1
    shift
    if "$@"; then echo "ok: $text"; else echo "FAILED: $text"; worst=1; fi
}
serials() { "$info" | sed -n 's/.*serial "\([^"]*\)".*/\1/p' | tr '\n' ' '; }
await() { # await COMMAND...: up to 10 s
    for _ in $(seq 100); do
        "$@" && return 0
        sleep 0.1
    done
    return 1
}
listed() { [ "$(serials)" = "$1" ]; }
plug() { # plug PORT SERIAL SOURCE SPEED; the process is in $pid
    "$emulator" "$@" &
    pid=$!
}

step "enumeration"
plug 0 ZN0001 count $rate
first=$pid
check "listed with its serial number" await listed "ZN0001 "
"$info"
check "the kernel knows its product string" grep -qx ZephrinNano /sys/bus/usb/devices/*/product
check "the serial driver is bound" await test -e /dev/ttyUSB0

step "a stream of $seconds s, every byte checked"
"$road" stream 0 "$seconds" &
streaming=$!
check "the serial driver is away meanwhile" await test ! -e /dev/ttyUSB0
check "no byte wrong" wait $streaming
check "the serial driver is back" await test -e /dev/ttyUSB0
check "rate and gaps" "$info" --rate 0 --seconds 10

step "EEPROM"
check "user area" "$road" eeprom 0
check "one copy of the EEPROM was kept" test "$(ls /root/.local/share/zephrin-nano/eeprom | wc -l)" = 1
"$info" --eeprom 0

step "two devices at once"
plug 1 ZN0002 count $rate
second=$pid
check "both listed in order" await listed "ZN0001 ZN0002 "
"$road" stream 0 10 &
a=$!
"$road" stream 1 10 &
b=$!
check "no byte wrong on the first" wait $a
check "no byte wrong on the second" wait $b

step "pulled in mid-stream"
"$road" pulled 0 >/tmp/pulled &
streaming=$!
await grep -q streaming /tmp/pulled
sleep 1
kill $first
check "the reader failed at once and closed" wait $streaming
cat /tmp/pulled
check "gone from the list" await listed "ZN0002 "

step "put back"
plug 0 ZN0001 count $rate
first=$pid
check "in its old place" await listed "ZN0001 ZN0002 "
check "no byte wrong" "$road" stream 0 5
kill $first $second

step "the whole receiver on a recording, at a part of real time"
plug 2 ZN0003 "$build/usb-machine/scene.wav" 0.25
check "listed" await listed "ZN0003 "
mkdir -m 700 /tmp/runtime
export QT_QPA_PLATFORM=offscreen XDG_CONFIG_HOME=/tmp/config XDG_RUNTIME_DIR=/tmp/runtime
check "host and plugin" "$build/host/velmora-host" --headless \
    --device usb --rate 48000 --center 7.1M --tune 7.102M --mode USB \
    --seconds 30 --record vsdr --record-path /tmp
recorded=$(echo /tmp/*.wav)
header=112
bytes=$(($(stat -c %s "$recorded") - header))
echo "$bytes bytes of IQ recorded"
check "more than 2 s of them" test $bytes -gt $((2 * 48000 * 6))
check "each as recorded without USB" "$road" part $header "$recorded" "$build/usb-machine/native.wav"
exit $worst
