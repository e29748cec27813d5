// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/filters/Cuts.h"
#include "DspCore/receiver/Receiver.h"
#include "support/Signals.h"

#include <algorithm>
#include <numbers>
#include <vector>

namespace test
{
/// Empties an outlet.
inline std::vector<COMPLEX> drained(CircularBuffer<COMPLEX> &outlet)
{
    std::vector<COMPLEX> samples(outlet.count());
    outlet.read(samples.data(), int(samples.size()));
    return samples;
}

/// What the three outlets gave for one stretch of input.
struct Heard
{
    std::vector<COMPLEX> audio;
    std::vector<COMPLEX> vac;
    std::vector<COMPLEX> lineout;
};

inline void append(std::vector<COMPLEX> &to, const std::vector<COMPLEX> &more)
{
    to.insert(to.end(), more.begin(), more.end());
}

/// Feeds a stream in blocks of the given length and collects all that comes out.
inline Heard feed(DspCore::Receiver &receiver, const std::vector<COMPLEX> &stream, int block = 512)
{
    Heard heard;
    std::vector<COMPLEX> part;
    for (std::size_t at = 0; at < stream.size(); at += part.size()) {
        part.assign(
            stream.begin() + long(at), stream.begin() + long(std::min(at + block, stream.size())));
        receiver.process(part.data(), int(part.size()));
        append(heard.audio, drained(receiver.buffer()));
        append(heard.vac, drained(receiver.vac()));
        append(heard.lineout, drained(receiver.lineout()));
    }
    return heard;
}

/// Makes the gain control a pure delay, for signals that stay below full scale.
inline void holdGain(DspCore::Receiver &receiver)
{
    receiver.setAgcGain(0, 0);
}

/// Everything that works on the audio, but for the squelches and binaural, which stands in the way
/// of the DSE.
inline void switchToolsOn(DspCore::Receiver &receiver)
{
    receiver.setNr(true);
    receiver.setAnf(true);
    receiver.setApf(true);
    receiver.setDse(true);
    receiver.setEqualizerEnable(true);
    receiver.setEqualizerGains(QVector<int>(18, 6));
}

/// A multiple of a signal.
inline std::vector<COMPLEX> scaled(std::vector<COMPLEX> stream, double gain)
{
    for (COMPLEX &sample : stream)
        sample = {gain * sample.re, gain * sample.im};
    return stream;
}

/// Samples by which the gain control delays at an attack of 1 ms and 48 kHz: a ring of 30 ms, whose
/// oldest sample comes out as the newest goes in.
constexpr int kLookAhead = 1439;

/// Makes a mode current without its fade.
inline void setMode(DspCore::Receiver &receiver, DspCore::Modulation modulation)
{
    receiver.setModulation(modulation);
    receiver.clear();
}

inline double level(const std::vector<COMPLEX> &samples, double frequency)
{
    return magnitude(component(samples, frequency));
}
} // namespace test
