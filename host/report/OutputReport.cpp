// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/OutputReport.h"

#include "settings/Numbers.h"
#include "stream/AudioFile.h"

#include <QJsonArray>

namespace host
{
namespace
{
QJsonObject toJson(const OutputResults::Preamp &preamp)
{
    QJsonArray steps;
    for (const PreampControl::Step &step : preamp.steps)
        steps += QJsonObject{{"seconds", step.seconds}, {"delta_db", step.deltaDb},
            {"from_db", double(step.fromDb)}, {"to_db", double(step.toDb)}};
    return {{"db", preamp.db}, {"overflows", double(preamp.overflows)}, {"steps", steps}};
}

QJsonObject toJson(const OutputResults::Recording &recording, int rateHz)
{
    return {{"file", recording.file}, {"samples", double(recording.samples)},
        {"seconds", double(recording.samples) / rateHz},
        {"refused_blocks", double(recording.lostBlocks)}};
}

QJsonObject toJson(const OutputResults::Outlet &outlet, const OutletSettings &settings)
{
    return {{"file", settings.file}, {"rate_hz", settings.rateHz},
        {"frames", double(outlet.frames)}, {"rms_dbfs", outlet.rmsDbfs},
        {"peak_dbfs", outlet.peakDbfs}};
}

QJsonObject toJson(const OutputResults::Spectrum &spectrum, const SpectrumSettings &settings)
{
    return {{"panorama", settings.panoramaFile}, {"waterfall", settings.waterfallFile},
        {"lines", double(spectrum.lines)}, {"points", double(spectrum.points)},
        {"width_hz", spectrum.widthHz}};
}

QString toLine(
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

void addTo(QJsonObject &json, const HostSettings &settings, const OutputResults &results)
{
    json["preamp"] = toJson(results.preamp);
    if (results.recording)
        json["recording"] = toJson(*results.recording, settings.deviceRateHz);
    if (results.vac)
        json["vac"] = toJson(*results.vac, settings.vac);
    if (results.lineOut)
        json["line_out"] = toJson(*results.lineOut, settings.lineOut);
    if (results.spectrum)
        json["spectrum"] = toJson(*results.spectrum, settings.spectrum);
}

QStringList toLines(const HostSettings &settings, const OutputResults &results)
{
    QStringList lines;
    if (settings.autoPreamp || results.preamp.overflows > 0)
        lines += QString("Preamp    %1 dB after %2 steps; %3 overflows")
                     .arg(results.preamp.db)
                     .arg(results.preamp.steps.size())
                     .arg(results.preamp.overflows);
    if (results.recording)
        lines += QString("Recording %1 s, %2 blocks refused: %3")
                     .arg(double(results.recording->samples) / settings.deviceRateHz, 0, 'f', 2)
                     .arg(results.recording->lostBlocks)
                     .arg(results.recording->file);
    if (results.vac)
        lines += toLine("VAC", *results.vac, settings.vac);
    if (results.lineOut)
        lines += toLine("Line out", *results.lineOut, settings.lineOut);
    if (results.spectrum)
        lines += QString("Spectrum  %1 lines of %2 points, %3 wide")
                     .arg(results.spectrum->lines)
                     .arg(results.spectrum->points)
                     .arg(formatHertz(results.spectrum->widthHz));
    return lines;
}
} // namespace host
