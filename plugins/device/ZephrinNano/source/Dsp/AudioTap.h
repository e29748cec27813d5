// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Dsp/StereoPull.h"
#include "DspCore/filters/Resampler.h"
#include "DspCore/types.h"
#include "host_interfaces/EngineLimits.h"
#include "vm_library/source/containers/CircularBuffer.h"

#include <vector>

/// A way out of the engine to a host device with a sample rate and a clock of its own (virtual
/// audio cable, line out).
///
///     chunk of kChunk stereo pairs -> resampler -> gain -> ring -> host audio thread
///
/// Threads: push() runs on the engine thread and the setters on the GUI thread, serialised by the
/// owner's mutex; pull() runs on one host audio thread and touches only the ring, which has a lock
/// of its own, and the scratch of the pull.
class AudioTap
{
public:
    /// Stereo pairs that one push() takes.
    static constexpr int kChunk = int(EngineLimits::kOutletChunk);

    /// `gain` is the linear factor of this way out.
    explicit AudioTap(double gain);

    /// Rates in hertz: of the pushed chunks and of the host device.
    void setSampleRates(double inputRate, double outputRate);
    double outputRate() const { return m_outputRate; }

    /// Whether the host device is there to be fed. It starts with an empty ring.
    void setEnabled(bool enabled);
    bool enabled() const { return m_enabled; }

    /// Resamples kChunk pairs into the ring. A result that does not fit whole is dropped, so a host
    /// that stopped pulling costs audio and nothing else. Allocates nothing.
    void push(COMPLEX *chunk);

    /// See StereoPull::read().
    bool pull(std::vector<float> &out, unsigned long channels);

    /// Forgets the filter history; waiting audio stays.
    void clearHistory() { m_resampler.clear(); }

    /// Drops the waiting audio.
    void clearRing() { m_ring.clear(); }

private:
    int resample(COMPLEX *chunk);

    double m_gain;
    double m_outputRate = 48000.0; // hertz
    bool m_enabled = false;
    DspCore::Resampler m_resampler;
    int m_portion = kChunk; // pairs per resampler call, see setSampleRates()
    std::vector<COMPLEX> m_output = std::vector<COMPLEX>(SIGNAL_MAX_SIZE);
    CircularBuffer<COMPLEX> m_ring{unsigned(EngineLimits::kOutletRing)};
    StereoPull m_pull;
};
