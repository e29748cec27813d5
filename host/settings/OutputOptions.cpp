// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/OutputOptions.h"

#include "settings/UsageError.h"

#include <iterator>

namespace host
{
namespace
{
using Format = vm::file::IQFile::Format;

// What the receiver limits its spectrum to.
constexpr int kSmallestFft = 256;
constexpr int kLargestFft = 65536;
constexpr int kMostAveraging = 30;
constexpr int kShortestIntervalMs = 10;
constexpr int kLongestIntervalMs = 40;

// The rates that sound cards and cables have.
constexpr int kLowestOutletHz = 8000;
constexpr int kHighestOutletHz = 192000;

constexpr struct
{
    const char *name;
    Format format;
} kLayouts[] = {
    {"vsdr", Format::VelmoraSDR2}, {"wave", Format::StandartWave}, {"hdsdr", Format::HDSDR}};

std::optional<int> readAveragingType(const OptionReader &options)
{
    if (!options.isSet("averaging-type"))
        return std::nullopt;
    for (int type = 0; type < int(std::size(kAveragingNames)); ++type)
        if (options.text("averaging-type") == kAveragingNames[type])
            return type;
    refuse(QString("--averaging-type: '%1' is none of linear, rms, exp")
               .arg(options.text("averaging-type")));
}

SpectrumSettings readSpectrum(const OptionReader &options)
{
    SpectrumSettings settings;
    settings.fftSize = options.findInteger("fft-size", kSmallestFft, kLargestFft);
    settings.averaging = options.findInteger("averaging", 1, kMostAveraging);
    settings.averagingType = readAveragingType(options);
    settings.intervalMs =
        options.findInteger("fft-interval", kShortestIntervalMs, kLongestIntervalMs);
    settings.hideSlopes = options.isSet("hide-slopes");
    settings.waterfallFilter = options.isSet("waterfall-filter");
    settings.panoramaFile = options.file("panorama");
    settings.waterfallFile = options.file("waterfall");
    settings.audioSpectrumFile = options.file("audio-spectrum");
    return settings;
}

RecordingSettings readRecording(const OptionReader &options)
{
    options.require("record-path", "record");
    RecordingSettings settings;
    if (options.isSet("record-path"))
        settings.folder = options.file("record-path");
    if (!options.isSet("record"))
        return settings;
    for (const auto &layout : kLayouts)
        if (options.text("record") == layout.name)
            settings.format = layout.format;
    if (!settings.format)
        refuse(QString("--record: '%1' is none of vsdr, wave, hdsdr").arg(options.text("record")));
    return settings;
}
} // namespace

void declareOutputOptions(QCommandLineParser &parser)
{
    parser.addOptions({
        {"out", "Audio file to write: 48 kHz, stereo, 32-bit float.", "FILE.wav"},
        {"vac-out", "The same from the virtual audio cable.", "FILE.wav"},
        {"vac-rate", "Rate of the virtual audio cable, 8k to 192k. Default 48k.", "HZ"},
        {"line-out", "The same from the line output, which runs at 48 kHz.", "FILE.wav"},
        {"record", "Record the IQ in a layout: vsdr, wave or hdsdr.", "LAYOUT"},
        {"record-path", "Folder for the recording. Default: the current one.", "DIR"},
        {"panorama", "Picture of the received band.", "FILE.png"},
        {"waterfall", "Picture of the received band over time.", "FILE.png"},
        {"audio-spectrum", "Picture of the spectrum of the audio.", "FILE.png"},
        {"fft-size", "Points of the band's spectrum, 256 to 65536. Default 4096.", "N"},
        {"averaging", "Lines that the panorama averages, 1 to 30.", "N"},
        {"averaging-type", "How: linear, rms or exp.", "TYPE"},
        {"fft-interval", "Time between lines, 10 to 40.", "MS"},
        {"hide-slopes", "Leave out the edges of the band, where the input filter falls off."},
        {"waterfall-filter", "Smooth the waterfall over time."},
        {"report", "Report to write.", "FILE.json"},
    });
}

void readOutputOptions(const OptionReader &options, HostSettings &settings)
{
    settings.outFile = options.file("out");
    settings.reportFile = options.file("report");
    options.require("vac-rate", "vac-out");
    settings.vac.file = options.file("vac-out");
    settings.vac.rateHz = options.findInteger("vac-rate", kLowestOutletHz, kHighestOutletHz)
                              .value_or(settings.vac.rateHz);
    settings.lineOut.file = options.file("line-out");
    settings.spectrum = readSpectrum(options);
    settings.recording = readRecording(options);
}
} // namespace host
