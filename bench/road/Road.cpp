// SPDX-License-Identifier: GPL-3.0-or-later
#include "road/Road.h"

#include "Control/driver/HardwareZephrinNANO.h"
#include "Dsp/ZephrinMDSP.h"
#include "ZephrinMFunctions.h"
#include "host_interfaces/EngineLimits.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <pthread.h>
#include <stdexcept>
#include <thread>

namespace test
{
namespace
{
constexpr auto kPoll = std::chrono::microseconds(500);

// IQ samples on their way, granted when they have fallen to the one up to the other: enough for
// some reads in a row, and little enough to stay in the cache.
constexpr std::uint64_t kLowWater = 6144;
constexpr std::uint64_t kHighWater = 32768;

int codeOf(double rateHz)
{
    constexpr auto kRates = EngineLimits::kRatesHz;
    const auto *rate = std::find(kRates.begin(), kRates.end(), rateHz);
    if (rate == kRates.end())
        throw std::invalid_argument("no device rate");
    return int(rate - kRates.begin());
}
} // namespace

Road::Road(const Settings &settings, std::function<void(std::uint64_t)> grant)
    : m_pump(settings.rateHz, {std::move(grant)}),
      m_engine(std::make_shared<ZephrinMDSP>(
          m_bridge.threadPool(), m_bridge, std::make_shared<ZephrinMFunctions>())),
      m_driver(std::make_unique<HardwareZephrinNANO>(m_engine))
{
    m_bridge.sink.onWrite = [this](COMPLEX32 *block, int count) {
        m_frames += static_cast<std::uint64_t>(count);
        const std::lock_guard lock(m_mutex);
        if (!m_keep)
            return;
        std::transform(block, block + count, std::back_inserter(m_audio), [](const COMPLEX32 &x) {
            return COMPLEX{x.re, x.im};
        });
    };
    m_sensors.onStereo = [this](uint, bool) {
        if (m_engineClock == 0) {
            clockid_t clock{};
            pthread_getcpuclockid(pthread_self(), &clock);
            m_engineClock = clock;
        }
    };
    m_iqServer.onWrite = [this, onInput = settings.onInput](COMPLEX *block, int count) {
        if (onInput)
            onInput(block, count);
        m_processed += static_cast<std::uint64_t>(count);
        keepGranted();
    };
    m_engine->setIqServer(&m_iqServer);
    m_engine->setSensors(&m_sensors);

    m_engine->setSampleRate(settings.rateHz);
    m_engine->setModulation(0, settings.mode);
    // Levels are judged: the gain control stays at 0 dB below full scale and only delays.
    m_engine->setAgcGain(0, 0);
    m_engine->setSsbFilterTaps(settings.taps);
    m_engine->setAmFilterTaps(settings.taps);
    m_engine->setDigFilterTaps(settings.taps);
    m_engine->setCwFilterTaps(settings.taps);
    m_engine->setBandFilterIf(0, settings.lowHz, settings.highHz);
    m_engine->setDownConverter(0, settings.tuneHz - settings.centerHz);
    if (settings.tuneBHz != 0.0) {
        m_engine->setDownConverter(1, settings.tuneBHz - settings.centerHz);
        m_engine->setChannelEnable(0, 1, true);
    }

    const int code = codeOf(settings.rateHz);
    if (!m_driver->open(0) || !m_driver->setFrequency(settings.centerHz)
        || !m_driver->startStream(static_cast<HardwareZephrinNANO::SampleRate>(code)))
        throw std::runtime_error("the device does not start");
}

Road::~Road()
{
    m_driver->close();
    m_engine->setSensors(nullptr);
    m_engine->setIqServer(nullptr);
}

void Road::keepGranted()
{
    const std::lock_guard lock(m_pumpMutex);
    if (m_pump.granted() > m_processed + kLowWater)
        return;
    while (m_pump.granted() < std::min(m_wanted.load(), m_processed + kHighWater)
        && m_pump.grant(m_processed)) { }
}

void Road::pass(std::uint64_t inputSamples)
{
    const std::uint64_t target = m_processed + inputSamples;
    m_wanted = target + CreditPump::kLargestRest; // what is granted comes through but for that
    while (m_processed < target) {
        keepGranted();
        m_engine->wake(); // its last wake-up may have come while it worked
        std::this_thread::sleep_for(kPoll);
    }
}

std::uint64_t Road::drain(std::uint64_t inputSamples)
{
    {
        const std::lock_guard lock(m_mutex);
        m_keep = false;
    }
    const std::uint64_t before = m_frames;
    pass(inputSamples);
    return m_frames - before;
}

const std::vector<COMPLEX> &Road::record(std::uint64_t inputSamples)
{
    {
        const std::lock_guard lock(m_mutex);
        m_audio.clear();
        m_keep = true;
    }
    pass(inputSamples);
    const std::lock_guard lock(m_mutex);
    m_keep = false;
    return m_audio;
}
} // namespace test
