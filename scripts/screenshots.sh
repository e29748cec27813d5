#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Draws the pictures of the documentation anew, without a display: every tab of the options page and
# the device menu, and the window as the guide shows it.
# usage: screenshots.sh BUILD [DOCS]     DOCS: default docs
# Needs the targets options_screenshots and window_screenshots, and pngquant.
set -euo pipefail
[ $# -ge 1 ] || { echo "usage: $0 BUILD [DOCS]" >&2; exit 2; }
build=$1
docs=${2:-docs}
command -v pngquant >/dev/null || { echo "pngquant is not installed" >&2; exit 2; }
export QT_FONT_DPI=96
most=400000 # bytes of a picture

mkdir -p "$docs/screenshots" "$docs/guide"
"$build/tools/options_screenshots" "$docs/screenshots"

# As many colours as fit; the noise of a waterfall does not come smaller without loss.
squeeze() {
    local colours
    for colours in 256 128 64 32 16; do
        pngquant --force --strip --nofs --speed 1 --output "$1.small" $colours "$1"
        [ "$(stat -c %s "$1.small")" -le $most ] && break
    done
    mv "$1.small" "$1"
}

# scale, file, width, height, colours, seconds, what
picture() {
    local file="$docs/guide/$2"
    QT_SCALE_FACTOR=$1 "$build/tools/window_screenshots" "$file" "${@:3}" 2>/dev/null \
        || { echo "cannot draw $file" >&2; exit 1; }
    squeeze "$file"
    echo "$file: $(stat -c %s "$file") bytes"
}
picture 1 dark.png 1280 800 dark 14
picture 1 light-small.png 1024 700 light 14
picture 1.5 large.png 1280 800 light 14
picture 2 first-start-2x.png 1280 800 dark 12 first
picture 1 keys-and-knobs.png 1280 800 dark 1 panel
