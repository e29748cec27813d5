// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "d2xx/ftd2xx.h"
#include "d2xx/usb/DeviceEntry.h"
#include "d2xx/usb/UsbContext.h"

#include <optional>
#include <set>
#include <vector>

struct libusb_device;
struct libusb_device_handle;

namespace d2xx
{
/// The ports of all chips on the buses of this computer.
///
/// Ordered by bus, way through the hubs and port, so the order is the same as long as nothing is
/// plugged. A device that may not be opened stays in the list without its strings; why, and what to
/// do, goes to standard error once for each device. Not thread-safe.
class DeviceList
{
public:
    DeviceList() = default;

    /// Looks at the buses anew. The list is as before if that fails.
    FT_STATUS scan();

    const std::vector<DeviceEntry> &entries() const { return m_entries; }

    /// The device of an entry in another session, opened; null with the error of libusb if it is
    /// not there any more or cannot be opened.
    static libusb_device_handle *open(
        libusb_context *context, const DeviceEntry &entry, int *usbError);

private:
    void addPorts(libusb_device *device, std::vector<DeviceEntry> &entries);

    std::optional<UsbContext> m_context; // made anew as long as that fails
    std::vector<DeviceEntry> m_entries;
    std::set<std::uint16_t> m_refused; // bus and address of those already complained about
};

/// What a person is told whose access to a device was refused.
void complainOfAccess(int bus, int address);
} // namespace d2xx
