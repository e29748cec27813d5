// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstddef>
#include <memory>

struct sf_private_tag; // libsndfile's handle

namespace host
{
/// Writes a WAV: stereo, 32-bit float, 48 kHz unless told otherwise. One thread at a time.
class AudioFile
{
public:
    static constexpr int kRateHz = 48000;
    static constexpr int kChannels = 2;

    ~AudioFile();

    /// Creates the file or empties it. On failure false, and error() tells why in one line.
    bool open(const QString &path, int rateHz = kRateHz);

    /// Appends frames of left and right in turn. False once the disk refuses.
    bool write(const float *interleaved, std::size_t frames);

    /// Completes the header. False if that failed.
    bool close();

    const QString &error() const { return m_error; }

private:
    struct Closer
    {
        void operator()(sf_private_tag *file) const;
    };
    std::unique_ptr<sf_private_tag, Closer> m_file;
    QString m_path;
    QString m_error;
};
} // namespace host
