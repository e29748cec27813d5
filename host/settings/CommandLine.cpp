// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/CommandLine.h"

#include "settings/DeviceRates.h"
#include "settings/Numbers.h"
#include "settings/OptionReader.h"
#include "settings/OutputOptions.h"
#include "settings/ToolOptions.h"

#include "settings/NotchLimits.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cmath>

namespace host
{
namespace
{
// What the receiver says of itself: one band from 0 to 800 MHz.
constexpr double kHighestFrequencyHz = 800e6;

// A day; a longer run is a slip of the finger.
constexpr double kLongestRunSeconds = 86400.0;

const QStringList kSceneFormats = {"wav", "f64", "f32", "s16", "u8"};

/// Declares the options and turns their texts into settings, checking one after the other.
class Reader
{
public:
    explicit Reader(const QStringList &arguments)
    {
        m_parser.setApplicationDescription(
            "Receives a station of the virtual receiver's band and writes what a sound card would "
            "have played.\nFrequencies may be written as 14074000, 14.074M, 7.1e6 or 192k.");
        declare();
        if (!m_parser.parse(arguments))
            refuse(m_parser.errorText().simplified().chopped(1));
        if (!m_parser.positionalArguments().isEmpty())
            refuse("unexpected argument '" + m_parser.positionalArguments().first() + "'");
    }

    bool isSet(const char *option) const { return m_options.isSet(option); }
    QString helpText() const { return m_parser.helpText(); }

    HostSettings settings()
    {
        if (!isSet("headless"))
            refuse("there is no window; add --headless");
        readParts();
        readScene();
        readTuning();
        readFilter();
        readNotches();
        readTools();
        readRun();
        readOutputOptions(m_options, m_settings);
        return m_settings;
    }

private:
    void declare()
    {
        m_parser.addOptions({
            {"headless", "Run without a window (the only way so far)."},
            {"plugin", "Device plugin to load; default: the one that came with the program.",
                "FILE"},
            {"d2xx",
                "Library behind which the receiver is; default: the virtual receiver that came "
                "with the program.",
                "FILE"},
            {"settings",
                "Settings file of the receiver's options; default: the user's own. What options "
                "say holds for this run only.",
                "FILE"},
            {"scene", "IQ recording or band description (.band); default: the built-in band.",
                "FILE"},
            {"scene-format", "wav, f64, f32, s16 or u8; default: by the file's name.", "FORMAT"},
            {"scene-rate", "Sample rate of a raw recording.", "HZ"},
            {"scene-frequency", "Radio frequency of the recording's 0 Hz.", "HZ"},
            {"rate", "Sample rate of the receiver: " + deviceRateNames() + ". Default 192k.", "HZ"},
            {"center",
                "Frequency of the receiver; default: --scene-frequency or 7.1M, or else --tune.",
                "HZ"},
            {"tune", "Frequency to listen to; default: the centre.", "HZ"},
            {"mode", modeNames() + ". Default USB.", "MODE"},
            {"filter", "Band filter relative to --tune, as 300:2700 (USB) or -2700:-300 (LSB).",
                "LOW:HIGH"},
            {"preamp",
                "Level in front of the receiver's converter, 0 being neither attenuator nor "
                "amplifier. Default 0.",
                "DB"},
            {"auto-preamp", "Let the receiver choose it while it runs; in real time only."},
            {"notch",
                "Take out a frequency of the band, 100 Hz or so many wide; up to eight times.",
                "HZ[:WIDTH]"},
            {"seconds", "Seconds of IQ; default: the whole scene, 10 for an endless one.", "S"},
            {"free-run",
                "As fast as possible, without losing a sample; gives the same file each time."},
            {"eeprom", "File that holds the receiver's EEPROM.", "FILE"},
            {"fault", "Faults to produce, for example lost-byte@1000.", "SPEC"},
            {"help", "Show this text."},
            {"version", "Show the version."},
        });
        declareOutputOptions(m_parser);
        declareToolOptions(m_parser);
    }

    void readParts()
    {
        m_settings.pluginFile = m_options.file("plugin");
        m_settings.d2xxFile = m_options.file("d2xx");
        m_settings.settingsFile = m_options.file("settings");
        m_settings.eepromFile = m_options.file("eeprom");
    }

    void readScene()
    {
        m_settings.sceneFile = m_options.file("scene");
        m_settings.sceneFormat = m_parser.value("scene-format");
        if (isSet("scene-format") && !kSceneFormats.contains(m_settings.sceneFormat))
            refuse(QString("--scene-format: '%1' is none of %2")
                       .arg(m_settings.sceneFormat, kSceneFormats.join(", ")));
        for (const char *option : {"scene-format", "scene-rate", "scene-frequency"})
            m_options.require(option, "scene");
        m_settings.sceneRateHz =
            m_options.numberIn("scene-rate", 0.0, isSet("scene-rate") ? 1.0 : 0.0, 100e6);
        m_settings.sceneFrequencyHz =
            m_options.numberIn("scene-frequency", 0.0, 0.0, kHighestFrequencyHz);
    }

