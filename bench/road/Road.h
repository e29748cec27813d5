// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/TestHost.h"

#include "DspCore/types.h"
#include "host_interfaces/CreditPump.h"

#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <vector>

class HardwareZephrinNANO;
class ZephrinMDSP;

namespace test
{
/// The whole road: a device behind the FT_ functions, driver, engine and receiver, joined as the
/// plugin joins them; the audio that goes to the sound card is collected.
///
/// The device sends what it is granted, and it is granted only what is asked for and the rings have
/// room for, so that nothing is dropped however fast or slow the machine is. The engine grants as
/// it gets on; the owner's thread starts it and looks after it. Belongs to one thread.
class Road
{
public:
    struct Settings
    {
        double rateHz = 192000.0; // one of the nine
        double centerHz = 14.1e6; // of the device
        double tuneHz = 14.1e6;   // of channel A
        double tuneBHz = 0.0;     // of channel B, 0: not heard
        DspCore::Modulation mode = DspCore::Modulation::USB;
        double lowHz = 300.0; // band filter, relative to the tuned frequency
        double highHz = 2700.0;
        int taps = 1570;
        std::function<void(COMPLEX *, int)> onInput = {}; // each block of IQ, engine thread
    };

    /// grant lets the device send that many samples more. Opens the device and starts the stream.
    Road(const Settings &settings, std::function<void(std::uint64_t)> grant);
    ~Road();

    /// Lets so many input samples through and keeps nothing: for measuring. Returns audio frames at
    /// 48 kHz that came.
    std::uint64_t drain(std::uint64_t inputSamples);

    /// Same, kept: the audio of those input samples as it leaves the receiver, here until the next
    /// call of either. From the second time on it takes no new memory.
    const std::vector<COMPLEX> &record(std::uint64_t inputSamples);

    /// Input samples that went through the engine.
    std::uint64_t processed() const { return m_processed; }

    /// CPU clock of the engine thread.
    clockid_t engineClock() const { return m_engineClock; }

    ZephrinMDSP &engine() { return *m_engine; }
    HardwareZephrinNANO &driver() { return *m_driver; }

private:
    void keepGranted();
    void pass(std::uint64_t inputSamples);

    std::mutex m_pumpMutex;
    CreditPump m_pump;                      // guarded by it
    std::atomic<std::uint64_t> m_wanted{0}; // IQ samples to be processed
    TestBridge m_bridge;
    TestIqServer m_iqServer;
    TestSensors m_sensors;
    std::shared_ptr<ZephrinMDSP> m_engine;
    std::unique_ptr<HardwareZephrinNANO> m_driver;

    // Written by the engine thread.
    std::atomic<std::uint64_t> m_processed{0};
    std::atomic<std::uint64_t> m_frames{0};
    std::atomic<clockid_t> m_engineClock{0};
    std::mutex m_mutex; // guards m_keep and m_audio
    bool m_keep = true;
    std::vector<COMPLEX> m_audio;
};
} // namespace test
