// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/AudioTap.h"

#include "signal_primitives/ipps.h"

#include <algorithm>
#include <cmath>

AudioTap::AudioTap(double gain) : m_gain(gain) { }

void AudioTap::setSampleRates(double inputRate, double outputRate)
{
    m_outputRate = outputRate;
    m_resampler.setSampleRates(inputRate, outputRate);

    // As the resampler rounds it. Without a ratio nothing comes out.
    int up = 0;
    int down = 0;
    DspCore::Resampler::gdc(inputRate, outputRate, up, down);
    if (up < 1 || down < 1)
        return;

    // The resampler gives at most SIGNAL_MAX_SIZE pairs per call. Above twice the input rate a
    // chunk makes more, so it goes in by portions; the result is the same, since the resampler's
    // state runs on from call to call.
    const double ratio = double(up) / down;
    m_portion = std::max(1, int(std::min<double>(kChunk, SIGNAL_MAX_SIZE / ratio)));
    const auto longest = std::size_t(std::ceil(kChunk * ratio));
    if (longest > m_output.size())
        m_output.resize(longest);
}

void AudioTap::setEnabled(bool enabled)
{
    m_enabled = enabled;
    if (enabled)
        clearRing();
}

void AudioTap::push(COMPLEX *chunk)
{
    const int produced = resample(chunk);
    if (produced > int(m_ring.freeCount()))
        return;
    ippsMulC_64f_I(m_gain, reinterpret_cast<double *>(m_output.data()), 2 * produced);
    m_ring.write(m_output.data(), produced);
}

int AudioTap::resample(COMPLEX *chunk)
{
    int produced = 0;
    for (int taken = 0; taken < kChunk; taken += m_portion) {
        int length = 0;
        m_resampler.process(
            chunk + taken, std::min(m_portion, kChunk - taken), m_output.data() + produced, length);
        produced += length;
    }
    return produced;
}

bool AudioTap::pull(std::vector<float> &out, unsigned long channels)
{
    return m_pull.read(m_ring, out, channels);
}
