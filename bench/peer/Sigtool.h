// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "peer/PeerOptions.h"

#include <QByteArray>

#include <cstdint>
#include <vector>

namespace bench
{
/// The program that makes the test signal of all receivers and judges what they make of it. Throws
/// std::runtime_error if it does not do as asked.
class Sigtool
{
public:
    /// What the program says of one ear.
    struct Verdict
    {
        QByteArray line; // its JSON, without a line end
        bool good = false;
        double sinadDb = 0.0;
    };

    explicit Sigtool(const PeerOptions &options) : m_options(options) { }

    /// The signal in device frames, 1.75 s of it: whole frames and whole periods, so that it
    /// repeats without a seam.
    std::vector<std::uint8_t> frames() const;

    /// Judges 48 kHz audio, both ears interleaved in stereo modes, else one; `cpu` are the CPU
    /// seconds of the runs.
    Verdict check(const std::vector<float> &audio, const std::vector<double> &cpu) const;

private:
    QString variant() const;

    const PeerOptions &m_options;
};
} // namespace bench
