// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/DeviceRates.h"
#include "settings/HostSettings.h"
#include "settings/NotchLimits.h"
#include "settings/Numbers.h"
#include "settings/OptionTable.h"
#include "settings/ToolLimits.h"
#include "settings/UsageError.h"

#include "library/DeviceKind.h"

#include "host_interfaces/DeviceAbstract.h"

namespace host
{
namespace
{
constexpr int kReceiver = 0;
constexpr int kChannelA = 0;

// What the receiver says of itself: one band from 0 to 800 MHz.
constexpr double kHighestFrequencyHz = 800e6;
constexpr double kHighestSceneRateHz = 100e6;

constexpr int kHighestPort = 65535;

constexpr double kShortestRunSeconds = 1e-3;
constexpr double kLongestRunSeconds = 86400.0; // a day; more is a slip of the finger

// The ranges of the controls on the receiver's options page, which would limit a value silently.
constexpr int kLowestOffsetHz = 2;
constexpr int kHighestOffsetHz = 10000;

/// Where DIGL or DIGU puts the tuned frequency in the audio, a stored setting of the device.
Option pitchOffset(const char *name, Mode mode, const char *otherwise, const char *key)
{
    return {.name = name,
        .argument = "HZ",
        .help = "Pitch at which --tune is heard",
        .value = wholeNumber(kLowestOffsetHz, kHighestOffsetHz),
        .otherwise = otherwise,
        .modes = {mode},
        .stored = key};
}

QStringList deviceKeys()
{
    QStringList keys;
    for (const DeviceKind &kind : deviceKinds())
        keys += kind.key;
    return keys;
}

ValueCheck deviceRate()
{
    const auto read = [](const QString &text) {
        const double rate = numberFrom(text);
        if (!isDeviceRate(rate))
            refuse(QString("%1 is none of %2").arg(text, deviceRateNames()));
        return int(rate);
    };
    return {read, ": " + deviceRateNames()};
}

ValueCheck edges()
{
    const auto read = [](const QString &text) {
        const QStringList parts = text.split(':');
        const auto low = parseNumber(parts.first());
        const auto high = parseNumber(parts.last());
        if (parts.size() != 2 || !low || !high)
            refuse(QString("'%1' is not LOW:HIGH").arg(text));
        if (*low >= *high)
            refuse(text + " does not rise");
        return QVariantList{*low, *high};
    };
    return {read, {}};
}

ValueCheck notch()
{
    const auto read = [](const QString &text) {
        const QStringList parts = text.split(':');
        const auto frequency = parseNumber(parts.first());
        const auto width = parts.size() == 1 ? NotchSettings().widthHz : parseNumber(parts.last());
        if (parts.size() > 2 || !frequency || !width)
            refuse(QString("'%1' is not HZ or HZ:WIDTH").arg(text));
        if (*width < NotchLimits::kMinWidthHz || *width > NotchLimits::kMaxWidthHz)
            refuse(QString("the width %1 is outside %2 to %3")
                       .arg(parts.last(), formatNumber(NotchLimits::kMinWidthHz),
                           formatNumber(NotchLimits::kMaxWidthHz)));
        return QVariantList{*frequency, *width};
    };
    return {read, {}};
}

ValueCheck repairs()
{
    const auto read = [](const QString &text) {
        if (text == "none")
            return QStringList();
        if (text == "all")
            return Repairs::all().names();
        QStringList unknown;
        const Repairs asked = Repairs::named(text.split(','), unknown);
        if (!unknown.isEmpty())
            refuse(QString("'%1' is neither none nor all nor one of %2")
                       .arg(unknown.first(), Repairs::all().names().join(", ")));
        return asked.names();
    };
    return {read, ": none, all or of " + Repairs::all().names().join(", ")};
}

void keepMode(HostSettings &settings, const QVariant &name)
{
    settings.mode = findMode(name.toString());
    settings.filterLowHz = settings.mode->filterLowHz;
    settings.filterHighHz = settings.mode->filterHighHz;
}

void keepFilter(HostSettings &settings, const QVariant &edges)
{
    settings.filterLowHz = edges.toList().first().toDouble();
    settings.filterHighHz = edges.toList().last().toDouble();
}

void keepNotch(HostSettings &settings, const QVariant &notch)
{
    settings.notches.append({notch.toList().first().toDouble(), notch.toList().last().toDouble()});
    if (std::size_t(settings.notches.size()) > NotchLimits::kFilters)
        refuse(QString("there are %1 filters").arg(NotchLimits::kFilters));
}
} // namespace

std::vector<Option> receptionOptions()
{
    return {
        {.name = "headless", .help = "Run without a window"},
        {.name = "plugin",
            .argument = "FILE",
            .help = "Device plugin to load",
            .value = fileName(),
            .otherwise = "the one that came with the program",
            .keep = in(&HostSettings::pluginFile)},
        {.name = "device",
            .argument = "KIND",
            .help = "Where the receiver is: in the program, which needs no hardware, or on the USB",
            .value = oneOf(deviceKeys()),
            .otherwise = "as chosen in the window, at first " + deviceKeys().first(),
            .keep = in(&HostSettings::device)},
        {.name = "d2xx",
            .argument = "FILE",
            .help = "Library by which the receiver is reached",
            .value = fileName(),
            .otherwise = "by --device",
            .keep = in(&HostSettings::d2xxFile)},
        {.name = "settings",
            .argument = "FILE",
            .help =
                "Settings file of the receiver\'s options. What the command line says holds for "
                "this run only",
            .value = fileName(),
            .otherwise = "the user\'s own",
            .keep = in(&HostSettings::settingsFile)},
        {.name = "repairs",
            .argument = "LIST",
            .help = "Dead ends of the receiver to mend, with commas between",
            .value = repairs(),
            .standard = "all",
            .keep = in(&HostSettings::repairs)},
        {.name = "scene",
            .argument = "FILE",
            .help = "IQ recording or band description (.band)",
            .value = fileName(),
            .otherwise = "the built-in band",
            .keep = in(&HostSettings::sceneFile)},
        {.name = "scene-format",
            .argument = "FORMAT",
            .help = "Format of the recording",
            .value = oneOf({"wav", "f64", "f32", "s16", "u8"}),
            .otherwise = "by the file\'s name",
            .needs = "scene",
            .keep = in(&HostSettings::sceneFormat)},
        {.name = "scene-rate",
            .argument = "HZ",
            .help = "Sample rate of a raw recording",
            .value = number(1.0, kHighestSceneRateHz),
            .needs = "scene",
            .keep = in(&HostSettings::sceneRateHz)},
        {.name = "scene-frequency",
            .argument = "HZ",
            .help = "Radio frequency of the recording's 0 Hz",
            .value = number(0.0, kHighestFrequencyHz),
            .needs = "scene",
            .keep = in(&HostSettings::sceneFrequencyHz)},
        {.name = "rate",
            .argument = "HZ",
            .help = "Sample rate of the receiver",
            .value = deviceRate(),
            .standard = "192k",
            .keep = in(&HostSettings::deviceRateHz)},
        {.name = "center",
            .argument = "HZ",
            .help = "Frequency of the receiver",
            .value = number(0.0, kHighestFrequencyHz),
            .otherwise = "--scene-frequency or 7.1M, or else --tune",
            .keep = in(&HostSettings::centerHz)},
        {.name = "tune",
            .argument = "HZ",
            .help = "Frequency to listen to",
            .value = number(0.0, kHighestFrequencyHz),
            .otherwise = "the centre, but of the built-in band a station for the mode",
            .keep = in(&HostSettings::tuneHz)},
        {.name = "mode",
            .argument = "MODE",
            .help = "Kind of modulation",
            .value = oneOf(modeNames()),
            .standard = "USB",
            .keep = keepMode},
        {.name = "filter",
            .argument = "LOW:HIGH",
            .help = "Band filter relative to --tune, as 300:2700 (USB) or -2700:-300 (LSB)",
            .value = edges(),
            .otherwise = "by the mode, see below",
            .keep = keepFilter},
        {.name = "rit",
            .argument = "HZ",
            .help = "Receive so much beside --tune",
            .value = wholeNumber(-limits::kMostRitHz, limits::kMostRitHz),
            .setUp =
                [](const OptionTarget &to, const QVariant &hertz) {
                    to.device.setRit(kReceiver, kChannelA, hertz.toDouble());
                }},
        pitchOffset("digl-offset", Mode::DIGL, "as stored, at first 2200", "dsp_digl_offset"),
        pitchOffset("digu-offset", Mode::DIGU, "as stored, at first 1500", "dsp_digu_offset"),
        {.name = "preamp",
            .argument = "DB",
            .help = "Level in front of the receiver's converter, -31.5 to 6 in steps of 0.5, 0 "
                    "being neither attenuator nor amplifier",
            .value = {[](const QString &text) { return numberFrom(text); }, {}},
            .standard = "0",
            .keep = in(&HostSettings::preampDb)},
        {.name = "auto-preamp",
            .help = "Let the receiver choose it while it runs; in real time only",
            .keep = in(&HostSettings::autoPreamp)},
        {.name = "notch",
            .argument = "HZ[:WIDTH]",
            .help = "Take out a frequency of the band, 100 Hz or so many wide; up to eight times",
            .value = notch(),
            .isRepeatable = true,
            .keep = keepNotch},
        {.name = "seconds",
            .argument = "S",
            .help = "Seconds of IQ",
            .value = number(kShortestRunSeconds, kLongestRunSeconds),
            .otherwise = "the whole scene, 10 of an endless one",
            .keep = in(&HostSettings::seconds)},
        {.name = "free-run",
            .help = "As fast as possible, without losing a sample; gives the same file each time",
            .keep = in(&HostSettings::freeRun)},
        {.name = "rig-port",
            .argument = "PORT",
            .help = "Let programs on this computer tune the receiver while it runs, by the "
                    "protocol of hamlib's rigctld; usually port 4532",
            .value = wholeNumber(1, kHighestPort),
            .otherwise = "off",
            .keep = [](HostSettings &settings,
                        const QVariant &port) { settings.rigPort = quint16(port.toUInt()); }},
        {.name = "eeprom",
            .argument = "FILE",
            .help = "File that holds the receiver's EEPROM",
            .value = fileName(),
            .keep = in(&HostSettings::eepromFile)},
        {.name = "fault",
            .argument = "SPEC",
            .help = "Faults to produce, for example lost-byte@1000",
            .value = anyText(),
            .keep = in(&HostSettings::fault)},
        {.name = "verbose",
            .help = "Show the remarks of plugin and libraries, too",
            .keep = in(&HostSettings::verbose)},
    };
}
} // namespace host
