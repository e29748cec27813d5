#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs the static checks of .clang-tidy, all of which hold, over the sources of the product. Only
# what is generated is built first.
# usage: check-tidy.sh BUILD JOBS
set -euo pipefail
[ $# -eq 2 ] || { echo "usage: $0 BUILD JOBS" >&2; exit 2; }
build=$1
jobs=$2

# What moc and uic make of the headers.
mapfile -t generated < <(ninja -C "$build" -t targets all | sed -n 's/^\([A-Za-z0-9_]*_autogen\): .*/\1/p' |
    grep -v '^test_\|^bench_')
cmake --build "$build" -j "$jobs" --target "${generated[@]}" >/dev/null

# The checker is another compiler and does not read the headers that this one has precompiled.
mkdir -p "$build/tidy"
sed -E 's/-include [^ ]*cmake_pch\.hxx|-Winvalid-pch|-fpch-preprocess//g' \
    "$build/compile_commands.json" >"$build/tidy/compile_commands.json"
git ls-files 'libs/*.cpp' 'plugins/*.cpp' 'host/*.cpp' 'virtual_receiver/*.cpp' |
    xargs -P "$jobs" -n 4 clang-tidy -p "$build/tidy" --quiet --warnings-as-errors='*' 2>/dev/null
