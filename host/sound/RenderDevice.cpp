// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/RenderDevice.h"

#include "sound/SoundStream.h"

#include <QAudioOutput>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace host
{
namespace
{
constexpr std::size_t kStereo = FrameSource::kChannels;
constexpr qint64 kMostFrames = 16384; // at once; a card asks for its buffer at most
constexpr float kFullScale16 = 32767.0f;

bool isFloat(const QAudioFormat &format)
{
    return format.sampleType() == QAudioFormat::Float && format.sampleSize() == 32;
}
} // namespace

bool RenderDevice::canMake(const QAudioFormat &format)
{
    const bool is16 = format.sampleType() == QAudioFormat::SignedInt && format.sampleSize() == 16;
    const bool isNative =
        format.byteOrder() == QAudioFormat::Endian(QSysInfo::Endian(QSysInfo::ByteOrder));
    return (isFloat(format) || is16) && isNative && format.channelCount() >= 1
        && format.sampleRate() > 0;
}

RenderDevice::RenderDevice(SoundStream &stream, const QAudioOutput &output)
    : m_stream(stream), m_output(output), m_format(output.format()),
      m_block(std::size_t(kMostFrames) * kStereo)
{
    // QIODevice would read ahead by a buffer of its own.
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 RenderDevice::bytesAvailable() const
{
    return kMostFrames * m_format.bytesPerFrame();
}

double RenderDevice::queuedSeconds() const
{
    const int bytes = m_output.bufferSize() - m_output.bytesFree();
    return double(std::max(0, bytes)) / m_format.bytesPerFrame() / m_format.sampleRate();
}

qint64 RenderDevice::readData(char *data, qint64 bytes)
{
    const qint64 frames = std::min(bytes / m_format.bytesPerFrame(), kMostFrames);
    m_stream.render(m_block.data(), std::size_t(frames), queuedSeconds());
    convert(data, std::size_t(frames));
    return frames * m_format.bytesPerFrame();
}

/// One channel gets both sides, more than two get silence in the others.
void RenderDevice::convert(char *data, std::size_t frames) const
{
    const auto channels = std::size_t(m_format.channelCount());
    const auto put = [&](auto *out, auto toSample) {
        for (std::size_t i = 0; i < frames; ++i, out += channels) {
            const float left = m_block[i * kStereo], right = m_block[i * kStereo + 1];
            std::fill_n(out, channels, toSample(0.0f));
            out[0] = toSample(channels == 1 ? (left + right) / 2.0f : left);
            if (channels > 1)
                out[1] = toSample(right);
        }
    };
    if (isFloat(m_format))
        put(reinterpret_cast<float *>(data), [](float value) { return value; });
    else
        put(reinterpret_cast<qint16 *>(data), [](float value) {
            return qint16(std::lrint(std::clamp(value, -1.0f, 1.0f) * kFullScale16));
        });
}
} // namespace host
