// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoakRun.h"

#include "PitchCheck.h"
#include "SoakKnobs.h"
#include "SoakRecorder.h"
#include "SoakScene.h"
#include "SoakStream.h"
#include "plugin/PluginRig.h"

#include "host_interfaces/EngineLimits.h"
#include "host_interfaces/Repairs.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <fstream>
#include <malloc.h>
#include <optional>
#include <stdexcept>
#include <string>

namespace soak
{
namespace
{
using Clock = std::chrono::steady_clock;
using test::PluginRig;

// Bounds.
constexpr double kPitchHz = 1e-6;
constexpr double kJitterRad = 1e-3; // a lost sample turns the phase by 0.13
constexpr double kLevelDb = 0.01;   // of the carrier, from the first check on
constexpr long kGrowthKiB = 1024;   // of what is allocated
constexpr long kResidentKiB = 2048; // of what is resident: pages that are free in part

// Seconds of stream.
constexpr double kMostWarmUp = 60.0;
constexpr double kSettle = 3.0; // fades, filters and averages in the known state
constexpr double kListen = 16.0;
constexpr double kLeastBetween = 1.0; // two changes
constexpr double kMostBetween = 5.0;

constexpr int kStepMs = 1; // of the event loop
constexpr auto kStalled = std::chrono::seconds(60);

/// Without pages of libraries: the kernel drops them when memory is short, and they come back.
long residentKiB()
{
    malloc_trim(0); // or what the allocator keeps for the threads to come counts as well
    std::ifstream file("/proc/self/status");
    for (std::string word; file >> word;) {
        if (word == "RssAnon:") {
            file >> word;
            return std::stol(word);
        }
    }
    throw std::runtime_error("the kernel does not tell what is resident");
}

std::string text(const char *format, ...)
{
    char line[400];
    va_list list;
    va_start(list, format);
    std::vsnprintf(line, sizeof line, format, list);
    va_end(list);
    return line;
}

/// The first check's, against which the later ones are held.
struct Baseline
{
    long allocatedKiB;
    long residentKiB;
    double amplitude;
};

class Run
{
public:
    explicit Run(const SoakPlan &plan) : m_plan(plan), m_pause(plan.seed)
    {
        const auto rate = std::find(
            EngineLimits::kRatesHz.begin(), EngineLimits::kRatesHz.end(), int(plan.rateHz));
        chooseScene(plan.rateHz);
        vr_set_pace(VR_PACE_CREDIT);
        // As our host does it. Without them a band filter that is set up beyond half of the rate
        // gives what is no number.
        m_rig.device().setProperty(Repairs::kProperty, Repairs::all().names());
        m_rig.start(
            {{"SampleRate", int(rate - EngineLimits::kRatesHz.begin())}, {"PreampAuto", false}});
        m_stream.emplace(plan.rateHz, m_rig.bridge(), m_rig.ledger());
        m_rig.iqServer().setListener(&*m_stream);
        m_knobs.emplace(m_rig, *m_stream, plan.rateHz, plan.seed);
        m_recorder.emplace(m_rig, *m_stream, plan.rateHz, plan.seed);
        QObject::connect(&m_rig.device(), &DeviceAbstract::rxSpectrum, &m_rig.device(),
            [this] { m_lines += m_rig.device().receiverSpectrum(0).count > 0; });
    }

    ~Run()
    {
        m_rig.iqServer().setListener(nullptr);
        m_stream.reset();
        m_rig.device().stop();
    }

    void go()
    {
        const double warmUp = std::min(kMostWarmUp, m_plan.seconds);
        for (int step = 0; step < SoakKnobs::kTourSteps; ++step) {
            m_knobs->tour(step);
            pass(warmUp / SoakKnobs::kTourSteps);
        }
        check();
        double next = m_plan.checkSeconds;
        while (seconds() < m_plan.seconds && m_faults.empty()) {
            m_knobs->turnSome();
            pass(std::uniform_real_distribution(kLeastBetween, kMostBetween)(m_pause));
            if (seconds() < next)
                continue;
            check();
            next += m_plan.checkSeconds;
        }
        check();
    }

    const std::vector<std::string> &faults() const { return m_faults; }

private:
    double seconds() const { return double(m_stream->processed()) / m_plan.rateHz; }

    /// Lets so much stream through; the event loop runs.
    void pass(double length)
    {
        const double end = seconds() + length;
        waitFor([&] { return seconds() >= end; });
    }

