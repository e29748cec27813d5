#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs the static checks of .clang-tidy over all headers of the product, where its templates and
# inline functions are. They are read as two sources, for the checker spends nearly all of its time
# on the headers of the libraries below.
# usage: check-tidy.sh FOLDER     FOLDER: for the two sources
set -euo pipefail
[ $# -eq 1 ] || { echo "usage: $0 FOLDER" >&2; exit 2; }
folder=$1

mkdir -p "$folder"
root=$PWD
includes() {
    git ls-files "$@" | sed "s|.*|#include \"$root/&\"|"
}
includes 'libs/*.h' 'plugins/*.h' 'host/*.h' >"$folder/receiver.cpp"
includes 'virtual_receiver/*.h' >"$folder/virtual_receiver.cpp"

read -ra libraries <<<"$(pkg-config --cflags Qt5Widgets Qt5Network Qt5Multimedia spdlog \
    samplerate sndfile libevdev libusb-1.0)"
status=0
for name in receiver virtual_receiver; do
    clang-tidy --quiet --warnings-as-errors='*' "$folder/$name.cpp" -- -std=c++20 \
        -I "$root" -I "$root/libs" -I "$root/plugins/device/ZephrinNano/source" -I "$root/host" \
        -I "$root/virtual_receiver" -fPIC "${libraries[@]}" || status=1
done
exit $status
