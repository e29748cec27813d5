// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AudioLoop.h"
#include "Modulator.h"

#include <string>
#include <vector>

namespace vr
{
/// A keyed carrier: Morse code with raised-cosine edges.
class CwModulator : public Modulator
{
public:
    explicit CwModulator(AudioLoop envelope);

    /// The keying of a text as 0..1 at kAudioRateHz. Words per minute by the word PARIS: 50 dots. A
    /// character without a Morse code is sent as a word gap.
    static std::vector<float> keying(const std::string &text, double wordsPerMinute);

    void rewind() override { m_envelope.rewind(); }
    void make(Sample *out, std::size_t count) override;

private:
    AudioLoop m_envelope;
    std::vector<double> m_block;
};
} // namespace vr
