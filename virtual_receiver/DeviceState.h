// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CommandPacket.h"

namespace vr
{
/// The synthesiser adds its word to a 32-bit phase on every tick of the ADC clock.
constexpr double kAdcClockHz = 122.88e6;
constexpr double kWordsPerHz = 4294967296.0 / kAdcClockHz;

/// The registers of the receiver, as the command packets set them.
class DeviceState
{
public:
    /// False for a command code that the receiver does not have; nothing changes then.
    bool apply(const CommandPacket &packet);

    std::uint32_t frequencyWord() const { return m_frequencyWord; }
    double frequencyHz() const { return m_frequencyWord / kWordsPerHz; }

    std::uint32_t stateWord() const { return m_stateWord; }
    bool streaming() const;
    bool shortSamples() const; ///< 2 bytes a component instead of 3
    unsigned rateCode() const; ///< 0..8
    double sampleRateHz() const;
    std::size_t samplesPerFrame() const;

    std::uint32_t attenuator() const { return m_attenuator; } ///< steps of 0.5 dB, 0..63
    const std::array<std::uint8_t, 256> &adcRegisters() const { return m_adcRegisters; }

    /// Linear gain from the antenna to the samples: ADC gain minus attenuator.
    double gain() const;

private:
    std::uint32_t m_frequencyWord = 0;
    std::uint32_t m_stateWord = 0;
    std::uint32_t m_attenuator = 0;
    std::array<std::uint8_t, 256> m_adcRegisters = {};
};
} // namespace vr
