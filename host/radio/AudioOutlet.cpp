// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/AudioOutlet.h"

#include <algorithm>

namespace host
{
AudioOutlet::AudioOutlet(HostSoundOut &source, StreamLedger &ledger)
    : m_source(source), m_ledger(ledger)
{
    m_out.reserve(kCapacity * kChannels);
}

std::size_t AudioOutlet::pull(float *interleaved, std::size_t frames)
{
    frames = std::min({frames, ready(), kCapacity});
    // The source would answer a request that it cannot fill with silence.
    if (frames == 0 || !m_source.pull(m_in, m_out, frames, kChannels))
        return 0;
    m_ledger.addPulled(frames);
    std::copy_n(m_out.begin(), frames * kChannels, interleaved);
    return frames;
}
} // namespace host
