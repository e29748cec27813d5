// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "d2xx/usb/DeviceList.h"
#include "d2xx/usb/UsbDevice.h"

#include <map>
#include <memory>
#include <mutex>

namespace d2xx
{
/// The device list and the handles of this process.
///
/// Any thread. A device stays whole until the last call on its handle has returned, also when
/// another thread closes the handle meanwhile.
class OpenDevices
{
public:
    static OpenDevices &instance();

    FT_STATUS count(DWORD *number);

    /// Serial number or description, cut to 63 bytes.
    FT_STATUS string(DWORD index, DWORD which, char *text);
    FT_STATUS open(int index, FT_HANDLE *handle);
    FT_STATUS close(FT_HANDLE handle);

    /// Null for a handle that is not open.
    std::shared_ptr<UsbDevice> find(FT_HANDLE handle);

private:
    std::mutex m_listMutex;
    std::unique_ptr<DeviceList> m_list; // made at the first call: no bus is touched by loading
    bool m_scanned = false;
    std::mutex m_handleMutex;
    std::map<FT_HANDLE, std::shared_ptr<UsbDevice>> m_devices;

    FT_STATUS scan(bool anew);
};
} // namespace d2xx
