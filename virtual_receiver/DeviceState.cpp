// SPDX-License-Identifier: GPL-3.0-or-later
#include "DeviceState.h"

#include "FramePacker.h"

#include <algorithm>
#include <cmath>

namespace vr
{
namespace
{
constexpr std::uint32_t kStreamBit = 1u << 19;
constexpr std::uint32_t kShortSamplesBit = 1u << 17;
constexpr std::uint32_t kRateMask = 0xf;
constexpr std::array<double, 9> kRatesHz = {
    48000, 96000, 192000, 384000, 768000, 1536000, 1920000, 2560000, 3072000};

constexpr std::uint32_t kMaxAttenuator = 63;
constexpr std::uint8_t kGainRegister = 0x25;
constexpr int kMaxGainSteps = 12;
constexpr double kStepDb = 0.5; // of attenuator and ADC gain alike
} // namespace

bool DeviceState::apply(const CommandPacket &packet)
{
    switch (packet.code) {
    case CommandPacket::Frequency:
        m_frequencyWord = packet.value;
        return true;
    case CommandPacket::State:
        m_stateWord = packet.value;
        return true;
    case CommandPacket::AdcRegister:
        m_adcRegisters[packet.value >> 8 & 0xff] = std::uint8_t(packet.value);
        return true;
    case CommandPacket::Attenuator:
        m_attenuator = std::min(packet.value, kMaxAttenuator);
        return true;
    }
    return false;
}

bool DeviceState::streaming() const
{
    return m_stateWord & kStreamBit;
}

bool DeviceState::shortSamples() const
{
    return m_stateWord & kShortSamplesBit;
}

unsigned DeviceState::rateCode() const
{
    return std::min(m_stateWord & kRateMask, unsigned(kRatesHz.size() - 1));
}

double DeviceState::sampleRateHz() const
{
    return kRatesHz[rateCode()];
}

std::size_t DeviceState::samplesPerFrame() const
{
    return FramePacker::samplesPerFrame(shortSamples());
}

double DeviceState::gain() const
{
    const int gainSteps = std::min(m_adcRegisters[kGainRegister] >> 4, kMaxGainSteps);
    return std::pow(10.0, kStepDb * (gainSteps - int(m_attenuator)) / 20.0);
}
} // namespace vr
