// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <set>
#include <string>
#include <vector>

// Wrong arguments of what has more of them than arrays and a length: the status tells which one,
// and nothing is written.

namespace
{
struct Row
{
    IppStatus got;
    IppStatus expected;
};

void expectAll(const std::vector<Row> &rows)
{
    for (std::size_t n = 0; n < rows.size(); ++n)
        EXPECT_EQ(rows[n].got, rows[n].expected) << "row " << n;
}

const double kNan = std::nan("");

TEST(ArgumentsTest, EveryStatusHasATextOfItsOwn)
{
    EXPECT_EQ(ippInit(), 0);
    std::set<std::string> texts;
    const int all[] = {0, -5, -6, -8, -9, -10, -15, -16, -25, -44, -45, -46, -224, -225, -12345};
    for (const int status : all)
        texts.insert(ippGetStatusString(IppStatus(status)));
    EXPECT_EQ(texts.size(), std::size(all));
}

TEST(ArgumentsTest, Tone)
{
    Ipp64fc sample{9.0, 9.0};
    const auto tone = [&](double magnitude, double frequency, double phase, int length = 1) {
        return ippsTone_Direct_64fc(
            &sample, length, magnitude, frequency, &phase, ippAlgHintAccurate);
    };
    double phase = 0.0;
    expectAll({
        {tone(0.0, 0.1, 0.0), ippStsToneMagnErr},
        {tone(kNan, 0.1, 0.0), ippStsToneMagnErr},
        {tone(1.0, -0.1, 0.0), ippStsToneFreqErr},
        {tone(1.0, 1.1, 0.0), ippStsToneFreqErr},
        {tone(1.0, kNan, 0.0), ippStsToneFreqErr},
        {tone(1.0, 0.1, -1e-9), ippStsTonePhaseErr},
        {tone(1.0, 0.1, 2.0 * std::numbers::pi), ippStsTonePhaseErr},
        {tone(1.0, 0.1, 0.0, 0), ippStsSizeErr},
        {ippsTone_Direct_64fc(nullptr, 1, 1.0, 0.1, &phase, ippAlgHintNone), ippStsNullPtrErr},
        {ippsTone_Direct_64fc(&sample, 1, 1.0, 0.1, nullptr, ippAlgHintNone), ippStsNullPtrErr},
    });
    EXPECT_EQ(sample, (Ipp64fc{9.0, 9.0}));
}

TEST(ArgumentsTest, Fft)
{
    IppsFFTSpec_C_64fc *made = nullptr;
    IppsFFTSpec_C_32fc *made32 = nullptr;
    Ipp64fc sample{9.0, 9.0};
    int bytes = -1;
    expectAll({
        {ippsFFTInitAlloc_C_64fc(nullptr, 4, 1, ippAlgHintNone), ippStsNullPtrErr},
        {ippsFFTInitAlloc_C_64fc(&made, -1, 1, ippAlgHintNone), ippStsFftOrderErr},
        {ippsFFTInitAlloc_C_64fc(&made, 26, 1, ippAlgHintNone), ippStsFftOrderErr},
        {ippsFFTInitAlloc_C_32fc(&made32, 27, 1, ippAlgHintNone), ippStsFftOrderErr},
        {ippsFFTInitAlloc_C_64fc(&made, 4, 0, ippAlgHintNone), ippStsFftFlagErr},
        {ippsFFTInitAlloc_C_64fc(&made, 4, 3, ippAlgHintNone), ippStsFftFlagErr},
        {ippsFFTGetBufSize_C_64fc(nullptr, &bytes), ippStsNullPtrErr},
        {ippsFFTFwd_CToC_64fc_I(&sample, nullptr, nullptr), ippStsNullPtrErr},
        {ippsFFTInv_CToC_64fc_I(&sample, nullptr, nullptr), ippStsNullPtrErr},
        {ippsFFTFree_C_64fc(nullptr), ippStsNullPtrErr},
    });
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(made32, nullptr);
}

TEST(ArgumentsTest, Iir)
{
    double taps[6] = {};
    const double noLeadingTap[] = {1.0, 0.0, 0.0, 1.0};
    IppsIIRState_64f *state = nullptr;
    double sample = 3.0;
    expectAll({
        {ippsIIRGenLowpass_64f(0.1, 0.0, 2, nullptr, ippButterworth), ippStsNullPtrErr},
        {ippsIIRGenLowpass_64f(0.1, 0.0, 0, taps, ippButterworth), ippStsIIRGenOrderErr},
        {ippsIIRGenHighpass_64f(0.1, 0.0, 13, taps, ippButterworth), ippStsIIRGenOrderErr},
        {ippsIIRGenLowpass_64f(0.0, 0.0, 2, taps, ippButterworth), ippStsFilterFrequencyErr},
        {ippsIIRGenHighpass_64f(0.5, 0.0, 2, taps, ippButterworth), ippStsFilterFrequencyErr},
        {ippsIIRGenHighpass_64f(kNan, 0.0, 2, taps, ippButterworth), ippStsFilterFrequencyErr},
        {ippsIIRGenLowpass_64f(0.1, 0.0, 2, taps, ippChebyshev1), ippStsBadArgErr},
        {ippsIIRGenLowpass_64f(0.1, 1.0, 2, taps, IppsIIRFilterType(7)), ippStsBadArgErr},
        {ippsIIRInitAlloc_64f(nullptr, taps, 1, nullptr), ippStsNullPtrErr},
        {ippsIIRInitAlloc_64f(&state, nullptr, 1, nullptr), ippStsNullPtrErr},
        {ippsIIRInitAlloc_64f(&state, taps, 0, nullptr), ippStsIIROrderErr},
        {ippsIIRInitAlloc_64f(&state, noLeadingTap, 1, nullptr), ippStsDivByZeroErr},
        {ippsIIR_64f_I(&sample, 1, nullptr), ippStsNullPtrErr},
        {ippsIIRFree_64f(nullptr), ippStsNullPtrErr},
    });
    EXPECT_EQ(state, nullptr);
    for (const double tap : taps)
        EXPECT_EQ(tap, 0.0);
}
} // namespace
