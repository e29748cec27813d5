#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Lets WSJT-X decode FT8 that the receiver's window plays: a recording is put on the air at 14.074 MHz,
# the window starts elsewhere, WSJT-X tunes it there by rig control and listens to its sound through a
# sound server with a null sink. Sound, desktop and settings are the script's own.
# usage: check-wsjtx.sh BUILD FT8.wav [SLOTS]
# FT8.wav is one slot as WSJT-X saves it: 15 s, from the slot's beginning on. Fails unless messages are
# decoded in every slot but the first two, in which both programs start. Leaves messages, and a picture
# where ImageMagick is installed, in out/wsjtx. Needs wsjtx, pulseaudio, xvfb.
set -euo pipefail
[ $# -ge 2 ] || { sed -n 's/^# usage: /usage: /p' "$0" >&2; exit 2; }
build=$(realpath "$1") recording=$(realpath "$2") slots=${3:-4}
out=$PWD/out/wsjtx
for program in wsjtx pulseaudio Xvfb; do
    command -v $program >/dev/null || { echo "$program is not installed" >&2; exit 2; }
done
slot=15        # seconds
dial=14074000  # Hz
lead=1.7       # seconds from its start until the window plays what it receives
port=4532

folder=$(mktemp -d)
pids=()
finish() {
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
    wait 2>/dev/null || true
    rm -rf "$folder"
}
trap finish EXIT

export HOME=$folder XDG_CONFIG_HOME=$folder/config XDG_DATA_HOME=$folder/data
export XDG_CACHE_HOME=$folder/cache XDG_RUNTIME_DIR=$folder/run PULSE_SERVER=unix:$folder/pulse
mkdir -p "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME"
mkdir -m 700 "$XDG_RUNTIME_DIR"
cat >"$folder/sound" <<END
load-module module-native-protocol-unix socket=$folder/pulse auth-anonymous=1
load-module module-null-sink sink_name=radio rate=48000
set-default-sink radio
set-default-source radio.monitor
END
pulseaudio --daemonize=no -n -F "$folder/sound" --exit-idle-time=-1 >"$folder/sound.log" 2>&1 &
pids+=($!)
Xvfb -displayfd 3 -screen 0 1600x1000x24 3>"$folder/display" >/dev/null 2>&1 &
pids+=($!)
for _ in $(seq 50); do
    [ -s "$folder/display" ] && [ -S "$folder/pulse" ] && break
    sleep 0.2
done
DISPLAY=:$(cat "$folder/display")
export DISPLAY

cp "$recording" "$folder/slot.wav"
cat >"$folder/ft8.band" <<END
band centre=14.075M noise=-125
station frequency=$dial mode=usb level=-50 audio=slot.wav pause=0
END
cat >"$folder/settings.ini" <<END
[Window]
welcomed=true
END
# BinsPerPixel: it decodes what its waterfall shows.
cat >"$XDG_CONFIG_HOME/WSJT-X.ini" <<END
[Configuration]
MyCall=ZN1RX
MyGrid=JO62
Rig=Hamlib NET rigctl
CATNetworkPort=127.0.0.1:$port
Polling=1
SoundInName=radio.monitor
AudioInputChannel=Mono
MonitorLastUsed=true

[Common]
Mode=FT8
DialFreq=$dial
NDepth=3

[WideGraph]
BinsPerPixel=7
END

now=$(date +%s.%N)
sleep "$(awk -v now="$now" -v slot=$slot -v lead=$lead \
    'BEGIN { d = slot - (now + lead) % slot; print d }')"
"$build/host/velmora-host" --settings "$folder/settings.ini" --scene "$folder/ft8.band" --rate 48k \
    --tune 14.07M --mode USB --filter 100:3500 --rig-port $port >"$folder/host.log" 2>&1 &
pids+=($!)
wsjtx >"$folder/wsjtx.log" 2>&1 &
pids+=($!)
echo "Receiving $slots slots ..."
sleep $(((slots + 2) * slot + 12)) # and the time to decode the last one

mkdir -p "$out"
messages=$XDG_DATA_HOME/WSJT-X/ALL.TXT
[ -f "$messages" ] || { echo "nothing was decoded" >&2; cat "$folder/host.log" >&2; exit 1; }
cp "$messages" "$out/messages.txt"
command -v import >/dev/null && import -window root "$out/desktop.png"
cut -d' ' -f1 "$out/messages.txt" | sort | uniq -c | awk '{ print $2 ": " $1 " messages" }' \
    | tee "$out/slots.txt"
[ "$(wc -l <"$out/slots.txt")" -ge "$slots" ]
