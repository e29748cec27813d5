#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The plugin finds every FT_ function it needs in each library, under the same soname; so a library
# can take another's place without a rebuild.
# usage: same-symbols.sh NM PLUGIN LIBRARY...
set -euo pipefail
[ $# -ge 3 ] || { echo "usage: $0 NM PLUGIN LIBRARY..." >&2; exit 2; }
nm=$1
plugin=$2
shift 2

needed=$("$nm" -D --undefined-only "$plugin" | awk '$2 ~ /^FT_/ { print $2 }' | sort)
[ "$(wc -l <<<"$needed")" -ge 15 ] || { echo "the plugin needs only: $needed" >&2; exit 1; }
for library in "$@"; do
    has=$("$nm" -D --defined-only "$library" | awk '$3 ~ /^FT_/ { print $3 }' | sort)
    if ! diff <(echo "$needed") <(echo "$has") >&2; then
        echo "$library: not the functions that the plugin needs" >&2
        exit 1
    fi
    soname=$(readelf -dW "$library" | sed -n 's/.*SONAME.*\[\(.*\)\]$/\1/p')
    [ "$soname" = libftd2xx.so ] || { echo "$library: soname [$soname]" >&2; exit 1; }
done
