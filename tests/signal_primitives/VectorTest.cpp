// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

// Each operation against its definition on one element in extended precision, at lengths around the
// widths of the vector registers and on arrays off their natural boundary.

namespace
{
using Wide = std::complex<long double>;
using F = Ipp32f;
using D = Ipp64f;
using FC = Ipp32fc;
using DC = Ipp64fc;

constexpr int kLengths[] = {1, 2, 3, 7, 15, 16, 17, 63, 64, 65, 511, 4096};

template <typename T>
using RealOf = std::conditional_t<std::is_same_v<T, F> || std::is_same_v<T, FC>, F, D>;

Wide wide(D x)
{
    return Wide(x);
}
template <typename T>
Wide wide(Velmora::complex<T> x)
{
    return {x.re, x.im};
}

/// Values within 1.
template <typename T>
std::vector<T> noise(int length, unsigned seed)
{
    std::mt19937 generator(seed);
    std::uniform_real_distribution<RealOf<T>> uniform(-1, 1);
    std::vector<T> values(static_cast<std::size_t>(length));
    auto *reals = reinterpret_cast<RealOf<T> *>(values.data());
    std::generate_n(
        reals, values.size() * sizeof(T) / sizeof(*reals), [&] { return uniform(generator); });
    return values;
}

bool close(long double got, long double expected, long double tolerance)
{
    return std::isnan(expected) ? std::isnan(got) : std::abs(got - expected) <= tolerance;
}

/// destination[n] becomes expected(source[n], destination[n]).
template <typename A, typename B>
void expectDefinition(
    const char *name, IppStatus (*operation)(const A *, B *, int), Wide (*expected)(Wide, Wide))
{
    // Results are within 4 and may take three roundings of half a unit.
    constexpr long double kRoundOff = 6 * std::numeric_limits<RealOf<B>>::epsilon();
    for (const int length : kLengths) {
        for (const int offset : {0, 1}) { // elements: an aligned address and one that is not
            const auto a = noise<A>(length + offset, 5);
            const auto before = noise<B>(length + offset + 1, 6); // one to see that it stays
            auto b = before;
            ASSERT_EQ(operation(a.data() + offset, b.data() + offset, length), ippStsNoErr);
            EXPECT_EQ(b.back(), before.back());
            for (std::size_t n = static_cast<std::size_t>(offset); n < a.size(); ++n) {
                const Wide want = expected(wide(a[n]), wide(before[n]));
                const Wide got = wide(b[n]);
                ASSERT_TRUE(close(got.real(), want.real(), kRoundOff)
                    && close(got.imag(), want.imag(), kRoundOff))
                    << name << " " << n << " of " << length << ": " << got << " for " << want;
            }
        }
    }
}

template <typename T, IppStatus (*operation)(T, T *, int)>
void expectConstant(const char *name, T constant, Wide (*expected)(Wide, Wide))
{
    static T value;
    value = constant;
    expectDefinition<T, T>(
        name, [](const T *, T *b, int n) { return operation(value, b, n); }, expected);
}

/// An operation on one array alone.
template <typename T, IppStatus (*operation)(T *, int)>
void expectInPlace(const char *name, Wide (*expected)(Wide, Wide))
{
    expectDefinition<T, T>(
        name, [](const T *, T *b, int n) { return operation(b, n); }, expected);
}

TEST(VectorTest, EachOperationIsItsDefinition)
{
    const auto sum = [](Wide a, Wide b) { return a + b; };
    expectDefinition<F, F>("Add_32f", ippsAdd_32f_I, sum);
    expectDefinition<FC, FC>("Add_32fc", ippsAdd_32fc_I, sum);
    expectDefinition<DC, DC>("Add_64fc", ippsAdd_64fc_I, sum);
    const auto product = [](Wide a, Wide b) { return a * b; };
    expectDefinition<F, F>("Mul_32f", ippsMul_32f_I, product);
    expectDefinition<D, D>("Mul_64f", ippsMul_64f_I, product);
    expectDefinition<FC, FC>("Mul_32fc", ippsMul_32fc_I, product);
    expectDefinition<DC, DC>("Mul_64fc", ippsMul_64fc_I, product);
    expectDefinition<F, F>(
        "Mul_A24", [](const F *a, F *b, int n) { return ippsMul_32f_A24(a, b, b, n); }, product);

    const auto scaled = [](Wide, Wide b) { return b * -1.75L; };
    const auto turned = [](Wide, Wide b) { return b * Wide(0.5L, -1.5L); };
    const auto set = [](Wide, Wide) { return Wide(0.75L); };
    expectConstant<F, ippsAddC_32f_I>("AddC", 0.75f, [](Wide, Wide b) { return b + 0.75L; });
    expectConstant<F, ippsMulC_32f_I>("MulC_32f", -1.75f, scaled);
    expectConstant<D, ippsMulC_64f_I>("MulC_64f", -1.75, scaled);
    expectConstant<FC, ippsMulC_32fc_I>("MulC_32fc", {0.5f, -1.5f}, turned);
    expectConstant<DC, ippsMulC_64fc_I>("MulC_64fc", {0.5, -1.5}, turned);
    expectConstant<F, ippsSet_32f>("Set_32f", 0.75f, set);
    expectConstant<D, ippsSet_64f>("Set_64f", 0.75, set);

    const auto power = [](Wide a, Wide) { return Wide(std::norm(a)); };
    expectInPlace<D, ippsSqr_64f_I>("Sqr", [](Wide, Wide b) { return b * b; });
    expectInPlace<F, ippsSqrt_32f_I>( // half of the elements are negative and have no root
        "Sqrt", [](Wide, Wide b) { return Wide(std::sqrt(b.real())); });
    expectDefinition<DC, D>(
        "Magnitude", ippsMagnitude_64fc, [](Wide a, Wide) { return Wide(std::abs(a)); });
    expectDefinition<FC, F>("PowerSpectr_32fc", ippsPowerSpectr_32fc, power);
    expectDefinition<DC, D>("PowerSpectr_64fc", ippsPowerSpectr_64fc, power);

    const auto source = [](Wide a, Wide) { return a; };
    const auto zero = [](Wide, Wide) { return Wide(0); };
    expectDefinition<F, F>("Copy_32f", ippsCopy_32f, source);
    expectDefinition<FC, FC>("Copy_32fc", ippsCopy_32fc, source);
    expectDefinition<DC, DC>("Copy_64fc", ippsCopy_64fc, source);
    expectDefinition<DC, DC>("Move", ippsMove_64fc, source);
    expectDefinition<D, F>("Convert", ippsConvert_64f32f, source);
    expectInPlace<F, ippsZero_32f>("Zero_32f", zero);
    expectInPlace<FC, ippsZero_32fc>("Zero_32fc", zero);
    expectInPlace<D, ippsZero_64f>("Zero_64f", zero);
    expectInPlace<DC, ippsZero_64fc>("Zero_64fc", zero);
}

TEST(VectorTest, MoveSurvivesAnOverlapEitherWay)
{
    constexpr int kLength = 4096;
    const auto line = noise<DC>(kLength + 500, 7);
    for (const int shift : {1, 3, 500}) {
        auto down = line;
        auto up = line;
        ippsMove_64fc(down.data() + shift, down.data(), kLength);
        ippsMove_64fc(up.data(), up.data() + shift, kLength);
        EXPECT_TRUE(std::equal(down.begin(), down.begin() + kLength, line.begin() + shift));
        EXPECT_TRUE(std::equal(line.begin(), line.begin() + kLength, up.begin() + shift));
    }
}

/// Real parts by way of both parts, and numbers of two parts and of one.
template <typename T, auto split, auto join>
void expectSplitAndJoin(const char *name)
{
    using C = Velmora::complex<T>;
    expectDefinition<C, C>(
        name,
        [](const C *from, C *to, int n) {
            std::vector<T> parts(2 * std::size_t(n));
            split(from, parts.data(), parts.data() + n, n);
            return join(parts.data(), parts.data() + n, to, n);
        },
        [](Wide a, Wide) { return a; });
    expectDefinition<T, C>(
        name, [](const T *from, C *to, int n) { return join(from, nullptr, to, n); },
        [](Wide a, Wide) { return a; });
}

TEST(VectorTest, PartsSplitAndJoin)
{
    expectSplitAndJoin<F, ippsCplxToReal_32fc, ippsRealToCplx_32f>("32f");
    expectSplitAndJoin<D, ippsCplxToReal_64fc, ippsRealToCplx_64f>("64f");
}

// The largest element is negative and in turn at every place of the array: a lane left out, a start
// value of zero or a largest magnitude shows.
template <typename T>
void expectLargestAnywhere(IppStatus (*max)(const T *, int, T *))
{
    for (const int length : {1, 2, 3, 31, 32, 33, 95, 511}) {
        std::vector<T> values(static_cast<std::size_t>(length));
        for (T &largest : values) {
            std::fill(values.begin(), values.end(), T(-7));
            largest = T(-0.25);
            T result = 99;
            ASSERT_EQ(max(values.data(), length, &result), ippStsNoErr);
            ASSERT_EQ(result, T(-0.25)) << "of " << length;
        }
    }
}

TEST(VectorTest, ReductionsTakeEveryElementOnce)
{
    constexpr double kRoundOff = 1e-14; // relative; the terms are of one sign
    expectLargestAnywhere<float>(ippsMax_32f);
    expectLargestAnywhere<double>(ippsMax_64f);
    for (const int length : kLengths) {
        std::vector<double> values(static_cast<std::size_t>(length));
        for (std::size_t n = 0; n < values.size(); ++n)
            values[n] = 1.0 / double(n + 3); // all different
        const double expected = double(std::accumulate(values.rbegin(), values.rend(), 0.0L));
        double sum = 0.0;
        double mean = 0.0;
        ippsSum_64f(values.data(), length, &sum);
        ippsMean_64f(values.data(), length, &mean);
        EXPECT_NEAR(sum / expected, 1.0, kRoundOff) << length;
        EXPECT_NEAR(mean * length / expected, 1.0, kRoundOff) << length;
    }
}
} // namespace
