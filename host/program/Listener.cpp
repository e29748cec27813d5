// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/Listener.h"

#include "program/HostLog.h"
#include "settings/FileCheck.h"
#include "settings/Numbers.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>

namespace host
{
namespace
{
constexpr int kTickMs = 250; // progress line

template <typename Outlet>
AudioCallback pullFrom(Outlet &outlet)
{
    return [&outlet](std::vector<float> &in, std::vector<float> &out, unsigned long frames,
               unsigned long channels) { return outlet.pull(in, out, frames, channels); };
}
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
    for (const QString &notice : qAsConst(m_settings.notices))
        tell(notice);
    if (!openLibrary() || !loadPlugin() || !openFiles() || !openReceiver() || !openOutlets()
        || !startStream())
        return m_status;
    QCoreApplication::exec();
    keepResults();
    return m_status;
}

bool Listener::openLibrary()
{
    if (const QString problem = checkFiles(m_settings); !problem.isEmpty())
        return refuse(problem, kBadInput);
    if (!m_d2xx.open(m_settings.d2xxFile))
        return refuse(m_d2xx.error(), kBadInput);
    m_virtualReceiver = ReceiverControls::of(m_d2xx);
    m_scene.emplace(virtualReceiver());
    if (!m_scene->open(m_settings))
        return refuse(m_scene->error(), kBadInput);
    for (const QString &notice : m_scene->notices())
        tell(notice);
    return true;
}

// Before any file is written over: the plugin may refuse the settings.
bool Listener::loadPlugin()
{
    m_receiver.emplace(m_ledger);
    connect(&*m_receiver, &PluginReceiver::lost, this, [this] {
        HostLog::tellOfLostReceiver();
        finish(kReceiverLost);
    });
    return m_receiver->load(m_settings) || refuse(m_receiver->error(), kBadInput);
}

bool Listener::openFiles()
{
    if (!m_settings.outFile.isEmpty()
        && !m_audioFile.open(m_settings.outFile, AudioFile::Format::of(m_settings)))
        return refuse(m_audioFile.error(), kBadInput);
    if (!m_settings.spectrum.audioSpectrumFile.isEmpty()) {
        // Plans its transform here, while nobody else does.
        m_audioPicture.emplace();
        m_audioPicture->setTitle(QString("Audio of %1 in %2")
                                     .arg(formatHertz(m_settings.tuneHz), m_settings.mode->name));
    }
    if (m_settings.reportFile.isEmpty())
        return true;
    m_reportFile.emplace(m_settings.reportFile);
    return m_reportFile->open(QIODevice::WriteOnly)
        || refuse(m_settings.reportFile + ": " + m_reportFile->errorString(), kBadInput);
}

bool Listener::openReceiver()
{
    if (!m_receiver->initialise(m_settings))
        return refuse(m_receiver->error(), kBadInput);
    const bool isOpen = m_receiver->open(m_settings);
    tell(m_receiver->notice());
    return isOpen || refuse(m_receiver->error(), kFailure);
}

// The outlets are open before the stream begins, which is where their count of frames begins.
bool Listener::openOutlets()
{
    HostBridge &bridge = m_receiver->bridge();
    if (const OutletSettings &vac = m_settings.vac; vac.isOn()) {
        m_vac.emplace(pullFrom(bridge.vac()), m_ledger, vac.rateHz);
        if (!m_vac->open(vac.file, m_settings))
            return refuse(m_vac->error(), kBadInput);
        bridge.vac().open(quint64(vac.rateHz));
    }
    if (const OutletSettings &lineOut = m_settings.lineOut; lineOut.isOn()) {
        m_lineOut.emplace(pullFrom(bridge.lineOut()), m_ledger, lineOut.rateHz);
        if (!m_lineOut->open(lineOut.file, m_settings))
            return refuse(m_lineOut->error(), kBadInput);
        bridge.lineOut().open(quint64(lineOut.rateHz));
    }
    return true;
}

bool Listener::startStream()
{
    m_feed.emplace(m_settings, m_scene->seconds(), virtualReceiver(), m_ledger);
    for (const auto *outlet : {&m_vac, &m_lineOut})
        if (*outlet)
            m_feed->respect((*outlet)->ring());
    m_feed->prepare();
    m_pictures.emplace(m_receiver->device(), m_settings, m_ledger, m_receiver->panoramaHz());
    m_sound.emplace(pullFrom(*m_receiver->bridge().soundOut()), *m_feed, m_ledger,
        SoundDevice::Sinks{m_settings.outFile.isEmpty() ? nullptr : &m_audioFile,
            m_audioPicture ? &*m_audioPicture : nullptr},
        m_settings.freeRun);
    m_cpuAtStart = cpuTimes();
    m_wallClock.start();
    if (!m_receiver->start(m_settings))
        return refuse(m_receiver->error(), kFailure);
    if (m_settings.recording.isOn()) {
        m_recording.emplace(
            m_receiver->device(), *m_receiver->bridge().iqRecorderConfigure(), m_ledger);
        if (!m_recording->start())
            return refuse(m_recording->error(), kFailure);
    }
    for (auto *outlet : {&m_vac, &m_lineOut})
        if (*outlet)
            (*outlet)->start();
    m_sound->start(
        [this] { QMetaObject::invokeMethod(this, &Listener::onEnd, Qt::QueuedConnection); });
    m_tick.start(kTickMs);
    if (!m_result.ending.isEmpty())
        m_sound->finish(); // ended while it was being set up
    return true;
}

void Listener::finish(const QString &ending)
{
    if (m_result.ending.isEmpty())
        m_result.ending = ending;
    if (m_sound)
        m_sound->finish();
}

void Listener::onTick()
{
    tellOfFiles(); // now, not after hours
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
    endOutlets();
    if (m_result.ending.isEmpty())
        m_result.ending = m_feed->status().scene_ended ? "scene ended" : "duration reached";
    m_result = measurement();
    m_receiver->stop();
    m_progress.clear();
    QCoreApplication::exit();
}

// Before the stream ends, and with it the device's answers.
void Listener::endOutlets()
{
    for (auto *outlet : {&m_vac, &m_lineOut})
        if (*outlet)
            (*outlet)->finish();
    m_receiver->bridge().vac().close();
    m_receiver->bridge().lineOut().close();
    if (m_recording)
        m_recording->stop();
}

void Listener::tell(const QString &text)
{
    if (text.isEmpty() || m_told.contains(text))
        return;
    m_told.insert(text);
    m_progress.clear();
    std::fputs(("velmora-host: " + text + '\n').toLocal8Bit().constData(), stderr);
}

bool Listener::refuse(const QString &text, int status)
{
    tell(text);
    m_status = status;
    return false;
}
} // namespace host
