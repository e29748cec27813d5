// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "d2xx/ftd2xx.h"

namespace d2xx
{
/// The status that a caller of the FT_ functions gets for an error of libusb (0 or a negative
/// LIBUSB_ERROR_). Any thread.
FT_STATUS statusOf(int usbError);

/// One line to standard error, in front of it the name of this library: what a caller cannot be
/// told by a status. Any thread.
void complain(const char *format, ...) __attribute__((format(printf, 1, 2)));
} // namespace d2xx
