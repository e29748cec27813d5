#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs the fuzzers one after the other and tells of each how many inputs it tried and what it found.
# What it learned stays in BUILD/corpus and what it found in BUILD/findings; the next run goes on from
# there. Status 1 if something was found.
# usage: run.sh BUILD MINUTES [NAME...]
set -euo pipefail
build=$(cd "$1" && pwd)
minutes=$2
shift 2
here=$(cd "$(dirname "$0")" && pwd)
[ $# -gt 0 ] || set -- $(cd "$build/tests/fuzz" && ls -d fuzz_* | sed 's/^fuzz_//')

# Allocations take a third of an execution if each is painted and its callers are kept.
export ASAN_OPTIONS=max_malloc_fill_size=0:malloc_context_size=8:quarantine_size_mb=16
status=0
printf '%-14s %14s %10s %9s\n' fuzzer executions 'in a second' findings
for name; do
    corpus=$build/corpus/$name
    findings=$build/findings/$name
    mkdir -p "$corpus" "$findings"
    inputs=("$corpus")
    for folder in "$here/seeds/$name" "$here/findings/$name"; do
        [ ! -d "$folder" ] || inputs+=("$folder")
    done
    # An input that takes a minute or 1 GB is a finding as well. Standard error of the program itself
    # (messages to a person) is dropped, reports of the sanitizers are not.
    "$build/tests/fuzz/fuzz_$name" -max_total_time="$(awk "BEGIN { print int($minutes * 60) }")" \
        -timeout=60 -rss_limit_mb=1024 -max_len=1024 -close_fd_mask=3 -print_final_stats=1 \
        -artifact_prefix="$findings/" "${inputs[@]}" >"$build/findings/$name.log" 2>&1 || status=1
    executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$build/findings/$name.log")
    speed=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$build/findings/$name.log")
    printf '%-14s %14s %10s %9s\n' "$name" "${executions:-?}" "${speed:-?}" \
        "$(find "$findings" -type f | wc -l)"
done
[ $status -eq 0 ] || echo "Reports and inputs: $build/findings" >&2
exit $status
