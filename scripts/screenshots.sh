#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Draws every tab of the options page and the device menu, without a display.
# usage: screenshots.sh BUILD [OUT]     OUT: default docs/screenshots
set -euo pipefail
[ $# -ge 1 ] || { echo "usage: $0 BUILD [OUT]" >&2; exit 2; }
build=$1
out=${2:-docs/screenshots}

mkdir -p "$out"
"$build/tools/options_screenshots" "$out"
