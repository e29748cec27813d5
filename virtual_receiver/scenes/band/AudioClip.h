// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace vr
{
/// Rate of all audio and of the stations' baseband.
constexpr double kAudioRateHz = 48000.0;

/// A piece of audio for a station: mono at kAudioRateHz, band-limited to 5 kHz, peak 1.0.
struct AudioClip
{
    std::vector<float> samples;
    double activeRms = 0.0; ///< RMS of the parts in which something is heard

    /// Takes samples at any rate: limits the band, brings them to kAudioRateHz, sets the peak
    /// to 1.0 and measures.
    static std::shared_ptr<const AudioClip> make(const std::vector<float> &samples, double rateHz);

    /// Any file that libsndfile reads, its channels averaged. Null with a reason in error.
    static std::shared_ptr<const AudioClip> load(const std::string &path, std::string &error);
};
} // namespace vr
