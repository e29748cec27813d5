// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace host
{
/// Where audio comes from: stereo floats, left and right in turn, full scale 1, 48000 frames a
/// second of the source's own clock.
class FrameSource
{
public:
    static constexpr int kRateHz = 48000;
    static constexpr int kChannels = 2;

    virtual ~FrameSource() = default;

    /// Takes up to so many frames, as they are there; gives how many it got. Waits for nothing. One
    /// thread at a time.
    virtual std::size_t pull(float *interleaved, std::size_t frames) = 0;
};
} // namespace host
