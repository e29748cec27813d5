// SPDX-License-Identifier: GPL-3.0-or-later
// What the listener measures and keeps when the stream is over.
#include "program/Listener.h"

#include "library/FtReadMeter.h"

#include <QJsonDocument>

#include <algorithm>
#include <cstdio>

namespace host
{
CpuTimes Listener::cpuTimes() const
{
    const auto &reads = FtReadMeter::instance();
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
    m.cpu = cpuTimes() - m_cpuAtStart;
    return m;
}

OutputResults Listener::outputs() const
{
    const auto outlet = [](const std::optional<OutletFile> &file) {
        std::optional<OutputResults::Outlet> result;
        if (file)
            result = {file->frames(), file->level().rmsDb(), file->level().peakDb()};
        return result;
    };
    OutputResults results;
    const PreampControl &preamp = m_receiver->manager().preamp();
    results.preamp = {
        preamp.db(), preamp.overflows(), {preamp.steps().begin(), preamp.steps().end()}};
    if (m_recording)
        results.recording = {
            m_recording->file(), m_recording->samples(), m_recording->lostBlocks()};
    results.vac = outlet(m_vac);
    results.lineOut = outlet(m_lineOut);
    if (m_settings.spectrum.isWanted())
        results.spectrum = {m_pictures->lines(), m_pictures->points(), m_pictures->widthHz()};
    return results;
}

/// Everything is tried, whatever failed before.
void Listener::keepResults()
{
    std::FILE *where = m_settings.outFile == kStandardOutput ? stderr : stdout;
    std::fputs(toText(m_settings, m_result).toLocal8Bit().constData(), where);
    if (m_result.ending == kReceiverLost)
        refuse("the receiver was lost", kFailure);
    if (!m_receiver->close())
        refuse(m_receiver->error(), kFailure);
    m_result.audioDelayMs = m_receiver->delayMs(m_settings);
    keepAudio();
    keepPictures();
    keepReport();
}

void Listener::tellOfFiles()
{
    if (!m_audioFile.isGood())
        refuse(m_audioFile.error(), kFailure);
    for (const auto *outlet : {&m_vac, &m_lineOut})
        if (*outlet && !(*outlet)->file().isGood())
            refuse((*outlet)->error(), kFailure);
    if (m_recording && !m_recording->error().isEmpty())
        refuse(m_recording->error(), kFailure);
}

void Listener::keepAudio()
{
    m_audioFile.close();
    for (auto *outlet : {&m_vac, &m_lineOut})
        if (*outlet)
            (*outlet)->close();
    tellOfFiles();
}

void Listener::keepPictures()
{
    if (!m_pictures->save())
        refuse(m_pictures->error(), kFailure);
    QString error;
    if (m_audioPicture && !m_audioPicture->save(m_settings.spectrum.audioSpectrumFile, &error))
        refuse(error, kFailure);
}

void Listener::keepReport()
{
    if (!m_reportFile)
        return;
    // A full disk shows when the text is flushed, which commit() does not look at.
    const QByteArray text = QJsonDocument(toJson(m_settings, m_result)).toJson();
    if (m_reportFile->write(text) != text.size() || !m_reportFile->flush()
        || !m_reportFile->commit())
        refuse(m_settings.reportFile + ": " + m_reportFile->errorString(), kFailure);
}
} // namespace host
