// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

struct libusb_context;

namespace d2xx
{
/// A session of libusb of one's own, so that the events of one open device are nobody else's.
class UsbContext
{
public:
    UsbContext();
    ~UsbContext();
    UsbContext(const UsbContext &) = delete;
    UsbContext &operator=(const UsbContext &) = delete;

    /// 0, or the negative LIBUSB_ERROR_ that kept it from opening; get() is null then.
    int error() const { return m_error; }
    libusb_context *get() const { return m_context; }

private:
    libusb_context *m_context = nullptr;
    int m_error = 0;
};
} // namespace d2xx
