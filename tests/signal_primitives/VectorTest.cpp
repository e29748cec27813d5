// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>
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
constexpr int kOffsets[] = {0, 1}; // elements: from an aligned address to one that is not

// Values are within 1, results within 4; a result may take three roundings of half a unit.
template <typename T>
constexpr long double kRoundOff = 6 * std::numeric_limits<T>::epsilon();

template <typename T>
struct RealOf
{
    using Type = T;
};
template <typename T>
struct RealOf<Velmora::complex<T>>
{
    using Type = T;
};

template <typename T>
Wide wide(T x)
{
    return Wide(x);
}
template <typename T>
Wide wide(Velmora::complex<T> x)
{
    return {x.re, x.im};
}

template <typename T>
T random(std::mt19937 &generator)
{
    std::uniform_real_distribution<typename RealOf<T>::Type> uniform(-1, 1);
    if constexpr (std::is_floating_point_v<T>)
        return uniform(generator);
    else
        return {uniform(generator), uniform(generator)};
}

bool close(long double got, long double expected, long double tolerance)
{
    if (std::isnan(expected))
        return std::isnan(got);
    return std::abs(got - expected) <= tolerance;
}

/// destination[n] becomes expected(source[n], destination[n]).
template <typename A, typename B>
void expectDefinition(
    const char *name, IppStatus (*operation)(const A *, B *, int), Wide (*expected)(Wide, Wide))
{
    SCOPED_TRACE(name);
    std::mt19937 generator(5);
    constexpr long double tolerance = kRoundOff<typename RealOf<B>::Type>;
    for (const int length : kLengths) {
        for (const int offset : kOffsets) {
            std::vector<A> a(static_cast<std::size_t>(length + offset));
            std::vector<B> b(a.size() + 1); // and one to see that it stays
            for (A &x : a)
                x = random<A>(generator);
            for (B &x : b)
                x = random<B>(generator);
            const std::vector<B> before = b;

            EXPECT_EQ(operation(a.data(), nullptr, length), ippStsNullPtrErr);
            EXPECT_EQ(operation(a.data(), b.data(), 0), ippStsSizeErr);
            EXPECT_EQ(operation(a.data(), b.data(), -1), ippStsSizeErr);
            EXPECT_EQ(b, before);

            ASSERT_EQ(operation(a.data() + offset, b.data() + offset, length), ippStsNoErr);
            EXPECT_EQ(b.back(), before.back());
            for (std::size_t n = static_cast<std::size_t>(offset); n < a.size(); ++n) {
                const Wide want = expected(wide(a[n]), wide(before[n]));
                const Wide got = wide(b[n]);
                ASSERT_TRUE(close(got.real(), want.real(), tolerance)
                    && close(got.imag(), want.imag(), tolerance))
                    << "element " << n << " of " << length << ": " << got << " for " << want;
            }
        }
    }
}

Wide sum(Wide a, Wide b)
{
    return a + b;
}
Wide product(Wide a, Wide b)
{
    return a * b;
}
Wide source(Wide a, Wide)
{
    return a;
}
Wide power(Wide a, Wide)
{
    return a.real() * a.real() + a.imag() * a.imag();
}

TEST(VectorTest, SumsAndProductsAreThoseOfTheElements)
{
    expectDefinition<F, F>("Add_32f_I", ippsAdd_32f_I, sum);
    expectDefinition<FC, FC>("Add_32fc_I", ippsAdd_32fc_I, sum);
    expectDefinition<DC, DC>("Add_64fc_I", ippsAdd_64fc_I, sum);
    expectDefinition<F, F>("Mul_32f_I", ippsMul_32f_I, product);
    expectDefinition<D, D>("Mul_64f_I", ippsMul_64f_I, product);
    expectDefinition<FC, FC>("Mul_32fc_I", ippsMul_32fc_I, product);
    expectDefinition<DC, DC>("Mul_64fc_I", ippsMul_64fc_I, product);
    expectDefinition<F, F>(
        "Mul_32f_A24", [](const F *a, F *b, int n) { return ippsMul_32f_A24(a, b, b, n); },
        product);
}

template <typename T, IppStatus (*operation)(T, T *, int)>
void expectConstant(const char *name, T constant, Wide (*expected)(Wide, Wide))
{
    static T value;
    value = constant;
    expectDefinition<T, T>(
        name, [](const T *, T *b, int n) { return operation(value, b, n); }, expected);
}

TEST(VectorTest, ConstantsReachEveryElement)
{
    const auto scaled = [](Wide, Wide b) { return b * -1.75L; };
    const auto turned = [](Wide, Wide b) { return b * Wide(0.5L, -1.5L); };
    const auto shifted = [](Wide, Wide b) { return b + 0.75L; };
    const auto set = [](Wide, Wide) { return Wide(0.75L); };
    expectConstant<F, ippsAddC_32f_I>("AddC_32f_I", 0.75f, shifted);
    expectConstant<F, ippsMulC_32f_I>("MulC_32f_I", -1.75f, scaled);
    expectConstant<D, ippsMulC_64f_I>("MulC_64f_I", -1.75, scaled);
    expectConstant<FC, ippsMulC_32fc_I>("MulC_32fc_I", {0.5f, -1.5f}, turned);
    expectConstant<DC, ippsMulC_64fc_I>("MulC_64fc_I", {0.5, -1.5}, turned);
    expectConstant<F, ippsSet_32f>("Set_32f", 0.75f, set);
    expectConstant<D, ippsSet_64f>("Set_64f", 0.75, set);
}

