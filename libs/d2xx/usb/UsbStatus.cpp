// SPDX-License-Identifier: GPL-3.0-or-later
#include "d2xx/usb/UsbStatus.h"

#include <libusb-1.0/libusb.h>

#include <array>
#include <cstdarg>
#include <cstdio>

namespace d2xx
{
FT_STATUS statusOf(int usbError)
{
    switch (usbError) {
    case LIBUSB_SUCCESS:
        return FT_OK;
    case LIBUSB_ERROR_NOT_FOUND:
        return FT_DEVICE_NOT_FOUND;
    case LIBUSB_ERROR_ACCESS:
    case LIBUSB_ERROR_BUSY:
        return FT_DEVICE_NOT_OPENED;
    case LIBUSB_ERROR_NO_MEM:
        return FT_INSUFFICIENT_RESOURCES;
    case LIBUSB_ERROR_INVALID_PARAM:
        return FT_INVALID_PARAMETER;
    case LIBUSB_ERROR_NOT_SUPPORTED:
        return FT_NOT_SUPPORTED;
    default:
        return FT_IO_ERROR;
    }
}

void complain(const char *format, ...)
{
    std::array<char, 512> text;
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    // One call, so that lines of two threads do not mix.
    std::fprintf(stderr, "libftd2xx: %s\n", text.data());
}
} // namespace d2xx
