// SPDX-License-Identifier: GPL-3.0-or-later
#include "d2xx/usb/Chip.h"

namespace d2xx
{
namespace
{
constexpr Chip kChips[] = {
    {0x6014, "FT232H", 1, 15},
    {0x6010, "FT2232H", 2, 12},
};
} // namespace

const Chip *Chip::find(std::uint16_t vendorId, std::uint16_t productId)
{
    for (const Chip &chip : kChips) {
        if (vendorId == kVendorId && productId == chip.productId)
            return &chip;
    }
    return nullptr;
}
} // namespace d2xx
