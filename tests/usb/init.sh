#!/bin/busybox sh
# SPDX-License-Identifier: GPL-3.0-or-later
# First process of the virtual machine: the host's files read-only, with folders of its own to write
# to and one that is kept, then the command.
/bin/busybox mkdir -p /proc /sys /dev /root
/bin/busybox mount -t proc proc /proc
/bin/busybox mount -t sysfs sys /sys
/bin/busybox mount -t devtmpfs dev /dev
while read -r module; do
    /bin/busybox insmod "/modules/$module" || echo "no module $module"
done </modules/order
files() { /bin/busybox mount -t 9p -o "trans=virtio,version=9p2000.L,msize=262144,$3" "$1" "$2"; }
files host /root ro || echo "no files"
files out /root/mnt rw || echo "no folder to write to"
for folder in proc sys dev; do
    /bin/busybox mount -o bind /$folder /root/$folder
done
for folder in tmp run root; do
    /bin/busybox mount -t tmpfs tmpfs /root/$folder
done
# shellcheck disable=SC1091
. /settings
/bin/busybox chroot /root /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root \
    LC_ALL=C.UTF-8 /bin/bash -c "$COMMAND"
echo "THE MACHINE ENDED $?"
/bin/busybox poweroff -f
