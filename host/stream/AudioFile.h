// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "stream/Deemphasis.h"

#include <QCoreApplication>
#include <QFile>
#include <QString>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace host
{
struct HostSettings;

/// Writes a WAV: stereo, 32-bit float; above 4 GiB as RF64. One thread at a time.
///
/// The header is brought up to date with every second of audio, so a program that is killed leaves
/// a file that plays. While the file is open no other program of this kind can open it. A pipe is
/// written to as well; its header leaves the length open.
///
/// What is there under the name already stays until the new file is whole: that grows beside it as
/// NAME.part and takes its place in close(). If it does not become whole both are kept.
class AudioFile
{
    Q_DECLARE_TR_FUNCTIONS(AudioFile)

public:
    static constexpr int kRateHz = 48000; // of the sound card
    static constexpr int kChannels = 2;

    struct Format
    {
        int rateHz = kRateHz;
        bool inverted = false; ///< every sample changes its sign
        std::optional<Deemphasis> deemphasis = {};

        /// What the settings ask for at that rate.
        static Format of(const HostSettings &settings, int rateHz = kRateHz);
    };

    /// Creates the file. On failure false, and error() tells why in one line.
    bool open(const QString &path, const Format &format);
    bool open(const QString &path) { return open(path, Format()); }

    /// Appends frames of left and right in turn. False once the disk refuses; what is there by then
    /// stays, and nothing more is written.
    bool write(const float *interleaved, std::size_t frames);

    /// Completes the header. False if anything of the file could not be written.
    bool close();

    /// False once something could not be written; then error() does not change any more. Any
    /// thread.
    bool isGood() const { return m_isGood; }
    const QString &error() const { return m_error; }

private:
    const float *shaped(const float *interleaved, std::size_t frames);
    bool lock();
    bool openBeside();
    bool takePlace();
    bool writeHeader();
    bool updateHeader();
    void dropPartOfFrame();
    bool fail(const QString &reason);

    QFile m_file;     // unbuffered, so each refusal of the disk is seen
    QFile m_old;      // what is to be replaced, locked; closed if there is nothing
    QString m_target; // its name without links
    QString m_beside; // where the new file grows; empty if in its place
    QString m_path;
    QString m_error;
    Format m_format;
    std::vector<float> m_shaped; // a block, inverted or with another de-emphasis
    std::uint64_t m_frames = 0;
    std::uint64_t m_framesInHeader = 0;
    std::atomic<bool> m_isGood = true;
};
} // namespace host
