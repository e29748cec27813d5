#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs all benchmarks of a build, keeps their results as JSON in BUILD/bench/ and prints one table.
# usage: bench.sh BUILD [SECONDS]     SECONDS: least time for each measurement, default 0.1
set -euo pipefail
[ $# -ge 1 ] || { echo "usage: $0 BUILD [SECONDS]" >&2; exit 2; }
build=$1
least=${2:-0.1}

# The whole road has a table of its own, and bench_peer wants to know what to be set beside.
mapfile -t programs < <(find "$build" -type f -name 'bench_*' ! -name bench_road \
    ! -name bench_peer -executable | sort)
[ ${#programs[@]} -gt 0 ] || { echo "no bench_* programs under $build; build first" >&2; exit 1; }

mkdir -p "$build/bench"
printf '%-52s %14s %16s\n' benchmark 'time (ns)' 'items/s'
for program in "${programs[@]}"; do
    name=$(basename "$program")
    echo "$name" >&2
    # The console keeps its own form; the table is made of the CSV, which has a fixed one.
    log="$build/bench/$name.log"
    "$program" --benchmark_min_time="$least" --benchmark_format=csv \
        --benchmark_out="$build/bench/$name.json" --benchmark_out_format=json 2>"$log" |
        awk -F, '/^"/ {
            gsub(/"/, "", $1)
            scale = $5 == "us" ? 1e3 : $5 == "ms" ? 1e6 : $5 == "s" ? 1e9 : 1
            printf "%-52s %14.0f %16s\n", $1, $3 * scale, $7 == "" ? "-" : sprintf("%.4g", $7)
        }' || { cat "$log" >&2; exit 1; }
done
echo
"$build/bench/road/bench_road" | tee "$build/bench/bench_road.txt"
echo
echo "Results: $build/bench/*.json and bench_road.txt"
cat <<END

The receiver beside others, where the measuring stands are at hand (PEERS, their folder):
    scripts/compare-peers.sh PEERS $build
One comparison by itself:
    PEERS/compare.py '$build/bench/peer/bench_peer --mode ssb --rate 192000 --sigtool SIGTOOL' \\
        'rx_liquid ssb 192000 2 one'
END
