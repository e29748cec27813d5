// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <numbers>

namespace
{
// One wrong argument a family: the status tells which one, and nothing is written.
TEST(ArgumentsTest, AWrongOneIsToldAndNothingIsWritten)
{
    EXPECT_EQ(ippInit(), ippStsNoErr);
    EXPECT_STRNE(ippGetStatusString(ippStsNullPtrErr), ippGetStatusString(ippStsSizeErr));

    double value = 9.0;
    EXPECT_EQ(ippsMul_64f_I(nullptr, &value, 1), ippStsNullPtrErr);
    EXPECT_EQ(ippsMul_64f_I(&value, &value, -1), ippStsSizeErr);
    EXPECT_EQ(ippsMax_64f(nullptr, 1, &value), ippStsNullPtrErr);
    EXPECT_EQ(ippsSin_64f_A26(&value, &value, 0), ippStsSizeErr);
    EXPECT_EQ(value, 9.0);

    Ipp64fc sample{9.0, 9.0};
    const auto tone = [&sample](double magnitude, double frequency, double phase) {
        return ippsTone_Direct_64fc(&sample, 1, magnitude, frequency, &phase, ippAlgHintNone);
    };
    EXPECT_EQ(tone(0.0, 0.1, 0.0), ippStsToneMagnErr);
    EXPECT_EQ(tone(1.0, std::nan(""), 0.0), ippStsToneFreqErr);
    EXPECT_EQ(tone(1.0, 0.1, 2.0 * std::numbers::pi), ippStsTonePhaseErr);
    EXPECT_EQ(sample, (Ipp64fc{9.0, 9.0}));

    IppsFFTSpec_C_64fc *fft = nullptr;
    EXPECT_EQ(ippsFFTInitAlloc_C_64fc(&fft, 26, 1, ippAlgHintNone), ippStsFftOrderErr);
    EXPECT_EQ(ippsFFTInitAlloc_C_64fc(&fft, 4, 3, ippAlgHintNone), ippStsFftFlagErr);
    EXPECT_EQ(fft, nullptr);

    const double noLeadingTap[] = {1.0, 0.0, 0.0, 1.0};
    IppsIIRState_64f *iir = nullptr;
    EXPECT_EQ(ippsIIRInitAlloc_64f(&iir, noLeadingTap, 1, nullptr), ippStsDivByZeroErr);
    EXPECT_EQ(iir, nullptr);
    double taps[6] = {};
    EXPECT_EQ(ippsIIRGenLowpass_64f(0.5, 0.0, 2, taps, ippButterworth), ippStsFilterFrequencyErr);
    EXPECT_EQ(taps[3], 0.0);
}

TEST(ArgumentsTest, AnArrayStartsOnACacheLineAndOneOfNoLengthIsNull)
{
    for (const int length : {1, 7, 4096}) {
        Ipp64fc *array = ippsMalloc_64fc(length);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(array) % 64, 0u);
        array[length - 1] = {1.0, 2.0};
        ippsFree(array);
    }
    EXPECT_EQ(ippsMalloc_32f(0), nullptr);
    ippsFree(nullptr);
}
} // namespace
