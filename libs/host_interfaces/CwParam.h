// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>
#include <array>

namespace SDR
{
/// The host's settings of the Morse keyer, carried by value between it and a device.
///
/// A receiver passes the record on and looks at no field, so the fields have places, not names:
/// thirteen 16-bit words and one byte, at the host's defaults.
struct CwParam
{
    std::array<quint16, 13> words = {30, 30, 100, 0, 10, 700, 100, 300, 100, 300, 7, 0, 1};
    quint8 last = 0;

    friend bool operator==(const CwParam &, const CwParam &) = default;
};
} // namespace SDR
