// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/SoundCard.h"

#include "sound/RenderDevice.h"
#include "sound/SoundDevices.h"

#include <QAudioDeviceInfo>
#include <QAudioOutput>

namespace host
{
namespace
{
QAudioFormat wantedFormat()
{
    QAudioFormat format;
    format.setSampleRate(FrameSource::kRateHz);
    format.setChannelCount(FrameSource::kChannels);
    format.setCodec("audio/pcm");
    format.setByteOrder(QAudioFormat::Endian(QSysInfo::Endian(QSysInfo::ByteOrder)));
    format.setSampleType(QAudioFormat::Float);
    format.setSampleSize(32);
    return format;
}

/// Float at 48 kHz if the card takes it, else 16 bits, else what comes nearest.
QAudioFormat formatFor(const QAudioDeviceInfo &device)
{
    QAudioFormat format = wantedFormat();
    if (device.isFormatSupported(format))
        return format;
    format.setSampleType(QAudioFormat::SignedInt);
    format.setSampleSize(16);
    return device.nearestFormat(format);
}
} // namespace

SoundCard::SoundCard(SoundStream &stream) : m_stream(stream), m_timer(this)
{
    connect(&m_timer, &QTimer::timeout, this, &SoundCard::onTimer);
}

SoundCard::~SoundCard()
{
    close();
}

void SoundCard::play(const QString &name)
{
    close();
    m_name = name;
    m_isWanted = true;
    m_timer.start(kLookMs);
    tryOpen();
}

void SoundCard::stop()
{
    m_isWanted = false;
    m_timer.stop();
    close();
}

void SoundCard::look()
{
    QStringList names;
    for (const QAudioDeviceInfo &device : SoundDevices::all())
        names += device.deviceName();
    emit devicesFound(names);
    if (m_isWanted && !m_output)
        tryOpen();
}

void SoundCard::tryOpen()
{
    const auto devices = SoundDevices::all();
    if (devices.isEmpty()) {
        emit waiting(tr("there is no sound device"));
        return;
    }
    if (m_name.isEmpty()) {
        open(SoundDevices::preferred());
        return;
    }
    for (const QAudioDeviceInfo &device : devices) {
        if (device.deviceName() == m_name) {
            open(device);
            return;
        }
    }
    emit waiting(tr("the sound device %1 is not there").arg(m_name));
}

bool SoundCard::open(const QAudioDeviceInfo &device)
{
    const QAudioFormat format = formatFor(device);
    if (!RenderDevice::canMake(format)) {
        emit waiting(
            tr("the sound device %1 takes no audio of a known kind").arg(device.deviceName()));
        return false;
    }
    m_output = std::make_unique<QAudioOutput>(device, format);
    m_output->setBufferSize(format.bytesForDuration(qint64(kBufferSeconds * 1e6)));
    m_feed = std::make_unique<RenderDevice>(m_stream, *m_output);
    m_stream.begin(format.sampleRate(), kBufferSeconds);
    m_output->start(m_feed.get());
    if (m_output->error() != QAudio::NoError) {
        close();
        // Of a server that was away Qt finds the devices again only if it came back soon.
        emit waiting(
            tr("the sound device %1 cannot be opened; if it is there, begin the program anew")
                .arg(device.deviceName()));
        return false;
    }
    // What the card made of the wish counts.
    m_stream.begin(
        format.sampleRate(), double(format.durationForBytes(m_output->bufferSize())) * 1e-6);
    m_standstill = 0;
    connect(
        m_output.get(), &QAudioOutput::stateChanged, this,
        [this](QAudio::State state) {
            if (state == QAudio::StoppedState)
                lose(tr("the sound device has gone"));
        },
        Qt::QueuedConnection); // the output is still in the middle of it
    emit playing(device.deviceName());
    return true;
}

void SoundCard::close()
{
    m_stream.end();
    if (m_output) {
        m_output->disconnect(this);
        m_output->stop();
    }
    m_output.reset();
    m_feed.reset();
}

void SoundCard::lose(const QString &reason)
{
    if (!m_output)
        return;
    close();
    emit waiting(reason);
}

/// A card that stands still without a word has gone, too.
void SoundCard::onTimer()
{
    if (!m_output) {
        tryOpen();
        return;
    }
    const std::uint64_t played = m_stream.status().playedFrames;
    m_standstill = played == m_playedBefore ? m_standstill + 1 : 0;
    if (m_standstill >= kMostStandstill)
        lose(tr("the sound device has stopped"));
    m_playedBefore = played;
}
} // namespace host