/// An operation on one array alone.
template <typename T, IppStatus (*operation)(T *, int)>
void expectInPlace(const char *name, Wide (*expected)(Wide, Wide))
{
    expectDefinition<T, T>(
        name, [](const T *, T *b, int n) { return operation(b, n); }, expected);
}

TEST(VectorTest, SquaresAndRoots)
{
    expectInPlace<D, ippsSqr_64f_I>("Sqr_64f_I", [](Wide, Wide b) { return b * b; });
    expectInPlace<F, ippsSqrt_32f_I>( // half of the elements are negative and have no root
        "Sqrt_32f_I", [](Wide, Wide b) { return Wide(std::sqrt(b.real())); });
    expectDefinition<DC, D>("Magnitude_64fc", ippsMagnitude_64fc,
        [](Wide a, Wide) { return Wide(std::hypot(a.real(), a.imag())); });
    expectDefinition<FC, F>("PowerSpectr_32fc", ippsPowerSpectr_32fc, power);
    expectDefinition<DC, D>("PowerSpectr_64fc", ippsPowerSpectr_64fc, power);
}

TEST(VectorTest, CopiesAndZeros)
{
    const auto zero = [](Wide, Wide) { return Wide(0); };
    expectDefinition<F, F>("Copy_32f", ippsCopy_32f, source);
    expectDefinition<FC, FC>("Copy_32fc", ippsCopy_32fc, source);
    expectDefinition<DC, DC>("Copy_64fc", ippsCopy_64fc, source);
    expectDefinition<DC, DC>("Move_64fc", ippsMove_64fc, source);
    expectDefinition<D, F>("Convert_64f32f", ippsConvert_64f32f, source);
    expectInPlace<F, ippsZero_32f>("Zero_32f", zero);
    expectInPlace<FC, ippsZero_32fc>("Zero_32fc", zero);
    expectInPlace<D, ippsZero_64f>("Zero_64f", zero);
    expectInPlace<DC, ippsZero_64fc>("Zero_64fc", zero);
}

TEST(VectorTest, MoveSurvivesAnOverlapEitherWay)
{
    constexpr int kLength = 4096;
    for (const int shift : {1, 3, 500}) {
        std::vector<DC> line(kLength + 500);
        for (std::size_t n = 0; n < line.size(); ++n)
            line[n] = {double(n), -double(n)};
        auto down = line;
        ASSERT_EQ(ippsMove_64fc(down.data() + shift, down.data(), kLength), ippStsNoErr);
        auto up = line;
        ASSERT_EQ(ippsMove_64fc(up.data(), up.data() + shift, kLength), ippStsNoErr);
        for (std::size_t n = 0; n < kLength; ++n) {
            ASSERT_EQ(down[n], line[n + static_cast<std::size_t>(shift)]);
            ASSERT_EQ(up[n + static_cast<std::size_t>(shift)], line[n]);
        }
    }
}

template <typename T>
void expectSplitAndJoin(IppStatus (*split)(const Velmora::complex<T> *, T *, T *, int),
    IppStatus (*join)(const T *, const T *, Velmora::complex<T> *, int))
{
    using C = Velmora::complex<T>;
    std::mt19937 generator(6);
    for (const int length : kLengths) {
        const auto size = static_cast<std::size_t>(length);
        std::vector<C> signal(size);
        for (C &x : signal)
            x = random<C>(generator);
        std::vector<T> re(size), im(size);
        ASSERT_EQ(split(signal.data(), re.data(), im.data(), length), ippStsNoErr);
        for (std::size_t n = 0; n < size; ++n)
            ASSERT_TRUE(re[n] == signal[n].re && im[n] == signal[n].im) << n;

        std::vector<C> joined(size), realOnly(size);
        ASSERT_EQ(join(re.data(), im.data(), joined.data(), length), ippStsNoErr);
        EXPECT_EQ(joined, signal);
        ASSERT_EQ(join(re.data(), nullptr, realOnly.data(), length), ippStsNoErr);
        EXPECT_EQ(realOnly.back(), (C{re.back(), 0}));
        EXPECT_EQ(join(nullptr, nullptr, joined.data(), length), ippStsNullPtrErr);
        EXPECT_EQ(split(signal.data(), re.data(), nullptr, length), ippStsNullPtrErr);
    }
}

TEST(VectorTest, PartsSplitAndJoin)
{
    expectSplitAndJoin<F>(ippsCplxToReal_32fc, ippsRealToCplx_32f);
    expectSplitAndJoin<D>(ippsCplxToReal_64fc, ippsRealToCplx_64f);
}
} // namespace
