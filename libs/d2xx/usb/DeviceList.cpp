// SPDX-License-Identifier: GPL-3.0-or-later
#include "d2xx/usb/DeviceList.h"

#include "d2xx/usb/Chip.h"
#include "d2xx/usb/UsbStatus.h"

#include <libusb-1.0/libusb.h>

#include <algorithm>
#include <memory>

namespace d2xx
{
namespace
{
/// All devices of a session, given back at the end.
class BusDevices
{
public:
    explicit BusDevices(libusb_context *context) : m_count(libusb_get_device_list(context, &m_list))
    { }
    ~BusDevices()
    {
        if (m_count >= 0)
            libusb_free_device_list(m_list, 1);
    }
    BusDevices(const BusDevices &) = delete;
    BusDevices &operator=(const BusDevices &) = delete;

    int error() const { return m_count < 0 ? int(m_count) : 0; }
    libusb_device **begin() const { return m_list; }
    libusb_device **end() const { return m_list + std::max<ssize_t>(m_count, 0); }

private:
    libusb_device **m_list = nullptr;
    ssize_t m_count;
};

DevicePlace placeOf(libusb_device *device)
{
    DevicePlace place;
    place.bus = libusb_get_bus_number(device);
    libusb_get_port_numbers(device, place.hubPorts.data(), int(place.hubPorts.size()));
    return place;
}

const Chip *chipOf(libusb_device *device)
{
    libusb_device_descriptor descriptor = {};
    if (libusb_get_device_descriptor(device, &descriptor) < 0)
        return nullptr;
    return Chip::find(descriptor.idVendor, descriptor.idProduct);
}

/// A string descriptor as UTF-8. The chips take any of its characters; those beyond one byte are
/// replaced by libusb.
std::string text(libusb_device_handle *handle, std::uint8_t index)
{
    std::array<unsigned char, 256> bytes;
    const int length =
        index ? libusb_get_string_descriptor_ascii(handle, index, bytes.data(), bytes.size()) : 0;
    return length > 0 ? std::string(bytes.begin(), bytes.begin() + length) : std::string();
}
} // namespace

void complainOfAccess(int bus, int address)
{
    complain("no permission for the USB device %03d:%03d; install 72-zephrin-nano.rules into "
             "/etc/udev/rules.d, run \"udevadm control --reload\" as root and plug the receiver "
             "in again",
        bus, address);
}

FT_STATUS DeviceList::scan()
{
    if (!m_context || m_context->error() < 0)
        m_context.emplace();
    if (m_context->error() < 0)
        return statusOf(m_context->error());
    const BusDevices devices(m_context->get());
    if (devices.error() < 0)
        return statusOf(devices.error());
    std::vector<DeviceEntry> entries;
    for (libusb_device *device : devices)
        addPorts(device, entries);
    std::ranges::sort(entries, {}, &DeviceEntry::place);
    m_entries = std::move(entries);
    return FT_OK;
}

void DeviceList::addPorts(libusb_device *device, std::vector<DeviceEntry> &entries)
{
    const Chip *chip = chipOf(device);
    if (!chip)
        return;
    DeviceEntry entry;
    entry.place = placeOf(device);
    entry.address = libusb_get_device_address(device);
    entry.chip = chip;

    const auto known = std::ranges::find_if(m_entries, [&](const DeviceEntry &e) {
        return e.place == entry.place && e.address == entry.address && e.chip == chip
            && !e.description.empty();
    });
    std::string serial;
    std::string description;
    if (known != m_entries.end()) {
        // The same device as before: its letters are cut off again, and it is not disturbed.
        const std::size_t letters = chip->ports > 1 ? 1 : 0;
        serial = known->serial.substr(0, known->serial.size() - letters);
        description = known->description.substr(0, known->description.size() - 2 * letters);
    } else {
        libusb_device_handle *handle = nullptr;
        const int error = libusb_open(device, &handle);
        if (error == LIBUSB_ERROR_NO_DEVICE)
            return;
        if (error == LIBUSB_ERROR_ACCESS
            && m_refused.insert(std::uint16_t(entry.place.bus << 8 | entry.address)).second)
            complainOfAccess(entry.place.bus, entry.address);
        if (error == LIBUSB_SUCCESS) {
            libusb_device_descriptor descriptor = {};
            libusb_get_device_descriptor(device, &descriptor);
            serial = text(handle, descriptor.iSerialNumber);
            description = text(handle, descriptor.iProduct);
            libusb_close(handle);
        }
    }
    for (int port = 0; port < chip->ports; ++port) {
        const char letter = char('A' + port);
        entry.place.port = port;
        entry.serial = serial;
        entry.description = description;
        if (chip->ports > 1 && !description.empty()) {
            entry.serial += letter;
            entry.description += {' ', letter};
        }
        entries.push_back(entry);
    }
}

libusb_device_handle *DeviceList::open(
    libusb_context *context, const DeviceEntry &entry, int *usbError)
{
    const BusDevices devices(context);
    *usbError = devices.error() < 0 ? devices.error() : LIBUSB_ERROR_NOT_FOUND;
    for (libusb_device *device : devices) {
        DevicePlace place = placeOf(device);
        place.port = entry.place.port;
        if (place != entry.place || chipOf(device) != entry.chip)
            continue;
        libusb_device_handle *handle = nullptr;
        *usbError = libusb_open(device, &handle);
        if (*usbError == LIBUSB_ERROR_ACCESS)
            complainOfAccess(place.bus, libusb_get_device_address(device));
        return *usbError == LIBUSB_SUCCESS ? handle : nullptr;
    }
    return nullptr;
}
} // namespace d2xx
