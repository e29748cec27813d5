// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/HostSettings.h"
#include "settings/OptionTable.h"

#include "host_interfaces/DeviceAbstract.h"
#include "host_interfaces/DeviceManagerAbstract.h"

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

const QStringList kLayouts = {"vsdr", "wave", "hdsdr"};
constexpr Format kLayoutFormats[] = {Format::VelmoraSDR2, Format::StandartWave, Format::HDSDR};

const QStringList kAveragings = {"linear", "rms", "exp"}; // by the device's numbers

constexpr double kLongestDeemphasisUs = 1000.0;

const QStringList kAudioFiles = {"out", "vac-out", "line-out"};
const QStringList kBandPictures = {"panorama", "waterfall"};

/// Keeps a file name in a part of the settings.
template <typename Part>
auto in(Part HostSettings::*part, QString Part::*file)
{
    return [=](HostSettings &settings, const QVariant &value) {
        settings.*part.*file = value.toString();
    };
}
} // namespace

std::vector<Option> outputOptions()
{
    return {
        {.name = "out",
            .argument = "FILE.wav",
            .help = "Audio file to write: 48 kHz, stereo, 32-bit float; - for the standard output",
            .value = fileName(),
            .keep =
                [](HostSettings &settings, const QVariant &file) {
                    settings.outFile = file == "-" ? kStandardOutput : file.toString();
                }},
        {.name = "vac-out",
            .argument = "FILE.wav",
            .help = "The same from the virtual audio cable",
            .value = fileName(),
            .keep = in(&HostSettings::vac, &OutletSettings::file)},
        {.name = "vac-rate",
            .argument = "HZ",
            .help = "Rate of the virtual audio cable",
            .value = wholeNumber(kLowestOutletHz, kHighestOutletHz),
            .standard = "48k",
            .needs = "vac-out",
            .keep = [](HostSettings &settings,
                        const QVariant &hertz) { settings.vac.rateHz = hertz.toInt(); }},
        {.name = "line-out",
            .argument = "FILE.wav",
            .help = "The same from the line output, which runs at 48 kHz",
            .value = fileName(),
            .keep = in(&HostSettings::lineOut, &OutletSettings::file)},
        {.name = "invert",
            .help = "Turn the audio of the files upside down, as decoders of pagers need it: what "
                    "NFM and SAM give is inverted",
            .serves = kAudioFiles,
            .keep = host::in(&HostSettings::isInverted)},
        {.name = "deemphasis",
            .argument = "US",
            .help = "Time constant by which treble falls off in the audio of the files, as 75 for "
                    "American broadcasts or 750 for voice radios",
            .value = number(0.0, kLongestDeemphasisUs),
            .otherwise = "50 of WFM, none of NFM",
            .modes = {Mode::NFM, Mode::WFM},
            .serves = kAudioFiles,
            .keep = [](HostSettings &settings,
                        const QVariant &us) { settings.deemphasisUs = us.toDouble(); }},
        {.name = "record",
            .argument = "LAYOUT",
            .help = "Record the IQ in a layout",
            .value = oneOf(kLayouts),
            .keep =
                [](HostSettings &settings, const QVariant &layout) {
                    settings.recording.format = kLayoutFormats[kLayouts.indexOf(layout.toString())];
                }},
        {.name = "record-path",
            .argument = "DIR",
            .help = "Folder for the recording",
            .value = fileName(),
            .otherwise = "the current one",
            .needs = "record",
            .keep = in(&HostSettings::recording, &RecordingSettings::folder)},
        {.name = "panorama",
            .argument = "FILE.png",
            .help = "Picture of the received band",
            .value = fileName(),
            .keep = in(&HostSettings::spectrum, &SpectrumSettings::panoramaFile)},
        {.name = "waterfall",
            .argument = "FILE.png",
            .help = "Picture of the received band over time",
            .value = fileName(),
            .keep = in(&HostSettings::spectrum, &SpectrumSettings::waterfallFile)},
        {.name = "audio-spectrum",
            .argument = "FILE.png",
            .help = "Picture of the spectrum of the audio",
            .value = fileName(),
            .keep = in(&HostSettings::spectrum, &SpectrumSettings::audioSpectrumFile)},
        {.name = "fft-size",
            .argument = "N",
            .help = "Points of the band\'s spectrum",
            .value = wholeNumber(kSmallestFft, kLargestFft),
            .otherwise = "4096",
            .serves = kBandPictures,
            .setUp = [](const OptionTarget &to,
                         const QVariant &points) { to.device.setFftSize(points.toUInt()); }},
        {.name = "averaging",
            .argument = "N",
            .help = "Lines that the panorama averages",
            .value = wholeNumber(1, kMostAveraging),
            .serves = {"panorama"},
            .setUp = [](const OptionTarget &to,
                         const QVariant &lines) { to.device.setFftAveragingNum(lines.toUInt()); }},
        {.name = "averaging-type",
            .argument = "TYPE",
            .help = "How they are averaged",
            .value = oneOf(kAveragings),
            .serves = {"panorama"},
            .setUp =
                [](const OptionTarget &to, const QVariant &type) {
                    to.device.setFftAveragingType(unsigned(kAveragings.indexOf(type.toString())));
                }},
        {.name = "fft-interval",
            .argument = "MS",
            .help = "Time between lines",
            .value = wholeNumber(kShortestIntervalMs, kLongestIntervalMs),
            .serves = kBandPictures,
            .setUp = [](const OptionTarget &to,
                         const QVariant &ms) { to.device.setFftUpdateTime(ms.toUInt()); }},
        {.name = "hide-slopes",
            .help = "Leave out the edges of the band, where the input filter falls off",
            .serves = kBandPictures,
            .setUp =
                [](const OptionTarget &to, const QVariant &) {
                    to.manager.hideSpectrumSlopes = true;
                    emit to.manager.hideSpectrumSlopesChanged(true);
                }},
        {.name = "waterfall-filter",
            .help = "Smooth the waterfall over time",
            .serves = {"waterfall"},
            .setUp = [](const OptionTarget &to,
                         const QVariant &) { emit to.manager.waterfallFilterChanged(true); }},
        {.name = "report",
            .argument = "FILE.json",
            .help = "Report to write",
            .value = fileName(),
            .keep = host::in(&HostSettings::reportFile)},
    };
}
} // namespace host
