// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AudioClip.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace vr
{
struct StationKind;

/// One transmission of a band.
struct StationDescription
{
    double frequencyHz = 0.0; ///< of the carrier, also the suppressed one
    double levelDb = 0.0;     ///< dBFS: the carrier, or SSB's RMS while speaking
    const StationKind *kind = nullptr;
    std::shared_ptr<const AudioClip> clip; ///< null without a programme; CW: the keying, 0..1
    double startSeconds = 0.0;
    double pauseSeconds = 1.0; ///< between repetitions
    bool repeat = true;
    double depth = 0.8;          ///< AM at the peak of the audio
    double deviationHz = 2500.0; ///< NFM at the peak of the audio
};

/// A piece of radio spectrum with what is heard there.
struct BandDescription
{
    double centreHz = 0.0;
    std::optional<double> noiseDb; ///< dBFS in one hertz
    double seconds = 0.0;          ///< 0: never ends
    std::uint64_t seed = 1;        ///< of the noise
    std::vector<StationDescription> stations;
};
} // namespace vr
