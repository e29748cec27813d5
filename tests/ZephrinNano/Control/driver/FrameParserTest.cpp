// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/driver/FrameParser.h"
#include "ZephrinNano/Control/driver/FrameStream.h"

#include <gtest/gtest.h>
#include <random>

namespace
{
using Bytes = std::vector<int8_t>;

// One byte after the other, step over each match: what findHeaders() must not differ from.
std::vector<std::size_t> plainScan(const Bytes &block)
{
    std::vector<std::size_t> found;
    std::size_t p = 0;
    while (p < block.size()) {
        if (block[p] != 0x55) {
            ++p;
            continue;
        }
        std::size_t same = 1;
        for (; same < 5; ++same) {
            if (p + same == block.size())
                return found;
            if (block[p + same] != (same < 4 ? 0x55 : 0x01))
                break;
        }
        if (same == 5)
            found.push_back(p);
        p += same == 5 ? 5 : 1;
    }
    return found;
}

struct Decoded
{
    std::vector<COMPLEX> iq;
    std::vector<std::size_t> skipped;
    std::uint16_t peak;
};

Decoded decode(const Bytes &block)
{
    Decoded out;
    const auto headers = FrameParser::findHeaders(block);
    out.iq.resize(FrameParser::samplesIn(headers, 0));
    out.peak = FrameParser::decode(
        block, headers, 0, out.iq.data(), [&](std::size_t size) { out.skipped.push_back(size); });
    return out;
}

// How a distance between markers is read. A frame with a byte too many or too few holds the samples
// that the row says; those of the whole frame before and after it always come.
struct Distance
{
    const char *name;
    std::size_t at;         // in the middle frame
    int change;             // bytes added (random ones) or, below 0, taken away
    std::size_t samples;    // that the middle frame gives
    std::size_t firstRight; // of these, the samples in one piece: from here
    std::size_t endRight;   // to here
};

class FrameDistanceTest : public testing::TestWithParam<Distance>
{ };

TEST_P(FrameDistanceTest, DecidesWhichSamplesAreKept)
{
    const Distance &row = GetParam();
    Bytes block = test::frames(4);
    const auto at = block.begin() + long(test::kFrame + row.at);
    if (row.change < 0)
        block.erase(at, at - row.change);
    else
        block.insert(at, std::size_t(row.change), int8_t(0x33));

    const Decoded out = decode(block);
    ASSERT_EQ(out.iq.size(), 2 * test::kFrameSamples + row.samples);
    for (std::size_t i = 0; i < test::kFrameSamples; ++i) {
        EXPECT_EQ(test::sampleNumber(out.iq[i]), (long long)(i));
        EXPECT_EQ(test::sampleNumber(out.iq[test::kFrameSamples + row.samples + i]),
            (long long)(2 * test::kFrameSamples + i));
    }
    for (std::size_t i = 0; i < row.samples; ++i) {
        const bool right = i >= row.firstRight && i < row.endRight;
        EXPECT_EQ(test::sampleNumber(out.iq[test::kFrameSamples + i]),
            right ? (long long)(test::kFrameSamples + i) : -1)
            << i;
    }
    if (row.samples == 0)
        EXPECT_EQ(
            out.skipped, std::vector<std::size_t>{std::size_t(int(test::kFrame) + row.change)});
    else
        EXPECT_TRUE(out.skipped.empty());
}

INSTANTIATE_TEST_SUITE_P(Rows, FrameDistanceTest,
    testing::Values(Distance{"whole", 100, 0, 84, 0, 84}, //
        Distance{"addedInSample10", 8 + 6 * 10 + 1, 1, 84, 11, 84},
        Distance{"lostInSample10", 8 + 6 * 10 + 1, -1, 83, 0, 10},
        Distance{"twoLost", 100, -2, 0, 0, 0}, //
        Distance{"twoAdded", 100, 2, 0, 0, 0}),
    [](const auto &info) { return info.param.name; });

TEST(FrameParserTest, PeakIsTheLargestWordOfTheFramesKept)
{
    const struct
    {
        std::vector<std::uint16_t> words; // by frame; the last frame is only a tail
        std::size_t lostIn;               // frame that loses two bytes; none if beyond
        std::uint16_t peak;
    } rows[] = {{{5, 0x1234, 7, 0x3fff}, 9, 0x1234},
        {{0x3fff, 0x8001, 0x7fff, 0}, 9, 0x8001}, // unsigned: overflow wins
        {{0x3fff, 0x8001, 0x7fff, 0}, 1, 0x7fff}};
    for (const auto &row : rows) {
        Bytes block;
        for (std::size_t f = 0; f < row.words.size(); ++f) {
            test::appendFrame(block, 0, row.words[f]);
            if (f == row.lostIn)
                block.erase(block.end() - 2, block.end());
        }
        EXPECT_EQ(decode(block).peak, row.peak);
    }
}

// Random bytes, with whole markers and fragments at distances around a frame's. Each block is as
// long as its allocation, so that a sanitizer sees a read after it.
TEST(FrameParserTest, RandomWindowsAreScannedRightAndSurvived)
{
    std::mt19937 random(11);
    Bytes pool(1 << 16);
    for (auto &byte : pool)
        byte = int8_t(random());
    std::size_t samples = 0;
    std::vector<COMPLEX> iq;
    for (int round = 0; round < 200000; ++round) {
        const std::size_t size = random() % 1400;
        const auto from = pool.begin() + long(random() % (pool.size() - size));
        Bytes block(from, from + long(size));
        std::size_t at = random() % 64;
        for (unsigned pieces = random() % 5; pieces > 0; --pieces) {
            for (std::size_t i = 0, part = 1 + random() % 6; i < part && at + i < size; ++i)
                block[at + i] = i == 4 || (part < 5 && i == 2) ? 0x01 : 0x55;
            at += random() % 4 != 0 ? 510 + random() % 5 : 1 + random() % 7;
        }
        const auto headers = FrameParser::findHeaders(block);
        ASSERT_EQ(headers, plainScan(block));
        const std::size_t before = samples;
        const std::size_t format = random() % 2;
        iq.resize(FrameParser::samplesIn(headers, format));
        FrameParser::decode(block, headers, format, iq.data(), [&](std::size_t) { ++samples; });
        samples += iq.size();
        ASSERT_LE(samples - before, 126 * 3 + headers.size());
        const std::size_t tail = FrameParser::keepTail(block, headers);
        ASSERT_EQ(tail, headers.empty() ? 0 : size - headers.back());
    }
    EXPECT_GT(samples, 200000u); // the windows did hold frames
}
} // namespace
