// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace host
{
/// What the meters of a receiver show at one moment.
struct Readings
{
    static constexpr double kNothingDb = -200.0; ///< the least level

    double signalDbm = kNothingDb;   ///< in the filter of the active VFO
    double signalBDbm = kNothingDb;  ///< in that of the other one
    double inputDb = kNothingDb;     ///< of the whole band at the converter, the louder part, dBFS
    double audioPeakDb = kNothingDb; ///< since the reading before, dBFS
    bool isOverflow = false;         ///< the converter was overdriven within the last second
    bool isStereo = false;           ///< wide FM with a pilot tone

    // Since the program began.
    std::uint64_t droppedSamples = 0; ///< IQ that the engine had no room for
    std::uint64_t lostSamples = 0; ///< IQ that the receiver sent in vain: in reads that came back
                                   ///< short, and what was not read in time
    std::uint64_t shortReads = 0;
    std::uint64_t lostFrames = 0; ///< audio that nobody fetched in time
};
} // namespace host