    template <typename Condition>
    void waitFor(Condition condition)
    {
        auto since = Clock::now();
        for (std::uint64_t before = 0; !condition();) {
            m_recorder->advance();
            PluginRig::wait(kStepMs);
            if (m_stream->processed() != before)
                since = Clock::now();
            before = m_stream->processed();
            if (Clock::now() - since > kStalled)
                throw std::runtime_error(text("the stream stands still after %.0f s", seconds()));
        }
    }

    void check()
    {
        m_recorder->finish();
        m_knobs->setKnownState();
        pass(kSettle);
        m_stream->capture(std::size_t(kListen * PluginRig::kAudioRateHz));
        waitFor([this] { return m_stream->isCaptured(); });
        m_recorder->finish();
        m_stream->pause();
        judge(measurePitch(m_stream->captured(), PluginRig::kAudioRateHz, m_knobs->pitchHz()));
        m_stream->resume();
    }

    /// With the stream paused.
    void judge(const Pitch &pitch)
    {
        vr_forget_calls();
        const long allocated = test::allocatedKiB();
        const long resident = residentKiB();
        if (!m_baseline)
            m_baseline = {allocated, resident, pitch.amplitude};
        const double level = 20.0 * std::log10(pitch.amplitude / m_baseline->amplitude);
        const std::uint64_t dropped = SoakStream::dropped(m_rig.ledger());
        const std::uint64_t lost = m_rig.ledger().lostFrames();
        const double wall = std::chrono::duration<double>(Clock::now() - m_began).count();
        std::printf("%8.0f Hz %7.0f s in %6.0f s  changes %6ld  lines %7ld  allocated %6ld KiB "
                    "(%+5ld)  resident %6ld KiB (%+6ld)  threads %2d  dropped %llu + %llu  "
                    "recordings %4ld (%llu samples missing)  pitch %+.1e Hz  jitter %.0e  "
                    "level %+.4f dB\n",
            m_plan.rateHz, seconds(), wall, m_knobs->turned(), m_lines, allocated,
            allocated - m_baseline->allocatedKiB, resident, resident - m_baseline->residentKiB,
            test::threadCount(), (unsigned long long)(dropped), (unsigned long long)(lost),
            m_recorder->recordings(), (unsigned long long)(m_recorder->missing()), pitch.offHz,
            pitch.jitterRad, level);
        std::fflush(stdout);

        expect(std::abs(allocated - m_baseline->allocatedKiB) <= kGrowthKiB, "memory allocated");
        expect(resident - m_baseline->residentKiB <= kResidentKiB, "memory resident");
        expect(dropped == 0, "IQ dropped");
        expect(lost == 0, "audio dropped");
        expect(m_stream->beyond() == 0, "audio that is no number or beyond full scale");
        expect(std::abs(pitch.offHz) <= kPitchHz, "pitch");
        expect(pitch.jitterRad <= kJitterRad, "jitter of the pitch");
        expect(std::abs(level) <= kLevelDb, "level of the carrier");
        expect(m_recorder->broken() == 0, "broken recordings");
        expect(m_recorder->missing() == 0, "samples missing in recordings");
    }

    void expect(bool good, const char *what)
    {
        if (!good)
            m_faults.push_back(text("%.0f Hz, after %.0f s: %s", m_plan.rateHz, seconds(), what));
    }

    SoakPlan m_plan;
    Clock::time_point m_began = Clock::now();
    std::mt19937 m_pause;
    PluginRig m_rig;
    std::optional<SoakStream> m_stream;
    std::optional<SoakKnobs> m_knobs;
    std::optional<SoakRecorder> m_recorder;
    long m_lines = 0; // of the panorama
    std::optional<Baseline> m_baseline;
    std::vector<std::string> m_faults;
};
} // namespace

std::vector<std::string> runSoak(const SoakPlan &plan)
{
    const int threads = test::threadCount();
    std::vector<std::string> faults;
    try {
        Run run(plan);
        run.go();
        faults = run.faults();
    } catch (const std::exception &error) {
        faults.push_back(text("%.0f Hz: %s", plan.rateHz, error.what()));
    }
    if (const int left = test::threadCount() - threads; left != 0)
        faults.push_back(text("%.0f Hz: %d threads left", plan.rateHz, left));
    return faults;
}
} // namespace soak
