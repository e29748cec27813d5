// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/Report.h"

#include "settings/Numbers.h"
#include "settings/OptionTable.h"
#include "stream/AudioFile.h"

#include <QJsonArray>

#include <algorithm>

namespace host
{
namespace
{
double ratio(double a, double b)
{
    return b > 0.0 ? a / b : 0.0;
}

QJsonArray notchesJson(const QVector<NotchSettings> &notches)
{
    QJsonArray array;
    for (const NotchSettings &notch : notches)
        array += QJsonArray{notch.frequencyHz, notch.widthHz};
    return array;
}

QJsonObject outletJson(const OutputResults::Outlet &outlet, const OutletSettings &settings)
{
    return {{"file", settings.file}, {"rate_hz", settings.rateHz},
        {"frames", double(outlet.frames)}, {"rms_dbfs", outlet.rmsDbfs},
        {"peak_dbfs", outlet.peakDbfs}};
}

QString outletLine(
    const char *name, const OutputResults::Outlet &outlet, const OutletSettings &settings)
{
    return QString("%1 %2 s at %3, rms %4 dBFS: %5")
        .arg(name, -9)
        .arg(double(outlet.frames) / settings.rateHz, 0, 'f', 2)
        .arg(formatHertz(settings.rateHz))
        .arg(outlet.rmsDbfs, 0, 'f', 1)
        .arg(settings.file);
}
} // namespace

double Report::load(double cpuSeconds) const
{
    return ratio(cpuSeconds, m_measured.iqSeconds(m_settings));
}

QJsonObject Report::json() const
{
    QJsonObject json{
        {"settings", settingsJson()},
        {"ending", m_measured.ending},
        {"iq", iqJson()},
        {"meters", metersJson()},
        {"audio", audioJson()},
        {"time", timeJson()},
        {"preamp", preampJson()},
    };
    const OutputResults &outputs = m_measured.outputs;
    if (outputs.recording)
        json["recording"] = recordingJson();
    if (outputs.vac)
        json["vac"] = outletJson(*outputs.vac, m_settings.vac);
    if (outputs.lineOut)
        json["line_out"] = outletJson(*outputs.lineOut, m_settings.lineOut);
    if (outputs.spectrum)
        json["spectrum"] = spectrumJson();
    return json;
}

QJsonObject Report::settingsJson() const
{
    return {
        {"plugin", m_measured.plugin},
        {"d2xx", m_measured.d2xxFile},
        {"scene", m_measured.scene},
        {"rate_hz", m_settings.deviceRateHz},
        {"center_hz", m_settings.centerHz},
        {"tune_hz", m_settings.tuneHz},
        {"mode", m_settings.mode->name},
        {"filter_hz", QJsonArray{m_settings.filterLowHz, m_settings.filterHighHz}},
        {"notches", notchesJson(m_settings.notches)},
        {"free_run", m_settings.freeRun},
        {"repairs", QJsonArray::fromStringList(m_settings.repairs)},
        {"options", optionsJson()},
    };
}

QJsonObject Report::optionsJson() const
{
    QJsonObject json;
    for (const Option &option : optionTable())
        if (m_settings.given.contains(option.name))
            json[option.reportKey()] = QJsonValue::fromVariant(m_settings.given[option.name]);
    return json;
}

QJsonObject Report::iqJson() const
{
    const Measurement &m = m_measured;
    QJsonObject json{
        {"samples_processed", double(m.samplesProcessed)},
        {"seconds", m.iqSeconds(m_settings)},
        {"short_read_samples", double(m.samplesLostInShortReads)},
        {"input_rms_dbfs", m.inputRmsDbfs},
        {"input_peak_dbfs", m.inputPeakDbfs},
        {"channel_dbm", m.channelDbm},
    };
    if (!m.isVirtual)
        return json;
    json["samples_sent"] = double(m.samplesSent);
    json["dropped_blocks"] = double(m.blocksDropped);
    json["dropped_samples"] = double(m.samplesDropped);
    json["short_reads"] = double(m.shortReads);
    json["fifo_overruns"] = double(m.fifoOverruns);
    json["clipped_samples"] = double(m.clippedSamples);
    return json;
}

QJsonObject Report::metersJson() const
{
    return {
        {"channel_a_dbm", m_measured.channelDbm},
        {"channel_b_dbm", m_measured.channelBDbm},
        {"input_re_db", m_measured.inputReDb},
        {"input_im_db", m_measured.inputImDb},
        {"wfm_stereo", m_measured.isStereo},
    };
}

QJsonObject Report::audioJson() const
{
    QJsonObject json{
        {"file", m_settings.outFile},
        {"rate_hz", AudioFile::kRateHz},
        {"frames", double(m_measured.audioFrames)},
        {"seconds", double(m_measured.audioFrames) / AudioFile::kRateHz},
        {"short_blocks", double(m_measured.shortBlocks)},
        {"lost_frames", double(m_measured.audioFramesLost)},
        {"rms_dbfs", m_measured.audioRmsDbfs},
        {"peak_dbfs", m_measured.audioPeakDbfs},
    };
    if (m_measured.audioDelayMs)
        json["delay_ms"] = *m_measured.audioDelayMs;
    return json;
}

QJsonObject Report::timeJson() const
{
    const CpuTimes &cpu = m_measured.cpu;
    const double named = cpu.reader + cpu.device + cpu.engine + cpu.sound + cpu.main;
    return {
        {"wall_seconds", m_measured.wallSeconds},
        {"real_time_factor", ratio(m_measured.iqSeconds(m_settings), m_measured.wallSeconds)},
        {"cpu_seconds_per_iq_second",
            QJsonObject{
                {"reader", load(cpu.reader)},
                {"virtual_receiver", load(cpu.device)},
                {"engine", load(cpu.engine)},
                {"sound", load(cpu.sound)},
                {"main", load(cpu.main)},
                {"other", load(std::max(0.0, cpu.process - named))},
                {"all", load(cpu.process)},
            }},
    };
}

QJsonObject Report::preampJson() const
{
    const OutputResults::Preamp &preamp = m_measured.outputs.preamp;
    QJsonArray steps;
    for (const PreampControl::Step &step : preamp.steps)
        steps += QJsonObject{{"seconds", step.seconds}, {"delta_db", step.deltaDb},
            {"from_db", double(step.fromDb)}, {"to_db", double(step.toDb)}};
    return {{"db", preamp.db}, {"overflows", double(preamp.overflows)}, {"steps", steps}};
}

QJsonObject Report::recordingJson() const
{
    const OutputResults::Recording &recording = *m_measured.outputs.recording;
    return {{"file", recording.file}, {"samples", double(recording.samples)},
        {"seconds", double(recording.samples) / m_settings.deviceRateHz},
        {"refused_blocks", double(recording.lostBlocks)}};
}

QJsonObject Report::spectrumJson() const
{
    const OutputResults::Spectrum &spectrum = *m_measured.outputs.spectrum;
    return {{"panorama", m_settings.spectrum.panoramaFile},
        {"waterfall", m_settings.spectrum.waterfallFile}, {"lines", double(spectrum.lines)},
        {"points", double(spectrum.points)}, {"width_hz", spectrum.widthHz}};
}

QString Report::text() const
{
    const QStringList lines = {receivedLine(), inputLine(), audioLine(), timeLine(), repairsLine()};
    return (lines + outputLines()).join('\n') + '\n';
}

QString Report::receivedLine() const
{
    return QString("Received  %1 %2, filter %3:%4 Hz, from %5 (%6 at %7): %8")
        .arg(formatHertz(m_settings.tuneHz), m_settings.mode->name)
        .arg(m_settings.filterLowHz)
        .arg(m_settings.filterHighHz)
        .arg(m_measured.scene, formatHertz(m_settings.deviceRateHz),
            formatHertz(m_settings.centerHz), m_measured.ending);
}

QString Report::inputLine() const
{
    const Measurement &m = m_measured;
    QString line = QString("Input     %1 s of IQ, rms %2 dBFS, peak %3 dBFS")
                       .arg(m.iqSeconds(m_settings), 0, 'f', 2)
                       .arg(m.inputRmsDbfs, 0, 'f', 1)
                       .arg(m.inputPeakDbfs, 0, 'f', 1);
    if (m.isVirtual) // of real hardware nobody knows
        line +=
            QString("; %1 blocks dropped, %2 short reads").arg(m.blocksDropped).arg(m.shortReads);
    return line;
}

QString Report::audioLine() const
{
    const Measurement &m = m_measured;
    return QString("Audio     %1 s, rms %2 dBFS, peak %3 dBFS; %4 short blocks")
        .arg(double(m.audioFrames) / AudioFile::kRateHz, 0, 'f', 2)
        .arg(m.audioRmsDbfs, 0, 'f', 1)
        .arg(m.audioPeakDbfs, 0, 'f', 1)
        .arg(m.shortBlocks);
}

QString Report::timeLine() const
{
    const Measurement &m = m_measured;
    const auto percent = [this](double cpu) {
        return QString::number(100.0 * load(cpu), 'f', 1) + " %";
    };
    return QString("Time      %1 s, %2 times real time; of a processor at real time: engine %3, "
                   "reader %4, virtual receiver %5, all %6")
        .arg(m.wallSeconds, 0, 'f', 2)
        .arg(ratio(m.iqSeconds(m_settings), m.wallSeconds), 0, 'f', 1)
        .arg(percent(m.cpu.engine), percent(m.cpu.reader), percent(m.cpu.device),
            percent(m.cpu.process));
}

QString Report::repairsLine() const
{
    const QStringList &names = m_settings.repairs;
    return "Repairs   " + (names.isEmpty() ? "none" : names.join(", "));
}

QStringList Report::outputLines() const
{
    const OutputResults &outputs = m_measured.outputs;
    QStringList lines;
    if (m_settings.autoPreamp || outputs.preamp.overflows > 0)
        lines += QString("Preamp    %1 dB after %2 steps; %3 overflows")
                     .arg(outputs.preamp.db)
                     .arg(outputs.preamp.steps.size())
                     .arg(outputs.preamp.overflows);
    if (outputs.recording)
        lines += QString("Recording %1 s, %2 blocks refused: %3")
                     .arg(double(outputs.recording->samples) / m_settings.deviceRateHz, 0, 'f', 2)
                     .arg(outputs.recording->lostBlocks)
                     .arg(outputs.recording->file);
    if (outputs.vac)
        lines += outletLine("VAC", *outputs.vac, m_settings.vac);
    if (outputs.lineOut)
        lines += outletLine("Line out", *outputs.lineOut, m_settings.lineOut);
    if (outputs.spectrum)
        lines += QString("Spectrum  %1 lines of %2 points, %3 wide")
                     .arg(outputs.spectrum->lines)
                     .arg(outputs.spectrum->points)
                     .arg(formatHertz(outputs.spectrum->widthHz));
    return lines;
}
} // namespace host
