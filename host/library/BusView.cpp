// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/BusView.h"

namespace host
{
QString BusView::reason() const
{
    if (status != FT_OK)
        return tr("The USB cannot be looked at (status %1 of the library): is /dev/bus/usb there?")
            .arg(status);
    if (nameless > 0)
        return tr("There is a device with a receiver's chip on the USB that you may not open: "
                  "copy 72-zephrin-nano.rules to /etc/udev/rules.d, run \"udevadm control "
                  "--reload\" as root, and plug the receiver in again.");
    if (devices > 0)
        return tr("Of the devices with a receiver's chip on the USB none is called ZephrinNano: "
                  "plug the receiver in.");
    return tr("There is no receiver on the USB: plug it in.");
}
} // namespace host
