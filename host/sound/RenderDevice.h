// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAudioFormat>
#include <QIODevice>

#include <vector>

class QAudioOutput;

namespace host
{
class SoundStream;

/// What a QAudioOutput reads from: the audio of a SoundStream in the card's format, always as much
/// as is asked for. Sound thread.
class RenderDevice : public QIODevice
{
    Q_OBJECT

public:
    /// Whether the format can be made: 32-bit float or 16-bit integers of this machine's byte
    /// order.
    static bool canMake(const QAudioFormat &format);

    /// Both must outlive the device. The output has been given the format.
    RenderDevice(SoundStream &stream, const QAudioOutput &output);

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override;

protected:
    qint64 readData(char *data, qint64 bytes) override;
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    double queuedSeconds() const;
    void convert(char *data, std::size_t frames) const;

    SoundStream &m_stream;
    const QAudioOutput &m_output;
    QAudioFormat m_format;
    std::vector<float> m_block; // stereo
};
} // namespace host
