// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/Measurement.h"

#include "report/OutputReport.h"
#include "settings/Numbers.h"
#include "settings/OptionTable.h"
#include "stream/AudioFile.h"

#include <QJsonArray>
#include <QStringList>

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

QJsonObject optionsJson(const QVariantMap &given)
{
    QJsonObject json;
    for (const Option &option : optionTable())
        if (given.contains(option.name))
            json[option.reportKey()] = QJsonValue::fromVariant(given[option.name]);
    return json;
}

QJsonObject settingsJson(const HostSettings &settings, const Measurement &m)
{
    return {
        {"plugin", m.plugin},
        {"d2xx", m.d2xxFile},
        {"scene", m.scene},
        {"rate_hz", settings.deviceRateHz},
        {"center_hz", settings.centerHz},
        {"tune_hz", settings.tuneHz},
        {"mode", settings.mode->name},
        {"filter_hz", QJsonArray{settings.filterLowHz, settings.filterHighHz}},
        {"notches", notchesJson(settings.notches)},
        {"free_run", settings.freeRun},
        {"options", optionsJson(settings.given)},
    };
}

QJsonObject iqJson(const HostSettings &settings, const Measurement &m)
{
    QJsonObject json{
        {"samples_processed", double(m.samplesProcessed)},
        {"seconds", m.iqSeconds(settings)},
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

QJsonObject metersJson(const Measurement &m)
{
    return {
        {"channel_a_dbm", m.channelDbm},
        {"channel_b_dbm", m.channelBDbm},
        {"input_re_db", m.inputReDb},
        {"input_im_db", m.inputImDb},
        {"wfm_stereo", m.isStereo},
    };
}

QJsonObject audioJson(const HostSettings &settings, const Measurement &m)
{
    QJsonObject json{
        {"file", settings.outFile},
        {"rate_hz", AudioFile::kRateHz},
        {"frames", double(m.audioFrames)},
        {"seconds", double(m.audioFrames) / AudioFile::kRateHz},
        {"short_blocks", double(m.shortBlocks)},
        {"lost_frames", double(m.audioFramesLost)},
        {"rms_dbfs", m.audioRmsDbfs},
        {"peak_dbfs", m.audioPeakDbfs},
    };
    if (m.audioDelayMs)
        json["delay_ms"] = *m.audioDelayMs;
    return json;
}

QJsonObject timeJson(const HostSettings &settings, const Measurement &m)
{
    const double seconds = m.iqSeconds(settings);
    const auto load = [seconds](double cpu) { return ratio(cpu, seconds); };
    const CpuTimes &cpu = m.cpu;
    const double named = cpu.reader + cpu.device + cpu.engine + cpu.sound + cpu.main;
    return {
        {"wall_seconds", m.wallSeconds},
        {"real_time_factor", ratio(seconds, m.wallSeconds)},
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
/// What only the virtual receiver tells.
QString losses(const Measurement &m)
{
    if (!m.isVirtual)
        return {};
    return QString("; %1 blocks dropped, %2 short reads").arg(m.blocksDropped).arg(m.shortReads);
}
} // namespace

CpuTimes CpuTimes::operator-(const CpuTimes &start) const
{
    return {reader - start.reader, device - start.device, engine - start.engine,
        sound - start.sound, main - start.main, process - start.process};
}

double Measurement::iqSeconds(const HostSettings &settings) const
{
    return double(samplesProcessed) / settings.deviceRateHz;
}

QJsonObject toJson(const HostSettings &settings, const Measurement &measurement)
{
    QJsonObject json{
        {"settings", settingsJson(settings, measurement)},
        {"ending", measurement.ending},
        {"iq", iqJson(settings, measurement)},
        {"meters", metersJson(measurement)},
        {"audio", audioJson(settings, measurement)},
        {"time", timeJson(settings, measurement)},
    };
    addTo(json, settings, measurement.outputs);
    return json;
}

QString toText(const HostSettings &settings, const Measurement &m)
{
    const double seconds = m.iqSeconds(settings);
    const auto load = [seconds](double cpu) {
        return QString::number(100.0 * ratio(cpu, seconds), 'f', 1) + " %";
    };
    QStringList lines = {
        QString("Received  %1 %2, filter %3:%4 Hz, from %5 (%6 at %7): %8")
            .arg(formatHertz(settings.tuneHz), settings.mode->name)
            .arg(settings.filterLowHz)
            .arg(settings.filterHighHz)
            .arg(m.scene, formatHertz(settings.deviceRateHz), formatHertz(settings.centerHz),
                m.ending),
        QString("Input     %1 s of IQ, rms %2 dBFS, peak %3 dBFS%4")
            .arg(seconds, 0, 'f', 2)
            .arg(m.inputRmsDbfs, 0, 'f', 1)
            .arg(m.inputPeakDbfs, 0, 'f', 1)
            .arg(losses(m)),
        QString("Audio     %1 s, rms %2 dBFS, peak %3 dBFS; %4 short blocks")
            .arg(double(m.audioFrames) / AudioFile::kRateHz, 0, 'f', 2)
            .arg(m.audioRmsDbfs, 0, 'f', 1)
            .arg(m.audioPeakDbfs, 0, 'f', 1)
            .arg(m.shortBlocks),
        QString("Time      %1 s, %2 times real time; of a processor at real time: engine %3, "
                "reader %4, virtual receiver %5, all %6")
            .arg(m.wallSeconds, 0, 'f', 2)
            .arg(ratio(seconds, m.wallSeconds), 0, 'f', 1)
            .arg(load(m.cpu.engine), load(m.cpu.reader), load(m.cpu.device), load(m.cpu.process)),
    };
    lines += toLines(settings, m.outputs);
    return lines.join('\n') + '\n';
}
} // namespace host
