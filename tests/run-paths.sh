#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Reads the dynamic section of every program and library of a build tree and of its installation. An
# entry of a run path that is empty or relative means the current folder of whoever runs it, so a
# library planted there would be loaded. What is installed, and the plugin in the build tree, which
# hosts load from there, need no run path at all.
# usage: run-paths.sh READELF CMAKE BUILD
set -euo pipefail
[ $# -eq 3 ] || { echo "usage: $0 READELF CMAKE BUILD" >&2; exit 2; }
readelf=$1
cmake=$2
build=$3

installed=$(mktemp -d)
trap 'rm -rf "$installed"' EXIT
"$cmake" --install "$build" --prefix "$installed" >/dev/null

libraries=0
wrong=0
while IFS= read -r -d '' file; do
    dynamic=$("$readelf" -dW "$file" 2>/dev/null || true)
    [[ $dynamic == *"(NEEDED)"* ]] || continue
    bare=
    case $file in
        "$installed"/*.so | */libZephrinNano.so) bare=yes libraries=$((libraries + 1)) ;;
        "$installed"/*) bare=yes ;;
    esac
    while IFS= read -r path; do
        # A colon at either end, so that an empty entry shows as two in a row.
        if [ -n "$bare" ] || [[ ":$path:" =~ ::|:[^/:] ]]; then
            echo "$file: run path [$path]" >&2
            wrong=1
        fi
    done < <(sed -n 's/.*(R\(UN\)\?PATH).*\[\(.*\)\]$/\2/p' <<<"$dynamic")
done < <(find "$build" "$installed" -type f \( -name '*.so' -o -perm -u+x \) -print0)

[ "$libraries" -ge 4 ] || { echo "only $libraries libraries seen of 4" >&2; exit 1; }
exit $wrong
