// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "radio/Radio.h"
#include "stream/FrameSource.h"

#include "support/TemporarySettings.h"

#include <QTemporaryDir>

#include <memory>
#include <vector>

namespace test
{
/// Serves the event loop for so long.
void serve(int milliseconds);

/// A radio on the real plugin and the virtual receiver, with a folder of its own for its settings.
/// What is on the air is a band description (docs/scenes.md).
class TestRadio
{
public:
    explicit TestRadio(const QByteArray &band);

    /// Loads and switches on. False unless it receives within some seconds.
    bool start(const QStringList &options = {});

    /// Ends the radio and begins a new one on the same settings file.
    bool restart(const QStringList &options = {});

    host::Radio &radio() { return *m_radio; }
    QString path(const QString &name) const { return m_folder.filePath(name); }

    /// Where listen() fetches the audio: the radio itself, unless somebody else does so already.
    void setSource(host::FrameSource *source) { m_source = source; }

    /// Audio from now on, left as the real and right as the imaginary part, after `skipMs`, in
    /// which a change has had its effect.
    std::vector<COMPLEX> listen(double seconds, int skipMs = 300);

    /// Level of a tone in the left ear, dBFS.
    double toneDb(double hertz, int skipMs = 300);

private:
    std::size_t pull(float *interleaved, std::size_t frames);

    TemporarySettings m_settings;
    QTemporaryDir m_folder;
    std::unique_ptr<host::Radio> m_radio;
    host::FrameSource *m_source = nullptr;
};
} // namespace test
