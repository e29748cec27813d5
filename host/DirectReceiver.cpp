// SPDX-License-Identifier: GPL-3.0-or-later
#include "DirectReceiver.h"

#include "DeviceRates.h"

#include "Control/driver/HardwareZephrinNANO.h"
#include "Dsp/ZephrinMDSP.h"
#include "d2xx/ftd2xx.h"

namespace host
{
namespace
{
// One receiver, one channel.
constexpr unsigned kReceiver = 0;
constexpr unsigned kChannelA = 0;

constexpr float kNoPreampDb = 0.0f;

// Long enough for a steep band filter at 48 kHz, the same for all modes.
constexpr int kFilterTaps = 1570;

DWORD attachedReceivers()
{
    DWORD count = 0;
    return FT_ListDevices(&count, nullptr, FT_LIST_NUMBER_ONLY) == FT_OK ? count : 0;
}
} // namespace

DirectReceiver::DirectReceiver(StreamLedger &ledger)
    : m_bridge(ledger), m_iqTap(ledger), m_sensors(ledger),
      m_engine(std::make_shared<ZephrinMDSP>(m_bridge.threadPool(), m_bridge, nullptr)),
      m_tools(*m_engine), m_driver(std::make_unique<HardwareZephrinNANO>(m_engine, nullptr))
{
    m_engine->setIqServer(&m_iqTap);
    m_engine->setSensors(&m_sensors);
}

DirectReceiver::~DirectReceiver()
{
    m_driver.reset();
    m_engine->setSensors(nullptr);
    m_engine->setIqServer(nullptr);
}

bool DirectReceiver::open(const HostSettings &settings)
{
    m_rateCode = deviceRateCode(settings.deviceRateHz);
    setUpEngine(settings);
    return setUpDevice(settings);
}

void DirectReceiver::setUpEngine(const HostSettings &settings)
{
    m_engine->setSsbFilterTaps(kFilterTaps);
    m_engine->setAmFilterTaps(kFilterTaps);
    m_engine->setDigFilterTaps(kFilterTaps);
    m_engine->setCwFilterTaps(kFilterTaps);
    m_engine->setModulation(kReceiver, settings.mode->modulation);
    // A new rate forgets the tuning, so the rate goes first.
    m_engine->setSampleRate(settings.deviceRateHz);
    m_engine->setBandFilterIf(kChannelA, settings.filterLowHz, settings.filterHighHz);
    m_engine->setDds(kReceiver, settings.centerHz);
    m_engine->setDownConverter(kChannelA, settings.tuneHz - settings.centerHz);
    m_tools.prepare(settings.tools, settings.centerHz);
}

bool DirectReceiver::setUpDevice(const HostSettings &settings)
{
    if (attachedReceivers() == 0)
        return fail("no receiver found");
    if (!m_driver->open(0))
        return fail("the receiver cannot be opened");
    if (!m_driver->setFrequency(settings.centerHz) || !m_driver->setPreamp(kNoPreampDb))
        return fail("the receiver does not take commands");
    return true;
}

bool DirectReceiver::start(const ToolSettings &tools)
{
    if (!m_driver->startStream(HardwareZephrinNANO::SampleRate(m_rateCode)))
        return fail("the receiver does not start its stream");
    m_tools.begin(tools);
    return true;
}

void DirectReceiver::stop()
{
    m_driver->stopStream();
    m_driver->close();
}

bool DirectReceiver::isStreaming() const
{
    return m_driver->isStartStream();
}

AudioCallback DirectReceiver::audio()
{
    return [engine = m_engine.get()](std::vector<float> &in, std::vector<float> &out,
               unsigned long frames,
               unsigned long channels) { return engine->soundCardIO(in, out, frames, channels); };
}

void DirectReceiver::wakeEngine()
{
    m_engine->wake();
}

bool DirectReceiver::fail(const QString &text)
{
    m_error = text;
    return false;
}
} // namespace host
