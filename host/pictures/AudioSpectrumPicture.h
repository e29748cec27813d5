// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AudioSpectrum.h"
#include "PictureLayout.h"

#include <QImage>
#include <QString>

namespace host
{
/// The spectrum of received audio as a picture, left and right. Channels that agree to 0.05 dB are
/// drawn as one. Needs a QGuiApplication; otherwise one thread at a time.
class AudioSpectrumPicture
{
public:
    /// Frames of left and right in turn, at 48 kHz, full scale 1; as often as there are some.
    void addFrames(const float *interleaved, std::size_t frames)
    {
        m_spectrum.add(interleaved, frames);
    }

    void setTitle(const QString &title) { m_title = title; }

    /// Brought inside 320 x 200 to 8192 x 8192.
    void setSize(QSize size) { m_size = size; }

    QImage image() const;

    /// Writes a PNG. On failure false, and `error` (may be null) names the file and the reason;
    /// less audio than one segment of the spectrum is such a failure.
    bool save(const QString &path, QString *error) const;

private:
    AudioSpectrum m_spectrum;
    QString m_title;
    QSize m_size = PictureLayout::kDefaultSize;
};
} // namespace host
