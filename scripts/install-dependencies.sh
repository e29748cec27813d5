#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs the Debian 12 packages that a task needs. Does nothing, and needs no privileges, when all
# of them are there.
# usage: install-dependencies.sh run|test|usb|deb|bench|fuzz|clang|check
set -euo pipefail
task=${1:-}

# Building the product and running it.
packages=(
    g++ cmake ninja-build ccache pkg-config
    qtbase5-dev libmsgsl-dev libspdlog-dev libfmt-dev
    libfftw3-dev libsndfile1-dev libusb-1.0-0-dev
    qttools5-dev-tools qttranslations5-l10n # other languages: ours, those of Qt's own buttons
    qtmultimedia5-dev libqt5multimedia5-plugins # sound cards, by sound server or ALSA
    libsamplerate0-dev
    libevdev-dev libxtst-dev # control panels: their events, keystrokes to the desktop
    fonts-dejavu-core # letters in the pictures
    alsa-utils # its speech samples are the voices of the built-in scene
)
case $task in
run) ;;
test)
    packages+=(libgtest-dev libgmock-dev
        libhamlib-utils # rigctl, a client of rig control
        xvfb            # a desktop to send keystrokes to
        udev umockdev)  # reads the rule for a receiver that is made up
    ;;
usb) packages+=(qemu-system-x86 busybox-static cpio kmod) ;;
deb) packages+=(dpkg-dev file lintian desktop-file-utils appstream) ;;
bench) packages+=(libbenchmark-dev) ;;
fuzz) packages+=(clang-14 libclang-rt-14-dev libgtest-dev libgmock-dev) ;;
clang) packages+=(clang-14 libbenchmark-dev) ;; # its preset builds everything
check) packages+=(clang-format clang-tidy) ;;
*)
    echo "usage: $0 run|test|usb|deb|bench|fuzz|clang|check" >&2
    exit 2
    ;;
esac

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Run as root: apt-get install ${missing[*]}" >&2; exit 1; }
    as_root=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -q
"${as_root[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