    void readTuning()
    {
        m_settings.deviceRateHz = readRate();
        m_settings.centerHz =
            m_options.numberIn("center", defaultCenter(), 0.0, kHighestFrequencyHz);
        m_settings.tuneHz =
            m_options.numberIn("tune", m_settings.centerHz, 0.0, kHighestFrequencyHz);
        checkReach("tune", m_settings.tuneHz);
        m_settings.preampDb = m_options.number("preamp", m_settings.preampDb);
        m_settings.autoPreamp = isSet("auto-preamp");
        if (m_settings.autoPreamp && isSet("free-run"))
            refuse("--auto-preamp goes by the clock, which --free-run does not");
    }

    void checkReach(const char *option, double frequencyHz) const
    {
        const double half = m_settings.deviceRateHz / 2.0;
        if (std::abs(frequencyHz - m_settings.centerHz) > half)
            refuse(QString("--%1: %2 is not within %3 of the centre %4")
                       .arg(option, formatNumber(frequencyHz), formatNumber(half),
                           formatNumber(m_settings.centerHz)));
    }

    /// Where the scene is, or the station if it is out of reach from there.
    double defaultCenter() const
    {
        const double scene =
            m_settings.sceneFrequencyHz > 0.0 ? m_settings.sceneFrequencyHz : m_settings.centerHz;
        const double tune = m_options.number("tune", scene);
        return std::abs(tune - scene) <= m_settings.deviceRateHz / 2.0 ? scene : tune;
    }

    int readRate() const
    {
        const double rate = m_options.number("rate", m_settings.deviceRateHz);
        if (!isDeviceRate(rate))
            refuse(
                QString("--rate: %1 is none of %2").arg(m_parser.value("rate"), deviceRateNames()));
        return int(rate);
    }

    void readFilter()
    {
        const QString name = isSet("mode") ? m_parser.value("mode") : m_settings.mode->name;
        m_settings.mode = findMode(name);
        if (!m_settings.mode)
            refuse(QString("--mode: '%1' is none of %2").arg(name, modeNames()));
        const auto &mode = *m_settings.mode;
        m_settings.filterLowHz = mode.defaultLowHz;
        m_settings.filterHighHz = mode.defaultHighHz;
        if (!isSet("filter"))
            return;
        const QStringList edges = m_parser.value("filter").split(':');
        const auto low = parseNumber(edges.first());
        const auto high = parseNumber(edges.last());
        if (edges.size() != 2 || !low || !high)
            refuse(QString("--filter: '%1' is not LOW:HIGH").arg(m_parser.value("filter")));
        if (*low >= *high || *low < mode.lowestHz || *high > mode.highestHz)
            refuse(QString("--filter: %1 does not rise within %2:%3, the limits of %4")
                       .arg(m_parser.value("filter"))
                       .arg(mode.lowestHz)
                       .arg(mode.highestHz)
                       .arg(mode.name));
        m_settings.filterLowHz = *low;
        m_settings.filterHighHz = *high;
    }

    void readNotches()
    {
        for (const QString &text : m_parser.values("notch")) {
            const QStringList parts = text.split(':');
            const auto frequency = parseNumber(parts.first());
            const auto width =
                parts.size() == 1 ? NotchSettings().widthHz : parseNumber(parts.last());
            if (parts.size() > 2 || !frequency || !width)
                refuse(QString("--notch: '%1' is not HZ or HZ:WIDTH").arg(text));
            checkReach("notch", *frequency);
            if (*width < NotchLimits::kMinWidthHz || *width > NotchLimits::kMaxWidthHz)
                refuse(QString("--notch: the width %1 is outside %2 to %3")
                           .arg(parts.last(), formatNumber(NotchLimits::kMinWidthHz),
                               formatNumber(NotchLimits::kMaxWidthHz)));
            m_settings.notches.append({*frequency, *width});
        }
        if (std::size_t(m_settings.notches.size()) > NotchLimits::kFilters)
            refuse(QString("--notch: %1 of them, there are %2 filters")
                       .arg(m_settings.notches.size())
                       .arg(NotchLimits::kFilters));
    }

    void readTools()
    {
        m_settings.tools = readToolOptions(m_options);
        if (m_settings.tools.tuneBHz)
            checkReach("tune-b", *m_settings.tools.tuneBHz);
    }

    void readRun()
    {
        const double shortest = isSet("seconds") ? 1e-3 : 0.0;
        m_settings.seconds = m_options.numberIn("seconds", 0.0, shortest, kLongestRunSeconds);
        m_settings.freeRun = isSet("free-run");
        m_settings.fault = m_parser.value("fault");
    }

    QCommandLineParser m_parser;
    OptionReader m_options{m_parser};
    HostSettings m_settings;
};
} // namespace

std::variant<HostSettings, Information, UsageError> readCommandLine(const QStringList &arguments)
{
    try {
        Reader reader(arguments);
        if (reader.isSet("help"))
            return Information{reader.helpText()};
        if (reader.isSet("version"))
            return Information{"velmora-host " + QCoreApplication::applicationVersion() + '\n'};
        return reader.settings();
    } catch (const UsageError &error) {
        return error;
    }
}
} // namespace host
