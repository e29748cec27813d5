// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <complex>
#include <cstddef>

namespace vr
{
using Sample = std::complex<double>;

/// What the antenna brings: a piece of radio spectrum that the device tunes in.
///
/// A component at radio frequency f comes out at f minus the tuned frequency, full scale 1.0. Not
/// thread-safe; the device calls it from the reading thread alone.
class Scene
{
public:
    virtual ~Scene() = default;

    /// Begins the scene anew for a stream of this sample rate, tuned to this frequency. Filters are
    /// designed and memory is taken here.
    virtual void start(double rateHz, double tunedHz) = 0;

    /// Moves the tuning during a stream; phases run on.
    virtual void retune(double tunedHz) = 0;

    /// Makes the next count samples; zeros after the end of a scene that ends.
    virtual void render(Sample *out, std::size_t count) = 0;

    /// True once all of a scene that ends has been rendered.
    virtual bool ended() const { return false; }

    /// Whether the scene is a recording, in which one can go to and fro. Any thread.
    virtual bool isSeekable() const { return false; }

    /// Goes on at so many seconds from its beginning, limited to its length.
    virtual void seek(double) { }

    /// Seconds from the beginning, of this pass.
    virtual double position() const { return 0.0; }

    /// Whether a recording begins again after its end.
    virtual void setLoop(bool) { }

    /// Radio frequency of the middle of the scene, 0 if it goes wherever the device is tuned.
    virtual double frequencyHz() const { return 0.0; }

    /// Width in hertz of what there is around the middle, 0 if it is everywhere.
    virtual double widthHz() const { return 0.0; }

    /// Length in seconds, 0 if the scene never ends.
    virtual double seconds() const { return 0.0; }
};
} // namespace vr
