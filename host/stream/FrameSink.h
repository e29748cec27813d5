// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace host
{
/// What takes the audio of an AudioPump, in the format of FrameSource.
class FrameSink
{
public:
    virtual ~FrameSink() = default;

    /// On the pump's thread; waits for nothing. What the sink has no room for is its own loss.
    virtual void push(const float *interleaved, std::size_t frames) = 0;
};
} // namespace host
