#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Sets the receiver beside others on one signal and prints the ratios of CPU time, one row a line.
# usage: compare-peers.sh PEERS BUILD [ROW]     ROW: only rows whose name contains it
# PEERS is the folder of the measuring stands (compare.py, receiver/run.sh and what they need).
# ROUNDS: counted rounds of each comparison (7). BENCH_CPU: core to measure on (1).
set -euo pipefail
[ $# -ge 2 ] || { echo "usage: $0 PEERS BUILD [ROW]" >&2; exit 2; }
peers=$(realpath "$1")
product=$(realpath "$2")/bench/peer/bench_peer
only=${3:-}
[ -x "$product" ] || { echo "no $product; make bench builds it" >&2; exit 1; }

export BUILD
BUILD=$(realpath "$2")/bench/peer/others
mkdir -p "$BUILD"
MODES=' ' "$peers/receiver/run.sh" # builds; no mode, no run
radio="GR_BUF=0 $BUILD/rx_gnuradio" # buffers of its own choice
big="GR_BUF=65536 $BUILD/rx_gnuradio"
liquid="$BUILD/rx_liquid"

# name of the row | goal | options of the product | other receiver
rows=(
    "SSB 192 kHz, spectrum|0.85|--mode ssb --rate 192000 --spectrum 60|$big ssb 192000 2 rot 20 60"
    "SSB 3.072 MHz, spectrum|0.9|--mode ssb --rate 3072000 --spectrum 60|$big ssb 3072000 2 xlat 4 60"
    "SSB 192 kHz|0.25|--mode ssb --rate 192000|$liquid ssb 192000 2 one"
    "AM 192 kHz|0.85|--mode am --rate 192000|$radio am 192000 2 rot"
    "NFM 192 kHz|1.0|--mode nfm --rate 192000|$radio nfm 192000 2 rot"
    "WFM 192 kHz|0.75|--mode wfm --rate 192000|$radio wfm 192000 1 tuned"
    "AM 192 kHz, big buffers|-|--mode am --rate 192000|$big am 192000 2 rot"
    "NFM 192 kHz, big buffers|-|--mode nfm --rate 192000|$big nfm 192000 2 rot"
    "WFM 192 kHz, big buffers|-|--mode wfm --rate 192000|$big wfm 192000 1 tuned"
    "3.072 MHz, 8000 taps to 1570|1.2|--mode ssb --rate 3072000 --taps 8000|$product --sigtool $BUILD/sigtool --mode ssb --rate 3072000"
)

printf '%-30s %6s %8s %17s   %s\n' row goal ratio spread 'CPU s per s of IQ, ours and theirs'
for row in "${rows[@]}"; do
    IFS='|' read -r name goal options other <<<"$row"
    [[ $name == *"$only"* ]] || continue
    "$peers/compare.py" -n "${ROUNDS:-7}" "$product --sigtool $BUILD/sigtool $options" "$other" |
        python3 -c '
import json, sys
ours, theirs = (json.loads(line) for line in sys.stdin)
ratio = theirs["product_over_this"]
print("%-30s %6s %8.3f %8.3f..%-7.3f   %.5f %.5f" % (sys.argv[1], sys.argv[2], ratio["median"],
      ratio["min"], ratio["max"], ours["cpu_per_iq_s"]["median"], theirs["cpu_per_iq_s"]["median"]))
' "$name" "$goal"
done
