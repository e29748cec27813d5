// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/driver/FrameParser.h"
#include "ZephrinNano/Control/driver/FrameStream.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

// What a torn stream costs. Faults stand so far apart that each is paid for by itself.
namespace
{
using Bytes = std::vector<int8_t>;
constexpr int kFaults = 10000;
constexpr std::size_t kMarker = 5;

struct Fault
{
    std::size_t at;    // byte of the whole stream, in front of which it happens
    std::size_t lost;  // bytes
    std::size_t added; // bytes
};

struct Range
{
    std::size_t first, end;
};

// Frames that the fault may touch: those that lose or gain a byte, and the frame ahead if the
// marker that ends it is hit. Bytes added exactly between two frames belong to the one ahead.
Range framesHit(const Fault &fault)
{
    const std::size_t frame = fault.at / test::kFrame, offset = fault.at % test::kFrame;
    const std::size_t last = fault.lost == 0 ? frame : (fault.at + fault.lost - 1) / test::kFrame;
    const bool between = fault.lost == 0 && offset == 0;
    return {offset < kMarker ? frame - 1 : frame, between ? frame : last + 1};
}

// The most samples that one fault may cost. A single byte after the frame's head leaves a frame of
// 511 or 513 bytes, which keeps what is before the lost byte or after the added one; everything
// else costs the frames it hits.
std::size_t mostSamplesLost(const Fault &fault)
{
    const std::size_t offset = fault.at % test::kFrame;
    if (fault.lost + fault.added == 1 && offset >= FrameParser::kSamplesOffset) {
        const std::size_t body = offset - FrameParser::kSamplesOffset;
        return fault.lost ? test::kFrameSamples - body / 6 : (body + 5) / 6;
    }
    const Range hit = framesHit(fault);
    return (hit.end - hit.first) * test::kFrameSamples;
}

std::vector<Fault> randomFaults(std::mt19937 &random)
{
    std::vector<Fault> faults;
    std::size_t at = 4 * test::kFrame;
    for (int i = 0; i < kFaults; ++i) {
        at += 2 * test::kFrame + random() % test::kFrame;
        if (random() % 4 == 0) // more often than chance would: in or next to a marker
            at = at / test::kFrame * test::kFrame + random() % 9;
        Fault fault{at, 0, 0};
        const std::size_t cut = 1 + random() % (random() % 8 == 0 ? 2500 : 600);
        const std::size_t count = random() % 2 == 0 ? 1 : cut;
        (random() % 2 == 0 ? fault.lost : fault.added) = count;
        faults.push_back(fault);
        at += fault.lost;
    }
    return faults;
}

Bytes damaged(const Bytes &whole, const std::vector<Fault> &faults, std::mt19937 &random)
{
    Bytes stream;
    stream.reserve(whole.size());
    std::size_t from = 0;
    for (const Fault &fault : faults) {
        stream.insert(stream.end(), whole.begin() + long(from), whole.begin() + long(fault.at));
        for (std::size_t i = 0; i < fault.added; ++i)
            stream.push_back(random() % 4 == 0 ? 0x55 : int8_t(random()));
        from = fault.at + fault.lost;
    }
    stream.insert(stream.end(), whole.begin() + long(from), whole.end());
    return stream;
}

// Reads the stream in windows, each after the tail of the one before.
std::vector<long long> numbersRead(const Bytes &stream, std::size_t window)
{
    std::vector<long long> numbers;
    std::vector<COMPLEX> iq;
    Bytes buffer(window);
    std::size_t tail = 0, from = 0;
    while (from + window - tail <= stream.size()) {
        const std::size_t count = window - tail;
        EXPECT_GT(count, 0u);
        if (count == 0)
            break;
        std::copy_n(stream.begin() + long(from), count, buffer.begin() + long(tail));
        from += count;
        const auto headers = FrameParser::findHeaders(buffer);
        FrameParser::decode(buffer, headers, 0, iq, [](std::size_t) {});
        for (const COMPLEX &sample : iq)
            numbers.push_back(test::sampleNumber(sample));
        tail = FrameParser::keepTail(buffer, headers);
    }
    return numbers;
}

class StreamRecoveryTest : public testing::TestWithParam<std::size_t>
{ };

TEST_P(StreamRecoveryTest, FaultCostsNoMoreThanTheFramesItHits)
{
    const std::size_t window = GetParam();
    std::mt19937 random(unsigned(window) + 5);
    const auto faults = randomFaults(random);
    const std::size_t last = framesHit(faults.back()).end;
    // Enough frames after the last fault that the tail of the last window is whole.
    const Bytes whole = test::frames(last + 3 * window / test::kFrame);
    const auto numbers = numbersRead(damaged(whole, faults, random), window);

    std::vector<int> seen(last * test::kFrameSamples);
    long long newest = -1;
    for (const long long n : numbers) {
        if (n < 0 || n >= (long long)seen.size())
            continue;
        ++seen[std::size_t(n)];
        ASSERT_GT(n, newest) << "a sample came twice or late";
        newest = n;
    }

    std::size_t lost = 0;
    for (const Fault &fault : faults) {
        const Range hit = framesHit(fault);
        const auto first = seen.begin() + long(hit.first * test::kFrameSamples);
        const auto end = seen.begin() + long(hit.end * test::kFrameSamples);
        const auto missing = std::size_t(std::count(first, end, 0));
        ASSERT_LE(missing, mostSamplesLost(fault)) << "byte " << fault.at % test::kFrame << " lost "
                                                   << fault.lost << " added " << fault.added;
        std::fill(first, end, 1);
        lost += missing;
    }
    // What no fault hits is there, all of it.
    EXPECT_EQ(std::count(seen.begin(), seen.end(), 0), 0);
    EXPECT_GT(lost, 0u);
}

INSTANTIATE_TEST_SUITE_P(Windows, StreamRecoveryTest, testing::Values<std::size_t>(4096, 32768),
    testing::PrintToStringParamName());
} // namespace
