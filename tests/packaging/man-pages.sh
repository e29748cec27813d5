#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Each page of the manual has the options that its program's help has, and no others.
# usage: man-pages.sh FOLDER_OF_PAGES PROGRAM...
set -euo pipefail
[ $# -ge 2 ] || { echo "usage: $0 FOLDER_OF_PAGES PROGRAM..." >&2; exit 2; }
pages=$1
shift

options() { grep -o -E -- '--[a-z][a-z0-9-]*' | sort -u; }
for program in "$@"; do
    page=$pages/$(basename "$program").1.gz
    # The first words of each entry; "\-" is a hyphen that can be copied.
    told=$(gzip -dc "$page" | sed 's/\\-/-/g' | grep -A1 -x '\.TP' | options)
    help=$(QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=0 "$program" --help | grep -E '^ *(-[a-z], |usage: .*)?(--|.*\[--)|^ .*ftd2xx-info --' | options)
    if ! diff <(echo "$help") <(echo "$told") >&2; then
        echo "$page: not the options of $program --help" >&2
        exit 1
    fi
done
