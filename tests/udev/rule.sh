#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Asks the system's own udev what the packaged rule does to devices that are made up: the receiver
# gets the tag of whoever sits at the computer, other devices with its chip do not. The rule stands
# alone in a mount namespace of its own, so nothing of the machine counts and nothing there changes.
# usage: rule.sh RULES        exit status 77: this machine cannot run the test
set -euo pipefail
[ $# -eq 1 ] || { echo "usage: $0 RULES" >&2; exit 2; }
rules=$1

skip() { echo "skipped: $*"; exit 77; }
PATH=$PATH:/usr/sbin:/sbin
command -v umockdev-run >/dev/null || skip "no umockdev"
command -v udevadm >/dev/null || skip "no udevadm"
if [ -z "${IN_NAMESPACE:-}" ]; then
    as_root=(unshare --mount)
    [ "$(id -u)" -eq 0 ] || as_root=(unshare --map-root-user --mount)
    # A container without /run/udev and without the right to make it cannot hold the rules.
    "${as_root[@]}" sh -c '[ -d /run/udev ] || mkdir /run/udev; mount -t tmpfs none /run/udev' \
        2>/dev/null || skip "no mount namespaces, or no /run/udev to mount on"
    IN_NAMESPACE=yes exec "${as_root[@]}" "$0" "$rules"
fi

# The system turns the tag into a permission in rules numbered 73.
[[ $(basename "$rules") < 73 ]] || { echo "$rules comes too late" >&2; exit 1; }

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mount -t tmpfs none /run/udev
mkdir /run/udev/rules.d
for others in /usr/lib/udev/rules.d /lib/udev/rules.d /etc/udev/rules.d; do
    [ ! -d $others ] || mount -t tmpfs none $others
done
cp "$rules" /run/udev/rules.d/
device=/devices/pci0000:00/0000:00:14.0/usb1/1-2

# vendor, product, product string, type of the device, action, whether it gets the tag
failed=0
while IFS='|' read -r vendor product name type action tag; do
    cat >"$scratch/mock" <<END
P: $device
N: bus/usb/001/005
E: DEVTYPE=$type
E: SUBSYSTEM=usb
E: DEVNAME=/dev/bus/usb/001/005
A: idVendor=$vendor\n
A: idProduct=$product\n
A: product=$name\n

END
    rm -rf /run/udev/data # what udev remembers of the row before
    told=$(umockdev-run -d "$scratch/mock" -- udevadm test --action="$action" "/sys$device" 2>&1)
    # udev names the file and line of a rule that it does not understand.
    if grep -F "$(basename "$rules"):" <<<"$told"; then failed=1; fi
    found=$(grep -q '^CURRENT_TAGS=.*:uaccess:' <<<"$told" && echo yes || echo no)
    if [ "$found" != "$tag" ]; then
        echo "$vendor:$product \"$name\" $type $action: $found, expected $tag" >&2
        failed=1
    fi
done <<'END'
0403|6014|ZephrinNANO|usb_device|add|yes
0403|6010|ZephrinNANO B|usb_device|add|yes
0403|6014|Radio zephrinnano 2|usb_device|change|yes
0403|6014|Serial adapter|usb_device|add|no
0403|6001|ZephrinNANO|usb_device|add|no
0404|6014|ZephrinNANO|usb_device|add|no
0403|6014|ZephrinNANO|usb_interface|add|no
END
exit $failed
