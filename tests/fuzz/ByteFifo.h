// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "d2xx/ftd2xx.h"

#include <cstdint>
#include <deque>
#include <vector>

namespace fuzz
{
/// The USB FIFO library as a string of bytes: the least that serves the driver, with no thread, no
/// clock and no lock. One per process; everything on one thread.
struct ByteFifo
{
    /// Thrown out of FT_Read when the bytes do not suffice any more: it ends the driver's loop,
    /// which otherwise runs until another thread stops it.
    struct End
    { };

    /// How a read ends that is not as it should be.
    struct Mishap
    {
        std::size_t read = 0;     ///< the number of the read, from 0
        FT_STATUS status = FT_OK; ///< of a failing read
        std::size_t received = 0; ///< of a torn read: so many at most
    };

    static ByteFifo &instance();

    /// Called by FT_Read with what is asked for, ahead of all else.
    void (*onRead)(const std::uint8_t *buffer, std::size_t size) = nullptr;

    std::vector<std::uint8_t> stream;
    std::size_t position = 0; ///< in the stream
    std::size_t reads = 0;
    std::deque<Mishap> mishaps; ///< by the number of the read

    std::vector<std::uint8_t> userArea; ///< of the EEPROM
    DWORD claimedSize = 0;              ///< what FT_EE_UASize tells of it
    FT_STATUS eepromStatus = FT_OK;
};
} // namespace fuzz
