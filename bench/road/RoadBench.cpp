// SPDX-License-Identifier: GPL-3.0-or-later
// The whole road, from USB frames to the sound card: CPU seconds per second of IQ, all threads
// counted, two channels as always. Real time needs a real-time factor above 1 on one core.
//
// Then every mode at two rates, plain and with all tools switched on; what 30 s of zeros cost after
// a signal; and how long a setter that changes the filter's length holds up its caller.
//
//   bench_road [--seconds S] [--rate HZ] [--taps N] [--part rates|modes|silence|taps] [--mode NAME]
#include "Dsp/ZephrinMDSP.h"
#include "host_interfaces/EngineLimits.h"
#include "road/CpuSeconds.h"
#include "road/ReplayDevice.h"
#include "road/Road.h"
#include "road/Tools.h"
#include "support/Signals.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QLoggingCategory>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <vector>

namespace
{
constexpr const char *kModeNames[] = {
    "AM", "SAM", "DSB", "LSB", "USB", "CW", "NFM", "DIGL", "DIGU", "WFM", "DRM"};

constexpr double kModesShare = 0.4; // of a rate's seconds, for each figure of a mode

struct Figures
{
    double all; // CPU seconds per second of IQ
    double engine;
    double audioRms;
};

// A station on either channel and noise; whole frames, so that the stretch repeats.
std::vector<COMPLEX> band(double rate)
{
    constexpr int kSamples = 512 * int(EngineLimits::kFrameSamples);
    std::vector<COMPLEX> signal = test::noise(kSamples, 1);
    for (COMPLEX &x : signal)
        x = {1e-4 * x.re, 1e-4 * x.im};
    const auto cycles = [&](double hz) { return std::round(hz / rate * kSamples) / kSamples; };
    test::add(signal, test::tone(kSamples, cycles(0.1015625 * rate + 1000.0), 1e-2));
    test::add(signal, test::tone(kSamples, cycles(-0.078125 * rate + 1000.0), 3e-3));
    return signal;
}

test::Road::Settings listening(double rate, int taps, DspCore::Modulation mode)
{
    test::Road::Settings settings;
    settings.rateHz = rate;
    settings.taps = taps;
    settings.tuneHz = settings.centerHz + 0.1015625 * rate;
    settings.tuneBHz = settings.centerHz - 0.078125 * rate;
    settings.mode = mode;
    settings.lowHz = mode == DspCore::Modulation::USB ? 300.0 : -4000.0;
    settings.highHz = mode == DspCore::Modulation::USB ? 2700.0 : 4000.0;
    return settings;
}

Figures measure(double rate, int taps, double length,
    DspCore::Modulation mode = DspCore::Modulation::USB, bool tools = false)
{
    replay::load(band(rate));
    const auto settings = listening(rate, taps, mode);
    test::Road road(settings, replay::grant);
    if (tools)
        bench::switchToolsOn(road.engine(), mode, settings.centerHz, rate);

    road.drain(static_cast<std::uint64_t>(rate * 0.3)); // fade in, caches, clock frequency
    const double processStart = bench::cpuSeconds(CLOCK_PROCESS_CPUTIME_ID);
    const double engineStart = bench::cpuSeconds(road.engineClock());
    const std::uint64_t start = road.processed();
    road.drain(static_cast<std::uint64_t>(rate * length));
    const double iqSeconds = static_cast<double>(road.processed() - start) / rate;
    const Figures figures{(bench::cpuSeconds(CLOCK_PROCESS_CPUTIME_ID) - processStart) / iqSeconds,
        (bench::cpuSeconds(road.engineClock()) - engineStart) / iqSeconds,
        test::rms(road.record(static_cast<std::uint64_t>(rate * 0.1)))};
    return figures;
}

bool isWanted(int mode, const QString &only)
{
    return only.isEmpty() || only == kModeNames[mode];
}

// False if a rate gives no audio.
bool printRates(double only, int taps, double length)
{
    std::printf(
        "%10s %14s %14s %14s %12s\n", "rate Hz", "CPU s per s", "engine", "others", "real time x");
    for (const double rate : EngineLimits::kRatesHz) {
        if (only != 0.0 && rate != only)
            continue;
        const Figures figures = measure(rate, taps, length);
        if (!(figures.audioRms > 1e-4)) {
            std::fprintf(stderr, "no audio at %.0f Hz: not a figure\n", rate);
            return false;
        }
        std::printf("%10.0f %14.4f %14.4f %14.4f %12.1f\n", rate, figures.all, figures.engine,
            figures.all - figures.engine, 1.0 / figures.all);
        std::fflush(stdout);
    }
    return true;
}

void printModes(int taps, double length, const QString &only)
{
    std::printf("\nCPU s per s of IQ\n%6s %14s %14s %14s %14s\n", "mode", "192 kHz", "all tools",
        "3.072 MHz", "all tools");
    for (int mode = 0; mode < 11; ++mode) {
        if (!isWanted(mode, only))
            continue;
        std::printf("%6s", kModeNames[mode]);
        for (const double rate : {192e3, 3072e3}) {
            for (const bool tools : {false, true}) {
                const auto modulation = static_cast<DspCore::Modulation>(mode);
                std::printf(" %14.4f", measure(rate, taps, length, modulation, tools).all);
                std::fflush(stdout);
            }
        }
        std::printf("\n");
    }
}

// The filters' states run out towards zero, where slow arithmetic would wait.
void printSilence(int taps, const QString &only)
{
    constexpr double kRate = 192e3;
    constexpr double kSignal = 3.0; // s
    constexpr double kZeros = 33.0; // s, of which the last three are measured
    std::printf("\n30 s of zeros after a signal, all tools, 192 kHz, over the signal\n");
    for (int mode = 0; mode < 11; ++mode) {
        if (!isWanted(mode, only))
            continue;
        const std::vector<COMPLEX> signal = band(kRate);
        std::vector<COMPLEX> stretch;
        while (double(stretch.size()) < kSignal * kRate)
            stretch.insert(stretch.end(), signal.begin(), signal.end());
        const std::size_t blocks = std::size_t(kZeros * kRate) / signal.size() + 1;
        stretch.resize(stretch.size() + blocks * signal.size());
        replay::load(stretch);
        const auto modulation = static_cast<DspCore::Modulation>(mode);
        const auto settings = listening(kRate, taps, modulation);
        test::Road road(settings, replay::grant);
        bench::switchToolsOn(road.engine(), modulation, settings.centerHz, kRate);
        const auto cost = [&](double length) {
            const double start = bench::cpuSeconds(road.engineClock());
            const std::uint64_t before = road.processed();
            road.drain(static_cast<std::uint64_t>(length * kRate));
            return (bench::cpuSeconds(road.engineClock()) - start)
                / double(road.processed() - before);
        };
        road.drain(std::uint64_t(0.5 * kRate));
        const double onSignal = cost(2.0);
        cost(30.5);
        std::printf("%6s %14.2f\n", kModeNames[mode], cost(2.5) / onSignal);
        std::fflush(stdout);
    }
}

// What the caller waits, with the stream running: for the block at hand and for the design.
void printTaps()
{
    std::printf("\nchange of taps in a running stream, ms\n");
    replay::load(band(3072e3));
    test::Road road(listening(3072e3, 1570, DspCore::Modulation::USB), replay::grant);
    road.drain(3072000);
    for (const int taps : {8000, 200, 1570, 5000, 8000}) {
        const auto start = std::chrono::steady_clock::now();
        const double cpu = bench::cpuSeconds(CLOCK_THREAD_CPUTIME_ID);
        road.engine().setSsbFilterTaps(taps);
        const std::chrono::duration<double, std::milli> took =
            std::chrono::steady_clock::now() - start;
        std::printf("%6d %14.2f, of which the caller's own work %.2f\n", taps, took.count(),
            1e3 * (bench::cpuSeconds(CLOCK_THREAD_CPUTIME_ID) - cpu));
        road.drain(300000);
    }
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules("*.debug=false\n*.warning=false");
    QCommandLineParser parser;
    parser.addOptions({{"seconds", "Seconds of IQ for each rate.", "S", "5"},
        {"rate", "Only this device rate.", "HZ", "0"},
        {"taps", "Taps of the band filter.", "N", "1570"},
        {"part", "Only rates, modes, silence or taps.", "PART"},
        {"mode", "Only this mode among modes and silence.", "NAME"}});
    parser.addHelpOption();
    parser.process(application);
    const double rate = parser.value("rate").toDouble();
    const int taps = parser.value("taps").toInt();
    const double length = parser.value("seconds").toDouble();
    const QString mode = parser.value("mode");
    // One rate alone is not asked together with what comes after the rates.
    const auto isWanted = [&](const char *part) {
        return parser.isSet("part") ? parser.value("part") == part : rate == 0.0;
    };
    if ((isWanted("rates") || rate != 0.0) && !printRates(rate, taps, length))
        return 1;
    if (isWanted("modes"))
        printModes(taps, kModesShare * length, mode);
    if (isWanted("silence"))
        printSilence(taps, mode);
    if (isWanted("taps"))
        printTaps();
    return 0;
}
