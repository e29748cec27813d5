#!/bin/busybox sh
# SPDX-License-Identifier: GPL-3.0-or-later
# First process of the virtual machine: the host's files read-only, with folders of its own to write
# to, then the tests.
/bin/busybox mkdir -p /proc /sys /dev /root
/bin/busybox mount -t proc proc /proc
/bin/busybox mount -t sysfs sys /sys
/bin/busybox mount -t devtmpfs dev /dev
while read -r module; do
    /bin/busybox insmod "/modules/$module" || echo "no module $module"
done </modules/order
/bin/busybox mount -t 9p -o trans=virtio,version=9p2000.L,msize=262144,ro host /root || echo "no files"
for folder in proc sys dev; do
    /bin/busybox mount -o bind /$folder /root/$folder
done
for folder in tmp run root; do
    /bin/busybox mount -t tmpfs tmpfs /root/$folder
done
# shellcheck disable=SC1091
. /settings
/bin/busybox chroot /root /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root \
    LC_ALL=C.UTF-8 SECONDS_OF_STREAM="$SECONDS_OF_STREAM" /bin/bash "$TESTS/in-guest.sh" "$BUILD"
echo "USB TESTS ENDED $?"
/bin/busybox poweroff -f
