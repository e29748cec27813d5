// SPDX-License-Identifier: GPL-3.0-or-later
// The whole road, from USB frames to the sound card: CPU seconds per second of IQ, all threads
// counted, two channels as always. Real time needs a real-time factor above 1 on one core.
//
// Then every mode at two rates, plain and with all tools on the audio switched on.
//
//   bench_road [--seconds S] [--rate HZ] [--taps N]
#include "Dsp/ZephrinMDSP.h"
#include "host_interfaces/EngineLimits.h"
#include "road/CpuSeconds.h"
#include "road/ReplayDevice.h"
#include "road/Tools.h"
#include "support/Road.h"
#include "support/Signals.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QLoggingCategory>

#include <cmath>
#include <cstdio>
#include <vector>

namespace
{
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

Figures measure(double rate, int taps, double length,
    DspCore::Modulation mode = DspCore::Modulation::USB, bool tools = false)
{
    replay::load(band(rate));
    test::Road::Settings settings;
    settings.rateHz = rate;
    settings.taps = taps;
    settings.tuneHz = settings.centerHz + 0.1015625 * rate;
    settings.tuneBHz = settings.centerHz - 0.078125 * rate;
    settings.mode = mode;
    settings.lowHz = mode == DspCore::Modulation::USB ? 300.0 : -4000.0;
    settings.highHz = mode == DspCore::Modulation::USB ? 2700.0 : 4000.0;
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
        test::rms(road.receive(4800))};
    return figures;
}
} // namespace

namespace
{
void printModes(int taps, double length)
{
    constexpr const char *kNames[] = {
        "AM", "SAM", "DSB", "LSB", "USB", "CW", "NFM", "DIGL", "DIGU", "WFM", "DRM"};
    std::printf("\nCPU s per s of IQ\n%6s %14s %14s %14s %14s\n", "mode", "192 kHz", "all tools",
        "3.072 MHz", "all tools");
    for (int mode = 0; mode < 11; ++mode) {
        std::printf("%6s", kNames[mode]);
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
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules("*.debug=false\n*.warning=false");
    QCommandLineParser parser;
    parser.addOptions({{"seconds", "Seconds of IQ for each rate.", "S", "5"},
        {"rate", "Only this device rate.", "HZ", "0"},
        {"taps", "Taps of the band filter.", "N", "1570"}});
    parser.addHelpOption();
    parser.process(application);
    const double only = parser.value("rate").toDouble();

    std::printf(
        "%10s %14s %14s %14s %12s\n", "rate Hz", "CPU s per s", "engine", "others", "real time x");
    for (const double rate : EngineLimits::kRatesHz) {
        if (only != 0.0 && rate != only)
            continue;
        const Figures figures =
            measure(rate, parser.value("taps").toInt(), parser.value("seconds").toDouble());
        if (!(figures.audioRms > 1e-4)) {
            std::fprintf(stderr, "no audio at %.0f Hz: not a figure\n", rate);
            return 1;
        }
        std::printf("%10.0f %14.4f %14.4f %14.4f %12.1f\n", rate, figures.all, figures.engine,
            figures.all - figures.engine, 1.0 / figures.all);
        std::fflush(stdout);
    }
    if (only == 0.0)
        printModes(parser.value("taps").toInt(), 0.4 * parser.value("seconds").toDouble());
    return 0;
}
