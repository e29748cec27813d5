// SPDX-License-Identifier: GPL-3.0-or-later
#include "d2xx/usb/UsbContext.h"

#include <libusb-1.0/libusb.h>

namespace d2xx
{
UsbContext::UsbContext() : m_error(libusb_init(&m_context))
{
    if (m_error < 0)
        m_context = nullptr;
}

UsbContext::~UsbContext()
{
    if (m_context)
        libusb_exit(m_context);
}
} // namespace d2xx
