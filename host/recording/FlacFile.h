// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QString>

#include <cstddef>
#include <memory>

struct sf_private_tag;

namespace host
{
/// Writes a FLAC: stereo, 24 bits, 48 kHz; full scale is 1, what exceeds it is limited. One thread
/// at a time.
class FlacFile
{
    Q_DECLARE_TR_FUNCTIONS(FlacFile)

public:
    /// Creates the file or empties it. On failure false, and error() tells why.
    bool open(const QString &path);

    /// Appends frames of left and right in turn. False once the disk refuses.
    bool write(const float *interleaved, std::size_t frames);

    /// Completes the file. False if not all of it could be written.
    bool close();

    const QString &error() const { return m_error; }

private:
    struct Close
    {
        void operator()(sf_private_tag *file) const;
    };

    bool fail(const QString &reason);

    std::unique_ptr<sf_private_tag, Close> m_file;
    QString m_path;
    QString m_error;
    std::uint64_t m_frames = 0;
    bool m_isGood = false;
};
} // namespace host
