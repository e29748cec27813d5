// SPDX-License-Identifier: GPL-3.0-or-later
#include "peer/PeerOptions.h"

#include "host_interfaces/EngineLimits.h"

#include <QCommandLineParser>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace
{
using bench::PeerOptions;
using DspCore::Modulation;

constexpr PeerOptions::Mode kModes[] = {
    {"ssb", Modulation::USB, 300.0, 3000.0, false, 0.0},
    {"am", Modulation::AM, -4500.0, 4500.0, false, 0.0},
    {"nfm", Modulation::NFM, -6000.0, 6000.0, false, 20.0},
    {"wfm", Modulation::WFM, -90000.0, 90000.0, true, 0.0},
};

constexpr int kFewestTaps = 200;
constexpr int kMostTaps = 8000;
constexpr double kMostLines = 1000.0;
constexpr double kShortestRun = 0.5;  // s, what the check wants to hear
constexpr double kLongestRun = 120.0; // s
constexpr int kMostRuns = 64;
constexpr int kWideRate = 1000000; // Hz; above it a run is shorter
constexpr double kWideSeconds = 4.0;
constexpr double kSeconds = 20.0;

[[noreturn]] void refuse(const QString &message)
{
    std::fprintf(stderr, "bench_peer: %s (--help tells more)\n", qPrintable(message));
    std::exit(2);
}

const PeerOptions::Mode *modeNamed(const QString &name)
{
    for (const PeerOptions::Mode &mode : kModes) {
        if (name == QLatin1String(mode.name))
            return &mode;
    }
    refuse("--mode is ssb, am, nfm or wfm");
}

double number(const QCommandLineParser &parser, const char *option, double least, double most)
{
    bool isNumber = false;
    const double value = parser.value(option).toDouble(&isNumber);
    if (!isNumber || !(value >= least && value <= most))
        refuse(QString("--%1 is %2 to %3").arg(option).arg(least).arg(most));
    return value;
}

int rate(const QCommandLineParser &parser)
{
    const double value =
        number(parser, "rate", EngineLimits::kRatesHz.front(), EngineLimits::kRatesHz.back());
    const auto &rates = EngineLimits::kRatesHz;
    if (std::find(rates.begin(), rates.end(), value) == rates.end())
        refuse("--rate is one of the device's, 48000 to 3072000");
    return int(value);
}

int environment(const char *name, int fallback)
{
    return qEnvironmentVariableIsEmpty(name) ? fallback : qEnvironmentVariableIntValue(name);
}
} // namespace

namespace bench
{
PeerOptions PeerOptions::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "CPU seconds per second of IQ of the whole receiver, set beside other receivers on the\n"
        "same signal: frames through driver and engine, both channels, gain control, equalizer\n"
        "and meters. Prints one JSON line, whose check tells whether the audio is fit to be\n"
        "compared: channel A is judged in the left ear, channel B in the right one, and the\n"
        "worse one counts.\n\n"
        "CPU is that of all threads, less what the stand-in for the device spends. With --tools\n"
        "the audio is judged before they are switched on, as some take the test tone out.\n\n"
        "Narrow FM has a floor of its own, which its line tells as floor_db: the demodulator is\n"
        "a loop that follows a step of 1000 Hz at most, and distorts a deviation of 3 kHz.\n\n"
        "BENCH_RUNS (7) counted runs after one that is not; BENCH_CPU (1) the core, -1 any.");
    parser.addOptions({{"mode", "ssb, am, nfm or wfm.", "MODE"},
        {"rate", "Rate of the device.", "HZ"}, {"taps", "Taps of the band filter.", "N", "1570"},
        {"spectrum", "Panorama lines of 4096 bins in a second of signal.", "LINES", "0"},
        {"tools", "Everything that a listener can switch on."},
        {"seconds", "IQ in one run (20, above 1 MHz 4).", "S"},
        {"sigtool", "Program that makes the signal and judges the audio.", "PATH"}});
    parser.addHelpOption();
    if (!parser.parse(arguments))
        refuse(parser.errorText());
    if (parser.isSet("help"))
        parser.showHelp();
    if (!parser.positionalArguments().isEmpty())
        refuse("options only, no arguments");

    PeerOptions options;
    options.mode = modeNamed(parser.value("mode"));
    options.rateHz = rate(parser);
    options.taps = int(number(parser, "taps", kFewestTaps, kMostTaps));
    options.linesPerSecond = number(parser, "spectrum", 0.0, kMostLines);
    options.tools = parser.isSet("tools");
    if (parser.isSet("seconds"))
        options.seconds = number(parser, "seconds", kShortestRun, kLongestRun);
    else
        options.seconds = options.rateHz > kWideRate ? kWideSeconds : kSeconds;
    options.sigtool = parser.value("sigtool");
    if (!QFileInfo(options.sigtool).isExecutable())
        refuse("--sigtool is a program: " + options.sigtool);
    options.runs = std::clamp(environment("BENCH_RUNS", options.runs), 1, kMostRuns);
    options.cpu = environment("BENCH_CPU", options.cpu);
    return options;
}
} // namespace bench
