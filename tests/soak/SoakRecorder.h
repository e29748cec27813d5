// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTemporaryDir>

#include <cstdint>
#include <random>

namespace test
{
class PluginRig;
}

namespace soak
{
class SoakStream;

/// Records the IQ now and then, a short piece each time, and checks that every sample of the piece
/// is in its file. GUI thread.
class SoakRecorder
{
public:
    SoakRecorder(test::PluginRig &rig, SoakStream &stream, double rateHz, unsigned seed);

    /// Starts or ends a recording when one is due. To be called again and again.
    void advance();

    /// Ends a recording that runs.
    void finish();

    long recordings() const { return m_recordings; }

    /// IQ samples that should be in files and are not, at least; files that are no recordings.
    std::uint64_t missing() const { return m_missing; }
    long broken() const { return m_broken; }

private:
    void start();
    void check(std::uint64_t least, std::uint64_t most);
    std::uint64_t fromNow(double leastSeconds, double mostSeconds);

    test::PluginRig &m_rig;
    SoakStream &m_stream;
    double m_rateHz;
    std::mt19937 m_random;
    QTemporaryDir m_folder;
    bool m_isRecording = false;
    std::uint64_t m_due;        // samples processed when something is to happen
    std::uint64_t m_before = 0; // processed before the start and after it
    std::uint64_t m_started = 0;
    long m_recordings = 0;
    std::uint64_t m_missing = 0;
    long m_broken = 0;
};
} // namespace soak
