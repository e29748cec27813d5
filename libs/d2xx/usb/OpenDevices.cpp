// SPDX-License-Identifier: GPL-3.0-or-later
#include "d2xx/usb/OpenDevices.h"

#include <algorithm>

namespace d2xx
{
namespace
{
constexpr std::size_t kTextBytes = 64; // of FT_ListDevices, with its end
}

OpenDevices &OpenDevices::instance()
{
    // Never destroyed: threads of a plugin may still call when the process ends.
    static OpenDevices &devices = *new OpenDevices;
    return devices;
}

FT_STATUS OpenDevices::scan(bool anew)
{
    if (!m_list)
        m_list = std::make_unique<DeviceList>();
    if (m_scanned && !anew)
        return FT_OK;
    const FT_STATUS status = m_list->scan();
    m_scanned = m_scanned || status == FT_OK;
    return status;
}

FT_STATUS OpenDevices::count(DWORD *number)
{
    if (!number)
        return FT_INVALID_PARAMETER;
    const std::lock_guard lock(m_listMutex);
    const FT_STATUS status = scan(true);
    *number = status == FT_OK ? DWORD(m_list->entries().size()) : 0;
    return status;
}

FT_STATUS OpenDevices::string(DWORD index, DWORD which, char *text)
{
    if (!text)
        return FT_INVALID_PARAMETER;
    const std::lock_guard lock(m_listMutex);
    if (const FT_STATUS status = scan(false))
        return status;
    if (index >= m_list->entries().size())
        return FT_DEVICE_NOT_FOUND;
    const DeviceEntry &entry = m_list->entries()[index];
    const std::string &from = which == FT_OPEN_BY_DESCRIPTION ? entry.description : entry.serial;
    const std::size_t length = std::min(from.size(), kTextBytes - 1);
    std::copy_n(from.begin(), length, text);
    text[length] = '\0';
    return FT_OK;
}

FT_STATUS OpenDevices::open(int index, FT_HANDLE *handle)
{
    if (!handle)
        return FT_INVALID_PARAMETER;
    *handle = nullptr;
    DeviceEntry entry;
    {
        const std::lock_guard lock(m_listMutex);
        if (const FT_STATUS status = scan(false))
            return status;
        if (index < 0 || std::size_t(index) >= m_list->entries().size())
            return FT_DEVICE_NOT_FOUND;
        entry = m_list->entries()[std::size_t(index)];
    }
    FT_STATUS status = FT_OK;
    std::shared_ptr<UsbDevice> device = UsbDevice::open(entry, &status);
    if (!device)
        return status;
    *handle = device.get();
    const std::lock_guard lock(m_handleMutex);
    m_devices[*handle] = std::move(device);
    return FT_OK;
}

FT_STATUS OpenDevices::close(FT_HANDLE handle)
{
    std::shared_ptr<UsbDevice> device;
    {
        const std::lock_guard lock(m_handleMutex);
        const auto found = m_devices.find(handle);
        if (found == m_devices.end())
            return FT_INVALID_HANDLE;
        device = std::move(found->second);
        m_devices.erase(found);
    }
    device->close();
    return FT_OK;
}

std::shared_ptr<UsbDevice> OpenDevices::find(FT_HANDLE handle)
{
    const std::lock_guard lock(m_handleMutex);
    const auto found = m_devices.find(handle);
    return found == m_devices.end() ? nullptr : found->second;
}
} // namespace d2xx
