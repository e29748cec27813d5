// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/DeviceKind.h"

#include <algorithm>

namespace host
{
const std::vector<DeviceKind> &deviceKinds()
{
    static const std::vector<DeviceKind> kKinds = {
        {"virtual", QT_TRANSLATE_NOOP("host::DeviceKind", "&Virtual receiver"),
            {HOST_LIBRARY_FOLDER "/virtual/libftd2xx.so", "../virtual_receiver/libftd2xx.so"},
            false},
        {"usb", QT_TRANSLATE_NOOP("host::DeviceKind", "Receiver on the &USB"),
            {HOST_LIBRARY_FOLDER "/usb/libftd2xx.so", "../libs/d2xx/usb/libftd2xx.so"}, true},
    };
    return kKinds;
}

const DeviceKind *findDeviceKind(const QString &key)
{
    const auto &kinds = deviceKinds();
    const auto found = std::ranges::find(kinds, key, &DeviceKind::key);
    return found == kinds.end() ? nullptr : &*found;
}
} // namespace host
