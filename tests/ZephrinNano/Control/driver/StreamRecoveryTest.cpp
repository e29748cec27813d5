// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/driver/FrameParser.h"
#include "ZephrinNano/Control/driver/FrameStream.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

// What a torn stream costs. Faults stand so far apart that each is paid for by itself; what a
// single byte spares of its frame is told by the distances between markers.
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

/// Samples that the fault may cost, by their numbers: those of frames that lose or gain a byte, and
/// of the frame ahead if the marker that ends it is hit.
std::pair<std::size_t, std::size_t> samplesHit(const Fault &fault)
{
    const std::size_t frame = fault.at / test::kFrame, offset = fault.at % test::kFrame;
    const std::size_t last = fault.lost == 0 ? frame : (fault.at + fault.lost - 1) / test::kFrame;
    // Bytes added exactly between two frames belong to the one ahead.
    const std::size_t end = fault.lost == 0 && offset == 0 ? frame : last + 1;
    return {
        (offset < kMarker ? frame - 1 : frame) * test::kFrameSamples, end * test::kFrameSamples};
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
    const std::size_t end = samplesHit(faults.back()).second;
    // Enough frames after the last fault that the tail of the last window is whole.
    const Bytes whole = test::frames(end / test::kFrameSamples + 3 * window / test::kFrame);

    std::vector<bool> seen(end);
    long long newest = -1;
    for (const long long n : numbersRead(damaged(whole, faults, random), window)) {
        if (n < 0 || n >= (long long)end)
            continue;
        ASSERT_GT(n, newest) << "a sample came twice or late";
        newest = n;
        seen[std::size_t(n)] = true;
    }
    EXPECT_GT(std::count(seen.begin(), seen.end(), false), kFaults);
    for (const Fault &fault : faults) {
        const auto [from, to] = samplesHit(fault);
        std::fill(seen.begin() + long(from), seen.begin() + long(to), true);
    }
    EXPECT_EQ(std::count(seen.begin(), seen.end(), false), 0) << "no fault hits these";
}

INSTANTIATE_TEST_SUITE_P(Windows, StreamRecoveryTest, testing::Values<std::size_t>(4096, 32768),
    testing::PrintToStringParamName());
} // namespace
