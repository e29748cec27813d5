// SPDX-License-Identifier: GPL-3.0-or-later
#include "Listener.h"

#include "DeviceReads.h"

#include "signal_primitives/fft_planning.h"

#include <QCoreApplication>
#include <QJsonDocument>

#include <algorithm>
#include <cstdio>

namespace host
{
namespace
{
constexpr int kTickMs = 250; // progress line, and a look at whether the receiver is still there
const QString kReceiverLost = "receiver lost";
} // namespace

Listener::Listener(const HostSettings &settings) : m_settings(settings)
{
    m_mainThread.attach();
    connect(&m_stopSignal, &StopSignal::raised, this, [this] { finish("interrupted"); });
    connect(&m_tick, &QTimer::timeout, this, &Listener::onTick);
}

Listener::~Listener() = default;

int Listener::run()
{
    if (!m_scene.open(m_settings))
        return complain(m_scene.error(), kBadInput);
    if (!openFiles())
        return kBadInput;
    if (m_settings.freeRun)
        signal_primitives::planReproducibly();
    m_receiver.emplace(m_ledger);
    if (!m_receiver->open(m_settings) || !startStream())
        return complain(m_receiver->error(), kFailure);
    QCoreApplication::exec();
    return keepResults() ? kSuccess : kFailure;
}

bool Listener::openFiles()
{
    if (!m_settings.outFile.isEmpty() && !m_audioFile.open(m_settings.outFile)) {
        complain(m_audioFile.error(), kBadInput);
        return false;
    }
    if (m_settings.reportFile.isEmpty())
        return true;
    m_reportFile.emplace(m_settings.reportFile);
    if (!m_reportFile->open(QIODevice::WriteOnly)) {
        complain(m_settings.reportFile + ": " + m_reportFile->errorString(), kBadInput);
        return false;
    }
    return true;
}

bool Listener::startStream()
{
    m_feed.emplace(m_settings, m_scene.seconds());
    m_feed->prepare();
    m_sound.emplace(SoundDevice::Source{m_receiver->audio(), [this] { m_receiver->wakeEngine(); }},
        *m_feed, m_ledger, m_settings.outFile.isEmpty() ? nullptr : &m_audioFile,
        m_settings.freeRun);
    m_cpuAtStart = cpuTimes();
    m_wallClock.start();
    if (!m_receiver->start(m_settings.tools))
        return false;
    m_sound->start(
        [this] { QMetaObject::invokeMethod(this, &Listener::onEnd, Qt::QueuedConnection); });
    m_tick.start(kTickMs);
    return true;
}

void Listener::finish(const QString &ending)
{
    if (m_result.ending.isEmpty())
        m_result.ending = ending;
    m_sound->finish();
}

void Listener::onTick()
{
    if (!m_receiver->isStreaming())
        finish(kReceiverLost);
    const double seconds = double(m_ledger.processedSamples()) / m_settings.deviceRateHz;
    const double planned = m_feed->plannedSeconds();
    m_progress.show(
        QString("%1 of %2 s   IQ %3 dBFS   audio %4 dBFS   %5 times real time")
            .arg(seconds, 0, 'f', 1)
            .arg(planned, 0, 'f', 1)
            .arg(m_ledger.inputLevel().rmsDb(), 0, 'f', 1)
            .arg(m_sound->level().rmsDb(), 0, 'f', 1)
            .arg(seconds * 1e3 / std::max<qint64>(1, m_wallClock.elapsed()), 0, 'f', 1));
}

/// The sound device has pulled the last frame. Measures while all threads are still there.
void Listener::onEnd()
{
    m_result.wallSeconds = double(m_wallClock.nsecsElapsed()) * 1e-9;
    m_tick.stop();
    m_sound->join();
    if (m_result.ending.isEmpty())
        m_result.ending = m_feed->status().scene_ended ? "scene ended" : "duration reached";
    m_result = measurement();
    m_receiver->stop();
    m_progress.clear();
    QCoreApplication::exit();
}

CpuTimes Listener::cpuTimes() const
{
    const auto &reads = DeviceReads::instance();
    CpuTimes times;
    times.device = double(reads.nanoseconds) * 1e-9;
    times.reader = std::max(0.0, reads.thread.seconds() - times.device);
    times.engine = m_ledger.engineThread().seconds();
    times.sound = m_sound->thread().seconds();
    times.main = m_mainThread.seconds();
    times.process = ThreadClock::processSeconds();
    return times;
}

Measurement Listener::measurement() const
{
    Measurement m = m_result;
    const vr_status &receiver = m_feed->status();
    m.scene = m_scene.name();
    m.samplesSent = receiver.samples_sent;
    m.samplesProcessed = m_ledger.processedSamples();
    m.shortReads = receiver.short_reads;
    m.fifoOverruns = receiver.fifo_overruns;
    m.clippedSamples = receiver.clipped_samples;
    m.samplesLostInShortReads = m_feed->lostSamples();
    m.samplesDropped = m_feed->droppedSamples(m_ledger);
    m.blocksDropped = m_feed->droppedBlocks(m_ledger);
    m.inputRmsDbfs = m_ledger.inputLevel().rmsDb();
    m.inputPeakDbfs = m_ledger.inputLevel().peakDb();
    const HostSensors &meters = m_receiver->meters();
    m.channelDbm = meters.channelDbm(0);
    m.channelBDbm = meters.channelDbm(1);
    m.inputReDb = meters.inputReDb();
    m.inputImDb = meters.inputImDb();
    m.isStereo = meters.isStereo();
    m.audioFrames = m_sound->frames();
    m.audioFramesLost = m_ledger.lostFrames();
    m.shortBlocks = m_sound->shortBlocks();
    m.audioRmsDbfs = m_sound->level().rmsDb();
    m.audioPeakDbfs = m_sound->level().peakDb();
    m.cpu = cpuTimes() - m_cpuAtStart;
    return m;
}

bool Listener::keepResults()
{
    std::fputs(toText(m_settings, m_result).toLocal8Bit().constData(), stdout);
    bool good = m_result.ending != kReceiverLost;
    if (!good)
        complain("the receiver was lost", kFailure);
    if (!m_audioFile.close() || !m_sound->isFileGood()) {
        complain(m_audioFile.error(), kFailure);
        good = false;
    }
    if (m_reportFile) {
        m_reportFile->write(QJsonDocument(toJson(m_settings, m_result)).toJson());
        if (!m_reportFile->commit()) {
            complain(m_settings.reportFile + ": " + m_reportFile->errorString(), kFailure);
            good = false;
        }
    }
    return good;
}

int Listener::complain(const QString &text, int status)
{
    m_progress.clear();
    std::fputs(("velmora-host: " + text + '\n').toLocal8Bit().constData(), stderr);
    return status;
}
} // namespace host
