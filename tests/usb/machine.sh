#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# To be read by the scripts beside it: a virtual machine with Debian's kernel and its virtual USB
# controller, into which an emulated receiver is plugged. Needs no root.

# prepare_machine TESTS WORK COMMAND...: an image in WORK whose first process runs the command.
prepare_machine() {
    local tests=$1 work=$2
    shift 2
    mkdir -p "$work/out"
    cd "$work" || return

    # The kernel is taken out of its package, not installed.
    local package
    package=$(apt-cache depends linux-image-amd64 \
        | sed -n 's/.*Depends: \(linux-image-[^ ]*\)$/\1/p' | head -1)
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
    local words
    words=$(printf '%q ' "$@")
    printf 'COMMAND=%q\n' "$words" >image/settings
    local module
    for module in virtio_pci 9pnet_virtio 9p vhci-hcd ftdi_sio; do
        PATH=$PATH:/usr/sbin modprobe -d "$PWD/kernel" -S "$version" --show-depends "$module"
    done | awk '$1 == "insmod" && !seen[$2]++ { print $2 }' | while read -r file; do
        cp "$file" image/modules/
        basename "$file" >>image/modules/order
    done
    (cd image && find . | cpio -o -H newc --quiet) | gzip -1 >image.gz
}

# start_machine SECONDS QEMU_OPTION...: what it says goes to standard output and the file log; false
# if the command in it failed or it took longer. /mnt in it is the folder out.
start_machine() {
    local seconds=$1
    shift
    timeout "$seconds" qemu-system-x86_64 "$@" -cpu max -m 1024 -nographic -no-reboot \
        -kernel "kernel/boot/vmlinuz-$version" -initrd image.gz \
        -append "console=ttyS0 quiet panic=-1" \
        -virtfs local,path=/,mount_tag=host,security_model=none,readonly=on,multidevs=remap \
        -virtfs "local,path=$PWD/out,mount_tag=out,security_model=none" \
        </dev/null 2>&1 | tee log | tr -d '\r'
    grep -q "THE MACHINE ENDED 0" log
}
