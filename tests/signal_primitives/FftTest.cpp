// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <complex>
#include <limits>
#include <map>
#include <memory>
#include <numbers>
#include <thread>
#include <vector>

namespace
{
/// One precision's functions under common names.
struct Single
{
    using Real = float;
    using Spec = IppsFFTSpec_C_32fc;
    static constexpr auto init = ippsFFTInitAlloc_C_32fc;
    static constexpr auto bufferSize = ippsFFTGetBufSize_C_32fc;
    static constexpr auto forward = ippsFFTFwd_CToC_32fc_I;
    static constexpr auto inverse = ippsFFTInv_CToC_32fc_I;
    static constexpr auto release = ippsFFTFree_C_32fc;
};

struct Double
{
    using Real = double;
    using Spec = IppsFFTSpec_C_64fc;
    static constexpr auto init = ippsFFTInitAlloc_C_64fc;
    static constexpr auto bufferSize = ippsFFTGetBufSize_C_64fc;
    static constexpr auto forward = ippsFFTFwd_CToC_64fc_I;
    static constexpr auto inverse = ippsFFTInv_CToC_64fc_I;
    static constexpr auto release = ippsFFTFree_C_64fc;
};

template <typename Precision>
class FftTest : public testing::Test
{
public:
    using Real = typename Precision::Real;
    using Complex = Velmora::complex<Real>;
    using SpecPtr =
        std::unique_ptr<typename Precision::Spec, IppStatus (*)(typename Precision::Spec *)>;

    static SpecPtr spec(int order, int flag = IPP_FFT_DIV_FWD_BY_N)
    {
        typename Precision::Spec *result = nullptr;
        EXPECT_EQ(Precision::init(&result, order, flag, ippAlgHintAccurate), ippStsNoErr);
        return SpecPtr(result, Precision::release);
    }

    static std::vector<Ipp8u> buffer(const SpecPtr &spec)
    {
        int bytes = 0;
        EXPECT_EQ(Precision::bufferSize(spec.get(), &bytes), ippStsNoErr);
        EXPECT_GT(bytes, 0);
        return std::vector<Ipp8u>(static_cast<std::size_t>(bytes));
    }

    /// A line of a few impulses, by bin.
    static std::map<std::size_t, std::complex<long double>> impulses(std::size_t size)
    {
        return {{size / 3, {1.0, 0.0}}, {size / 2, {0.5, -0.25}}, {size - 1, {-0.125, 0.75}}};
    }
};

using Precisions = testing::Types<Single, Double>;
TYPED_TEST_SUITE(FftTest, Precisions);

// Every order that the receiver may ask for, through all ways of planning: impulses become tones,
// forward is the way back, and neither the address nor a missing work buffer matters.
TYPED_TEST(FftTest, ImpulsesBecomeTonesAndComeBackAtEveryOrderScalingAndAddress)
{
    using Test = FftTest<TypeParam>;
    using Real = typename TypeParam::Real;
    using Complex = typename Test::Complex;
    constexpr double kRoundOff = 16 * std::numeric_limits<Real>::epsilon();
    for (int order = 0; order <= 17; ++order) {
        const std::size_t size = std::size_t(1) << order;
        const auto impulses = Test::impulses(size);
        for (const int flag : {IPP_FFT_DIV_FWD_BY_N, IPP_FFT_DIV_INV_BY_N, IPP_FFT_DIV_BY_SQRTN,
                 IPP_FFT_NODIV_BY_ANY}) {
            const auto spec = Test::spec(order, flag);
            auto work = Test::buffer(spec);
            work.resize(work.size() + 1);
            std::vector<Real> reals(2 * size + 1);
            const std::size_t offset = flag == IPP_FFT_DIV_INV_BY_N ? 1 : 0; // of one part
            auto *data = reinterpret_cast<Complex *>(reals.data() + offset);
            Ipp8u *buffer =
                flag == IPP_FFT_NODIV_BY_ANY ? nullptr : work.data() + offset; // one byte
            for (const auto &[bin, value] : impulses)
                data[bin] = {Real(value.real()), Real(value.imag())};
            const std::vector<Complex> before(data, data + size);

            ASSERT_EQ(TypeParam::inverse(data, spec.get(), buffer), ippStsNoErr);
            const double inverse = flag == IPP_FFT_DIV_INV_BY_N ? 1.0 / double(size)
                : flag == IPP_FFT_DIV_BY_SQRTN                  ? 1.0 / std::sqrt(double(size))
                                                                : 1.0;
            for (std::size_t n = 0; n < size; n += 1 + size / 67) {
                std::complex<long double> tones;
                for (const auto &[bin, value] : impulses) {
                    const auto turns =
                        static_cast<long double>(bin * n % size) / static_cast<long double>(size);
                    tones += value * std::polar(1.0L, 2 * std::numbers::pi_v<long double> * turns);
                }
                ASSERT_NEAR(data[n].re / inverse, double(tones.real()), kRoundOff) << order;
                ASSERT_NEAR(data[n].im / inverse, double(tones.imag()), kRoundOff) << order;
            }
            ASSERT_EQ(TypeParam::forward(data, spec.get(), buffer), ippStsNoErr);
            const double both = flag == IPP_FFT_NODIV_BY_ANY ? double(size) : 1.0;
            for (std::size_t n = 0; n < size; ++n) {
                ASSERT_NEAR(data[n].re / both, before[n].re, kRoundOff) << order << " " << flag;
                ASSERT_NEAR(data[n].im / both, before[n].im, kRoundOff) << order << " " << flag;
            }
        }
    }
}

TYPED_TEST(FftTest, OneSpecificationServesManyThreadsWhileOthersAreMade)
{
    using Test = FftTest<TypeParam>;
    const auto spec = Test::spec(10);
    std::vector<typename Test::Complex> input(1024);
    for (const auto &[bin, value] : Test::impulses(input.size()))
        input[bin].re = typename TypeParam::Real(value.real() + value.imag());
    auto expected = input;
    TypeParam::forward(expected.data(), spec.get(), Test::buffer(spec).data());
    std::atomic<int> wrong = 0;
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 4; ++thread)
            threads.emplace_back([&, makes = thread % 2 == 1] {
                auto work = Test::buffer(spec);
                for (int n = 0; n < 300; ++n) {
                    auto data = input;
                    TypeParam::forward(data.data(), spec.get(), work.data());
                    wrong += data != expected;
                    if (makes)
                        Test::spec(n % 12);
                }
            });
    }
    EXPECT_EQ(wrong, 0);
}
} // namespace
