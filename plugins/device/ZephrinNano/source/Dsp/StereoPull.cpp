// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/StereoPull.h"

#include "signal_primitives/ipps.h"

#include <algorithm>

bool StereoPull::read(
    CircularBuffer<COMPLEX> &ring, std::vector<float> &out, unsigned long channels)
{
    const std::size_t frames = out.size() / channels;
    if (frames > ring.count())
        return false;

    m_scratch.resize(frames);
    // Refused if another thread has cleared the ring meanwhile.
    if (frames > 0 && !ring.read(m_scratch.data(), int(frames)))
        return false;

    const std::size_t values = std::min(2 * frames, out.size());
    ippsConvert_64f32f(reinterpret_cast<const double *>(m_scratch.data()), out.data(), int(values));
    return true;
}
