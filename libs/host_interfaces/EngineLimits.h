// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

/// The sizes of the road from the wire to the audio threads. A host that deals out samples by
/// itself, and wants to lose none, works out from them how much is on its way at most.
///
///     read window -> frames -> input ring -> block -> audio ring -> sound card
///                                                  -> chunk -> outlet ring -> cable, line output
///
/// Between two threads stands a ring that takes what it is given whole or not at all.
struct EngineLimits
{
    /// Rates of the device in hertz. The place in the list is the code that options page, driver
    /// and wire share.
    static constexpr std::array<int, 9> kRatesHz = {
        48000, 96000, 192000, 384000, 768000, 1536000, 1920000, 2560000, 3072000};

    /// A stream frame, and what it holds at 24 bits a component.
    static constexpr std::size_t kFrameBytes = 512;
    static constexpr std::size_t kFrameSamples = 84;

    /// Bytes that the driver asks for at once, by the code of the rate (0..8).
    static constexpr std::size_t readWindow(int rateCode)
    {
        constexpr std::size_t kUnit = 256; // doubled per rate code
        constexpr std::size_t kSmallest = 4096;
        constexpr std::size_t kLargest = 32768;
        return std::clamp(kUnit << rateCode, kSmallest, kLargest);
    }

    /// IQ samples between reader and engine.
    static constexpr std::size_t kInputRing = 131072;

    /// IQ samples that the engine works on at a time when the sound card runs at 48 kHz.
    static constexpr std::size_t kBlock = 512;

    /// Stereo frames between engine and sound card: a third of a second at 48 kHz.
    static constexpr std::size_t kAudioRing = 16384;

    /// Stereo frames at the sound card's rate in which audio moves on to the other outlets.
    static constexpr std::size_t kOutletChunk = 2048;

    /// Stereo frames at the rate of the outlet between engine and each of the other outlets.
    static constexpr std::size_t kOutletRing = 16384;
};
