#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Tests the provider on libusb against a real Linux USB stack without hardware: a virtual machine
# with Debian's kernel, whose virtual host controller an emulated receiver is plugged into. Needs no
# root; a few minutes.
# usage: run.sh BUILD [SECONDS_OF_STREAM]
set -euo pipefail
tests=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd)
seconds=${2:-60}
work=$build/usb-machine
mkdir -p "$work"
cd "$work"

# The kernel is taken out of its package, not installed.
package=$(apt-cache depends linux-image-amd64 | sed -n 's/.*Depends: \(linux-image-[^ ]*\)$/\1/p' | head -1)
version=${package#linux-image-}
if [ ! -e "kernel/boot/vmlinuz-$version" ]; then
    echo "Fetching $package"
    rm -rf kernel
    apt-get -qq download "$package"
    dpkg-deb -x "$package"_*.deb kernel
    rm -f "$package"_*.deb
    PATH=$PATH:/usr/sbin depmod -b kernel "$version"
fi

rm -rf image
mkdir -p image/bin image/modules
cp "$(command -v busybox)" image/bin/busybox
cp "$tests/init.sh" image/init
chmod +x image/init
printf 'TESTS=%q\nBUILD=%q\nSECONDS_OF_STREAM=%q\n' "$tests" "$build" "$seconds" >image/settings
for module in virtio_pci 9pnet_virtio 9p vhci-hcd ftdi_sio; do
    PATH=$PATH:/usr/sbin modprobe -d "$PWD/kernel" -S "$version" --show-depends "$module"
done | awk '$1 == "insmod" && !seen[$2]++ { print $2 }' | while read -r file; do
    cp "$file" image/modules/
    basename "$file" >>image/modules/order
done
(cd image && find . | cpio -o -H newc --quiet) | gzip -1 >image.gz

# A recording to play, and what the receiver records of it without any USB. No rate is converted and
# nothing mixed, so its samples do not depend on the sizes of the reads.
record() { # record FILE OPTION...
    local to=$1
    shift
    rm -rf recording
    mkdir recording
    QT_QPA_PLATFORM=offscreen "$build/host/velmora-host" --headless --rate 48000 --center 7.1M \
        --tune 7.102M --mode USB --free-run --record vsdr --record-path recording "$@" >/dev/null
    mv recording/*.wav "$to"
}
record scene.wav --seconds 12
record native.wav --scene scene.wav --seconds 11

echo "Starting the virtual machine"
timeout 1800 qemu-system-x86_64 -accel tcg,thread=multi -cpu max -smp 2 -m 1024 -nographic -no-reboot \
    -kernel "kernel/boot/vmlinuz-$version" -initrd image.gz \
    -append "console=ttyS0 quiet panic=-1" \
    -virtfs local,path=/,mount_tag=host,security_model=none,readonly=on \
    </dev/null 2>&1 | tee log | tr -d '\r'
grep -q "USB TESTS ENDED 0" log
