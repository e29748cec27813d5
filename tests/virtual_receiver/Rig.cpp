// SPDX-License-Identifier: GPL-3.0-or-later
#include "Rig.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <gtest/gtest.h>

namespace test
{
std::vector<std::uint8_t> command(std::uint8_t code, std::uint32_t value)
{
    return {0x55, 0x55, 0x55, 0x55, 0x55, 1, code, std::uint8_t(value), std::uint8_t(value >> 8),
        std::uint8_t(value >> 16), std::uint8_t(value >> 24)};
}

std::uint32_t frequencyWord(double hertz)
{
    return std::uint32_t(std::uint64_t(hertz * 34.952533333333335)); // 2^32 / 122.88 MHz
}

std::uint32_t streaming(unsigned rateCode, bool shortSamples)
{
    return 1u << 19 | (shortSamples ? 1u << 17 : 0) | rateCode;
}

Frame decode(const std::uint8_t *bytes, bool shortSamples)
{
    static const std::uint8_t kMarker[5] = {0x55, 0x55, 0x55, 0x55, 1};
    EXPECT_TRUE(std::equal(kMarker, kMarker + 5, bytes));
    Frame frame;
    frame.peakWord = std::uint16_t(bytes[6] | bytes[7] << 8);
    const std::size_t width = shortSamples ? 2 : 3;
    for (std::size_t at = 8; at < kFrameSize; at += width) {
        std::int32_t code = 0;
        for (std::size_t i = 0; i < width; ++i)
            code |= bytes[at + i] << (8 * i);
        const std::int32_t range = 1 << (8 * width);
        frame.codes.push_back(code >= range / 2 ? code - range : code);
    }
    return frame;
}

Rig::Rig()
{
    vr_reset();
    vr_set_pace(VR_PACE_FREE);
    EXPECT_EQ(FT_Open(0, &m_handle), FT_OK);
    EXPECT_EQ(FT_SetBitMode(m_handle, 0xff, FT_BITMODE_SYNC_FIFO), FT_OK);
    EXPECT_EQ(FT_SetTimeouts(m_handle, 200, 200), FT_OK);
}

FT_STATUS Rig::write(std::vector<std::uint8_t> bytes)
{
    DWORD written = 0;
    return FT_Write(m_handle, bytes.data(), DWORD(bytes.size()), &written);
}

void Rig::send(std::uint8_t code, std::uint32_t value)
{
    EXPECT_EQ(write(command(code, value)), FT_OK);
}

void Rig::stream(unsigned rateCode, bool shortSamples)
{
    send(2, streaming(rateCode, shortSamples));
}

std::vector<std::uint8_t> Rig::read(std::size_t bytes)
{
    std::vector<std::uint8_t> buffer(bytes);
    DWORD received = 0;
    EXPECT_EQ(FT_Read(m_handle, buffer.data(), DWORD(bytes), &received), FT_OK);
    buffer.resize(received);
    return buffer;
}

std::vector<Frame> Rig::frames(std::size_t count, bool shortSamples)
{
    const auto bytes = read(count * kFrameSize);
    EXPECT_EQ(bytes.size(), count * kFrameSize);
    std::vector<Frame> frames;
    for (std::size_t at = 0; at + kFrameSize <= bytes.size(); at += kFrameSize)
        frames.push_back(decode(&bytes[at], shortSamples));
    return frames;
}

std::vector<COMPLEX> Rig::samples(std::size_t count)
{
    std::vector<COMPLEX> samples;
    for (const Frame &frame : frames((count + 83) / 84)) {
        for (std::size_t i = 0; i < frame.codes.size(); i += 2)
            samples.push_back({frame.codes[i] / 8388607.0, frame.codes[i + 1] / 8388607.0});
    }
    samples.resize(std::min(count, samples.size()));
    return samples;
}

vr_status Rig::status() const
{
    vr_status status = {};
    vr_get_status(&status);
    return status;
}

std::string TemporaryFolder::write(const std::string &name, const std::string &content) const
{
    std::ofstream(file(name), std::ios::binary) << content;
    return file(name);
}
} // namespace test
