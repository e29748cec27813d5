// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/Listener.h"

#include "library/DeviceKind.h"
#include "library/FtRelay.h"
#include "program/HostLog.h"
#include "report/Report.h"
#include "settings/DeviceChoice.h"
#include "settings/FileCheck.h"
#include "settings/Numbers.h"

#include "vm_library/source/file/WholeFile.h"

#include <QCoreApplication>
#include <QJsonDocument>

#include <algorithm>
#include <cstdio>

namespace host
{
namespace
{
constexpr int kTickMs = 250; // progress line

// A library that does not answer holds the thread that calls it, and nothing can free that. To open
// the receiver takes a search and some slow calls, to end its stream one.
constexpr int kLongestOpenSeconds = 20;
constexpr int kLongestEndSeconds = 8;
} // namespace

Listener::Listener(const HostSettings &settings) : m_settings(settings)
{
    connect(&m_stopSignal, &StopSignal::raised, this, [this] { finish("interrupted"); });
    connect(&m_tick, &QTimer::timeout, this, &Listener::onTick);
    m_stopSignal.setDeadline(true);
}

Listener::~Listener()
{
    m_stopSignal.disconnect(this);
}

int Listener::run()
{
    for (const QString &notice : qAsConst(m_settings.notices))
        m_terminal.print(notice);
    if (!openLibrary() || !loadPlugin() || !openFiles())
        return m_status;
    m_stopSignal.endWithin(kLongestOpenSeconds);
    if (!openReceiver() || !openRig() || !openOutlets() || !startStream())
        return m_status;
    m_stopSignal.cancelEnd();
    QCoreApplication::exec();
    keepResults();
    return m_status;
}

bool Listener::openLibrary()
{
    if (const QString problem = checkFiles(m_settings); !problem.isEmpty())
        return fail(problem, kBadInput);
    const DeviceKind *kind = DeviceChoice::of(m_settings).kind;
    if (!(kind ? m_d2xx.load(*kind) : m_d2xx.load(m_settings.d2xxFile)))
        return fail(m_d2xx.error(), kBadInput);
    m_d2xx.use();
    m_virtualReceiver = ReceiverControls::of(m_d2xx);
    m_scene.emplace(virtualReceiver());
    if (!m_scene->open(m_settings))
        return fail(m_scene->error(), kBadInput);
    for (const QString &notice : m_scene->notices())
        m_terminal.print(notice);
    return true;
}

// Before any file is written over: the plugin may refuse the settings.
bool Listener::loadPlugin()
{
    m_receiver.emplace(m_ledger);
    connect(&*m_receiver, &PluginReceiver::lost, this, [this] {
        HostLog::tellOfLostReceiver();
        m_stopSignal.endWithin(kLongestEndSeconds);
        finish(kReceiverLost);
    });
    return m_receiver->load(m_settings) || fail(m_receiver->error(), kBadInput);
}

bool Listener::openFiles()
{
    if (!m_settings.outFile.isEmpty()
        && !m_audioFile.open(m_settings.outFile, AudioFile::Format::of(m_settings)))
        return fail(m_audioFile.error(), kBadInput);
    if (!m_settings.spectrum.audioSpectrumFile.isEmpty()) {
        // Plans its transform here, while nobody else does.
        m_audioPicture.emplace();
        m_audioPicture->setTitle(QString("Audio of %1 in %2")
                                     .arg(formatHertz(m_settings.tuneHz), m_settings.mode->name));
    }
    return true;
}

bool Listener::openReceiver()
{
    if (!m_receiver->initialise(m_settings))
        return fail(m_receiver->error(), kBadInput);
    const bool isOpen = m_receiver->open(m_settings);
    m_terminal.print(m_receiver->notice());
    if (isOpen)
        return true;
    return fail(m_receiver->error() + remedy(), kFailure);
}

/// What helps where hardware was not opened, to be put after the error.
QString Listener::remedy() const
{
    if (virtualReceiver())
        return {};
    if (m_receiver->isFound())
        return ": another program may have it";
    return ": " + FtRelay::instance().bus().reason() + " --device virtual needs none.";
}

bool Listener::openRig()
{
    if (!m_settings.rigPort)
        return true;
    m_rig.emplace(*m_receiver, m_settings);
    m_rigServer.emplace(*m_rig);
    return m_rigServer->open(*m_settings.rigPort) || fail(m_rigServer->error(), kFailure);
}

bool Listener::openOutlets()
{
    return m_outlets.open(m_settings, m_receiver->bridge(), m_ledger)
        || fail(m_outlets.error(), kBadInput);
}

bool Listener::startStream()
{
    m_feed.emplace(m_settings, m_scene->seconds(), virtualReceiver(), m_ledger);
    m_outlets.addTo(*m_feed);
    m_feed->prepare();
    m_pictures.emplace(m_receiver->device(), m_settings, m_ledger, m_receiver->panoramaHz());
    const auto source = [&soundOut = *m_receiver->bridge().soundOut()](
                            auto &&...block) { return soundOut.pull(block...); };
    m_sound.emplace(source, *m_feed, m_ledger,
        SoundDevice::Sinks{m_settings.outFile.isEmpty() ? nullptr : &m_audioFile,
            m_audioPicture ? &*m_audioPicture : nullptr},
        m_settings.freeRun);
    m_cpu.start(m_sound->thread());
    m_wallClock.start();
    if (!m_receiver->start(m_settings))
        return fail(m_receiver->error(), kFailure);
    if (m_settings.recording.isOn()) {
        m_recording.emplace(
            m_receiver->device(), *m_receiver->bridge().iqRecorderConfigure(), m_ledger);
        if (!m_recording->start())
            return fail(m_recording->error(), kFailure);
    }
    m_outlets.start();
    m_sound->start([this] {
        m_stopSignal.endWithin(kLongestEndSeconds);
        QMetaObject::invokeMethod(this, &Listener::onEnd, Qt::QueuedConnection);
    });
    m_tick.start(kTickMs);
    if (!m_result.ending.isEmpty())
        m_sound->finish(); // ended while it was being set up
    return true;
}

void Listener::finish(const QString &ending)
{
    if (m_result.ending.isEmpty())
        m_result.ending = ending;
    if (m_receiver)
        m_receiver->giveUp();
    if (m_sound)
        m_sound->finish();
}

void Listener::onTick()
{
    if (m_recording)
        m_recording->watch();
    failOnFiles(); // now, not after hours
    const double seconds = double(m_ledger.processedSamples()) / m_settings.deviceRateHz;
    const double planned = m_feed->plannedSeconds();
    m_terminal.showProgress(
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
    m_stopSignal.cancelEnd();
    m_tick.stop();
    m_sound->join();
    // Before the stream ends, and with it the device's answers.
    m_outlets.finish();
    if (m_recording)
        m_recording->stop();
    if (m_result.ending.isEmpty())
        m_result.ending = m_feed->isSilent() ? kReceiverSilent
            : m_feed->status().scene_ended   ? "scene ended"
                                             : "duration reached";
    m_result = measurement();
    m_rigServer.reset();
    m_stopSignal.endWithin(kLongestEndSeconds);
    m_receiver->stop();
    m_stopSignal.setDeadline(false); // files are given the time that they need
    m_terminal.clearProgress();
    QCoreApplication::exit();
}

Measurement Listener::measurement() const
{
    Measurement m = m_result;
    const vr_status &receiver = m_feed->status();
    m.scene = m_scene->name();
    m.plugin = m_receiver->pluginFile();
    m.d2xxFile = m_d2xx.file();
    m.isVirtual = m_virtualReceiver.has_value();
    m.samplesSent = receiver.samples_sent;
    m.samplesProcessed = m_ledger.isGoalReached() ? m_feed->goal() : m_ledger.processedSamples();
    m.shortReads = receiver.short_reads;
    m.fifoOverruns = receiver.fifo_overruns;
    m.clippedSamples = receiver.clipped_samples;
    m.samplesLostInShortReads = m_feed->lostSamples();
    m.samplesDropped = m_feed->droppedSamples();
    m.blocksDropped = m_feed->droppedBlocks();
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
    m.outputs = outputs();
    m.cpu = m_cpu.used(m_sound->thread());
    return m;
}

OutputResults Listener::outputs() const
{
    OutputResults results;
    const PreampControl &preamp = m_receiver->manager().preamp();
    results.preamp = {
        preamp.db(), preamp.overflows(), {preamp.steps().begin(), preamp.steps().end()}};
    if (m_recording)
        results.recording = {
            m_recording->file(), m_recording->samples(), m_recording->lostBlocks()};
    results.vac = m_outlets.vac();
    results.lineOut = m_outlets.lineOut();
    if (m_settings.spectrum.isWanted())
        results.spectrum = {m_pictures->lines(), m_pictures->points(), m_pictures->widthHz()};
    return results;
}

/// Everything is tried, whatever failed before.
void Listener::keepResults()
{
    std::FILE *where = m_settings.outFile == kStandardOutput ? stderr : stdout;
    std::fputs(Report(m_settings, m_result).text().toLocal8Bit().constData(), where);
    if (m_result.ending == kReceiverLost)
        fail("the receiver was lost", kFailure);
    if (m_result.ending == kReceiverSilent)
        fail(silence(), kFailure);
    // Before the device is given back, which depends on others.
    if (!m_receiver->saveSettings())
        fail(m_receiver->error(), kFailure);
    m_result.audioDelayMs = m_receiver->delayMs(m_settings);
    keepAudio();
    keepPictures();
    keepReport();
    m_stopSignal.setDeadline(true);
    if (!m_receiver->close())
        fail(m_receiver->error(), kFailure);
}

QString Listener::silence() const
{
    return QString("the receiver is silent; %1 s of %2 s came")
        .arg(double(m_ledger.processedSamples()) / m_settings.deviceRateHz, 0, 'f', 1)
        .arg(m_feed->plannedSeconds(), 0, 'f', 1);
}

void Listener::failOnFiles()
{
    if (!m_audioFile.isGood())
        fail(m_audioFile.error(), kFailure);
    for (const QString &problem : m_outlets.problems())
        fail(problem, kFailure);
    if (m_recording && !m_recording->error().isEmpty())
        fail(m_recording->error(), kFailure);
}

void Listener::keepAudio()
{
    m_audioFile.close();
    m_outlets.closeFiles();
    failOnFiles();
}

void Listener::keepPictures()
{
    m_pictures->save();
    for (const QString &problem : m_pictures->problems())
        fail(problem, kFailure);
    QString error;
    if (m_audioPicture && !m_audioPicture->save(m_settings.spectrum.audioSpectrumFile, &error))
        fail(error, kFailure);
}

void Listener::keepReport()
{
    if (m_settings.reportFile.isEmpty())
        return;
    const QByteArray text = QJsonDocument(Report(m_settings, m_result).json()).toJson();
    if (QString error; !vm::file::writeWhole(m_settings.reportFile, text, &error))
        fail(error, kFailure);
}

bool Listener::fail(const QString &text, int status)
{
    m_terminal.print(text);
    m_status = status;
    return false;
}
} // namespace host
