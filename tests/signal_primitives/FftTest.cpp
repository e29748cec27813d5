// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <complex>
#include <limits>
#include <memory>
#include <numbers>
#include <random>
#include <thread>
#include <tuple>
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
    using Signal = std::vector<Velmora::complex<Real>>;
    using SpecPtr =
        std::unique_ptr<typename Precision::Spec, IppStatus (*)(typename Precision::Spec *)>;

    // Relative to the largest value; the error of a transform grows with its order.
    static constexpr double kRoundOff = 8 * std::numeric_limits<Real>::epsilon();

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

    static Signal noise(int order)
    {
        std::mt19937 generator(static_cast<unsigned>(order) + 1);
        std::uniform_real_distribution<Real> uniform(-1, 1);
        Signal signal(std::size_t(1) << order);
        for (auto &x : signal)
            x = {uniform(generator), uniform(generator)};
        return signal;
    }

    // The definition, in extended precision.
    static Signal transformed(const Signal &x, int sign, long double factor)
    {
        const std::size_t size = x.size();
        Signal result(size);
        for (std::size_t k = 0; k < size; ++k) {
            std::complex<long double> sum;
            for (std::size_t n = 0; n < size; ++n) {
                const auto turns = static_cast<long double>(k * n % size) / (long double)(size);
                sum += std::complex<long double>(x[n].re, x[n].im)
                    * std::polar(1.0L, sign * 2 * std::numbers::pi_v<long double> * turns);
            }
            result[k] = {Real(sum.real() * factor), Real(sum.imag() * factor)};
        }
        return result;
    }

    static double relativeError(const Velmora::complex<Real> *got, const Signal &expected)
    {
        double worst = 0.0;
        double largest = 0.0;
        for (std::size_t n = 0; n < expected.size(); ++n) {
            const double re = got[n].re - expected[n].re;
            const double im = got[n].im - expected[n].im;
            const double distance = std::hypot(re, im);
            if (!(distance <= worst))
                worst = distance; // not-a-number too
            largest = std::max(largest, double(std::hypot(expected[n].re, expected[n].im)));
        }
        return worst / largest;
    }
};

using Precisions = testing::Types<Single, Double>;
TYPED_TEST_SUITE(FftTest, Precisions);

TYPED_TEST(FftTest, BothDirectionsAreTheDefinitionUnderEachScaling)
{
    using Test = FftTest<TypeParam>;
    for (const int order : {0, 1, 2, 3, 7}) {
        const auto input = Test::noise(order);
        const long double size = static_cast<long double>(input.size());
        const std::tuple<int, long double, long double> rows[] = {
            {IPP_FFT_DIV_FWD_BY_N, 1 / size, 1},
            {IPP_FFT_DIV_INV_BY_N, 1, 1 / size},
            {IPP_FFT_DIV_BY_SQRTN, 1 / std::sqrt(size), 1 / std::sqrt(size)},
            {IPP_FFT_NODIV_BY_ANY, 1, 1},
        };
        for (const auto &[flag, forward, inverse] : rows) {
            const auto spec = Test::spec(order, flag);
            auto work = Test::buffer(spec);
            auto data = input;
            ASSERT_EQ(TypeParam::forward(data.data(), spec.get(), work.data()), ippStsNoErr);
            EXPECT_LT(Test::relativeError(data.data(), Test::transformed(input, -1, forward)),
                Test::kRoundOff)
                << "forward, order " << order << ", flag " << flag;
            data = input;
            ASSERT_EQ(TypeParam::inverse(data.data(), spec.get(), work.data()), ippStsNoErr);
            EXPECT_LT(Test::relativeError(data.data(), Test::transformed(input, 1, inverse)),
                Test::kRoundOff)
                << "inverse, order " << order << ", flag " << flag;
        }
    }
}

// Every order that the receiver may ask for, through all ways of planning: an impulse in bin k is a
// tone, forward is the way back, and neither the address nor a missing work buffer matters.
TYPED_TEST(FftTest, ToneAndRoundTripAtEveryOrderAndAddress)
{
    using Test = FftTest<TypeParam>;
    using Complex = Velmora::complex<typename TypeParam::Real>;
    for (int order = 3; order <= 17; ++order) {
        const auto spec = Test::spec(order);
        auto work = Test::buffer(spec);
        work.resize(work.size() + 1);
        const std::size_t size = std::size_t(1) << order;
        const std::size_t bin = size / 3;
        const auto input = Test::noise(order);
        for (const std::size_t offset : {0, 1, 2, 3}) { // reals, and one byte
            std::vector<typename TypeParam::Real> reals(2 * size + 4);
            auto *data = reinterpret_cast<Complex *>(reals.data() + offset);
            Ipp8u *buffer = offset == 0 ? work.data() : offset == 1 ? work.data() + 1 : nullptr;
            data[bin] = {1, 0};
            ASSERT_EQ(TypeParam::inverse(data, spec.get(), buffer), ippStsNoErr);
            for (const std::size_t n : {std::size_t(1), size / 2 + 1, size - 1}) {
                const double angle = 2 * std::numbers::pi * double(bin * n % size) / double(size);
                EXPECT_NEAR(data[n].re, std::cos(angle), Test::kRoundOff) << order;
                EXPECT_NEAR(data[n].im, std::sin(angle), Test::kRoundOff) << order;
            }
            std::copy(input.begin(), input.end(), data);
            TypeParam::inverse(data, spec.get(), buffer);
            ASSERT_EQ(TypeParam::forward(data, spec.get(), buffer), ippStsNoErr);
            EXPECT_LT(Test::relativeError(data, input), Test::kRoundOff) << order;
        }
    }
}

TYPED_TEST(FftTest, OneSpecificationServesManyThreadsWhileOthersAreMade)
{
    using Test = FftTest<TypeParam>;
    constexpr int kOrder = 10;
    const auto spec = Test::spec(kOrder);
    const auto input = Test::noise(kOrder);
    auto expected = input;
    TypeParam::forward(expected.data(), spec.get(), Test::buffer(spec).data());

    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
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
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}
} // namespace
