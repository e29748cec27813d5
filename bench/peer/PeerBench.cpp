// SPDX-License-Identifier: GPL-3.0-or-later
// The receiver on the signal, the terms and the clock of the programs that it is compared with; see
// --help and docs/speed.md.
#include "Dsp/ZephrinMDSP.h"
#include "peer/PeerOptions.h"
#include "peer/Sigtool.h"
#include "peer/StreamSpectrum.h"
#include "road/CpuSeconds.h"
#include "road/ReplayDevice.h"
#include "road/Road.h"
#include "road/Tools.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <cstdio>
#include <exception>
#include <memory>
#include <sched.h>
#include <stdexcept>
#include <vector>

namespace
{
using bench::PeerOptions;

// Where the signal has its stations, in shares of the rate.
constexpr double kStationA = 0.1015625;
constexpr double kStationB = -0.078125;

constexpr int kAgcGainDb = 80;
constexpr double kOneEar = 60.0; // dB of balance: the other ear hears nothing

void pin(int cpu)
{
    if (cpu < 0)
        return;
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(cpu, &set);
    if (sched_setaffinity(0, sizeof(set), &set) != 0)
        std::perror("bench_peer: sched_setaffinity");
}

double workSeconds()
{
    return bench::cpuSeconds(CLOCK_PROCESS_CPUTIME_ID) - replay::deviceSeconds();
}

std::vector<float> ear(const std::vector<COMPLEX> &audio, double COMPLEX::*side)
{
    std::vector<float> out;
    out.reserve(audio.size());
    for (const COMPLEX &pair : audio)
        out.push_back(float(pair.*side));
    return out;
}

std::vector<float> interleaved(const std::vector<COMPLEX> &audio)
{
    std::vector<float> out;
    out.reserve(2 * audio.size());
    for (const COMPLEX &pair : audio)
        out.insert(out.end(), {float(pair.re), float(pair.im)});
    return out;
}

/// The receiver as a listener has it, on both stations of the signal.
class Listener
{
public:
    explicit Listener(const PeerOptions &options) : m_options(options)
    {
        if (options.linesPerSecond > 0.0)
            m_spectrum =
                std::make_unique<bench::StreamSpectrum>(options.rateHz, options.linesPerSecond);
        m_road = std::make_unique<test::Road>(settings(), replay::grant);
        ZephrinMDSP &engine = m_road->engine();
        engine.setAgcMode(DspCore::AgcMode::Fast);
        engine.setAgcGain(0, kAgcGainDb);
        bench::switchEqualizerOn(engine);
        if (!options.mode->stereo) {
            engine.setBalance(0, 0, kOneEar);
            engine.setBalance(0, 1, -kOneEar);
        }
    }

    const std::vector<COMPLEX> &hear()
    {
        return m_road->record(std::uint64_t(m_options.seconds * m_options.rateHz));
    }

    std::uint64_t processed() const { return m_road->processed(); }

    void switchToolsOn()
    {
        bench::switchToolsOn(
            m_road->engine(), m_options.mode->modulation, kCentreHz, m_options.rateHz);
    }

private:
    static constexpr double kCentreHz = 14.1e6;

    test::Road::Settings settings()
    {
        const PeerOptions::Mode &mode = *m_options.mode;
        test::Road::Settings settings;
        settings.rateHz = m_options.rateHz;
        settings.centerHz = kCentreHz;
        settings.tuneHz = kCentreHz + kStationA * m_options.rateHz;
        settings.tuneBHz = kCentreHz + kStationB * m_options.rateHz;
        settings.mode = mode.modulation;
        settings.lowHz = mode.lowHz;
        settings.highHz = mode.highHz;
        settings.taps = m_options.taps;
        if (m_spectrum)
            settings.onInput = [this](COMPLEX *block, int n) { m_spectrum->append(block, n); };
        return settings;
    }

    const PeerOptions &m_options;
    std::unique_ptr<bench::StreamSpectrum> m_spectrum; // engine thread, while there is a road
    std::unique_ptr<test::Road> m_road;
};

bench::Sigtool::Verdict judge(const PeerOptions &options, const bench::Sigtool &sigtool,
    const std::vector<COMPLEX> &audio, const std::vector<double> &cpu)
{
    if (options.mode->stereo)
        return sigtool.check(interleaved(audio), cpu);
    const auto a = sigtool.check(ear(audio, &COMPLEX::re), cpu);
    const auto b = sigtool.check(ear(audio, &COMPLEX::im), cpu);
    return a.sinadDb < b.sinadDb ? a : b;
}

bool measure(const PeerOptions &options)
{
    const bench::Sigtool sigtool(options);
    replay::loadFrames(sigtool.frames());
    Listener listener(options);
    std::vector<COMPLEX> audio = listener.hear(); // fade in, caches, clock frequency
    if (options.tools)
        listener.switchToolsOn();
    std::vector<double> cpu;
    for (int run = 0; run < options.runs; ++run) {
        const double start = workSeconds();
        const auto before = listener.processed();
        const auto &heard = listener.hear();
        const double perSample = (workSeconds() - start) / double(listener.processed() - before);
        cpu.push_back(perSample * options.rateHz * options.seconds);
        if (!options.tools)
            audio = heard;
    }
    const auto verdict = judge(options, sigtool, audio, cpu);
    std::printf("%s\n", verdict.line.constData());
    return verdict.good;
}
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules("*.debug=false\n*.warning=false");
    const PeerOptions options = PeerOptions::parse(QCoreApplication::arguments());
    pin(options.cpu);
    try {
        return measure(options) ? 0 : 1;
    } catch (const std::exception &fault) {
        std::fprintf(stderr, "bench_peer: %s\n", fault.what());
        return 1;
    }
}
