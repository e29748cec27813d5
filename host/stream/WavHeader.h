// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace host
{
#pragma pack(push, 1)
/// The bytes in front of the samples of a stereo WAV of 32-bit floats, little-endian.
///
/// The sizes of RIFF have 32 bits, so a file can tell of 4 GiB only. A longer one becomes RF64 (EBU
/// Tech 3306): its sizes have 64 bits and stand in a chunk "ds64" in front, for which every file
/// keeps room under the name "JUNK". So a file that grows too long needs another header and nothing
/// else, and one that does not is a WAV as everybody knows it.
struct WavHeader
{
    static constexpr std::uint32_t kChannels = 2;
    static constexpr std::uint32_t kBytesPerFrame = kChannels * sizeof(float);
    static constexpr std::uint64_t kUnknown = ~std::uint64_t(0); ///< frames of a pipe

    WavHeader(std::uint32_t rateHz, std::uint64_t frames);

    char riff[4] = {'R', 'I', 'F', 'F'};
    std::uint32_t riffBytes = kIsElsewhere; // all that follows
    char wave[4] = {'W', 'A', 'V', 'E'};

    char reserve[4] = {'J', 'U', 'N', 'K'};
    std::uint32_t reserveBytes = 28;
    std::uint64_t riffBytes64 = 0;
    std::uint64_t dataBytes64 = 0;
    std::uint64_t frames64 = 0;
    std::uint32_t otherChunks = 0; // with sizes of 64 bits

    char fmt[4] = {'f', 'm', 't', ' '};
    std::uint32_t fmtBytes = 16;
    std::uint16_t format = 3; // IEEE float
    std::uint16_t channels = kChannels;
    std::uint32_t rateHz;
    std::uint32_t bytesPerSecond;
    std::uint16_t bytesPerFrame = kBytesPerFrame;
    std::uint16_t bitsPerSample = 8 * sizeof(float);

    char fact[4] = {'f', 'a', 'c', 't'};
    std::uint32_t factBytes = 4;
    std::uint32_t frames = kIsElsewhere;

    char data[4] = {'d', 'a', 't', 'a'};
    std::uint32_t dataBytes = kIsElsewhere;

private:
    static constexpr std::uint32_t kIsElsewhere = ~std::uint32_t(0); // or nowhere
};
#pragma pack(pop)
static_assert(sizeof(WavHeader) == 92);
} // namespace host
