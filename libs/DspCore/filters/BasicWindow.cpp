// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/BasicWindow.h"

#include "processor/Clones.h"
#include "vm_library/source/log/Log.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

namespace DspCore
{
namespace
{
constexpr int kShortest = 32;
constexpr double kPi = std::numbers::pi;

/// Sum of (-1)^i a[i] cos(i x), a[0] being the constant term.
struct CosineSum
{
    double a[5];

    double at(double x) const
    {
        double sum = a[0];
        for (int i = 1; i < int(std::size(a)); ++i)
            sum += (i % 2 == 0 ? a[i] : -a[i]) * std::cos(i * x);
        return sum;
    }
};

constexpr CosineSum kHann{{0.5, 0.5}};
constexpr CosineSum kHamming{{0.54, 0.46}};
constexpr CosineSum kBlackman{{0.42, 0.5, 0.08}};
constexpr CosineSum kBlackmanHarris{{0.35875, 0.48829, 0.14128, 0.01168}};
constexpr CosineSum kNuttall{{0.355768, 0.487396, 0.144232, 0.12604}};
constexpr CosineSum kBlackmanNuttall{{0.3635819, 0.4891775, 0.1365995, 0.0106411}};
constexpr CosineSum kFlatTop{{1.0, 1.93, 1.29, 0.388, 0.032}};

template <typename Real, typename Shape>
void fill(Real *table, int length, double divisor, Shape shape)
{
    for (int n = 0; n < length; ++n)
        table[n] = Real(shape(n) / divisor);
}

template <typename Real>
void fillCosineSum(Real *table, int length, double divisor, const CosineSum &sum)
{
    fill(table, length, divisor, [&](int n) { return sum.at(2.0 * kPi * n / (length - 1)); });
}

template <typename Real>
void fillGauss(Real *table, int length, double divisor, double width)
{
    const double half = (length - 1) / 2;
    fill(table, length, divisor, [=](int n) {
        const double g = (n - half) / (width * half);
        return std::exp(-g * g / 2.0);
    });
}

template <typename Real>
void fillSine(Real *table, int length, double divisor)
{
    fill(table, length, divisor, [=](int n) { return std::sin(kPi * n / (length - 1)); });
}

template <typename Real>
void fillLanczos(Real *table, int length, double divisor)
{
    fill(table, length, divisor, [=](int n) {
        const double u = 2.0 * n / (length - 1) - 1.0;
        return std::sin(u) / u;
    });
}

template <typename Real>
void fillTriangle(Real *table, int length, double divisor)
{
    // Both ends are written at once, so that the two middle samples of an even length reach 1.
    const int half = length / 2;
    for (int i = 0; i <= half; ++i) {
        const double value = double(i) / half;
        table[i] = table[length - 1 - i] = Real(value / divisor);
    }
}

[[gnu::always_inline]] inline float scaled(float sample, float factor)
{
    return sample * factor;
}

template <typename Real>
[[gnu::always_inline]] inline Velmora::complex<Real> scaled(
    const Velmora::complex<Real> &sample, Real factor)
{
    return {sample.re * factor, sample.im * factor};
}

template <typename Sample, typename Real>
[[gnu::always_inline]] inline void scaleEach(Sample *buffer, const Real *factors, int length)
{
    for (int n = 0; n < length; ++n)
        buffer[n] = scaled(buffer[n], factors[n]);
}

PROCESSOR_CLONES
void weigh(COMPLEX *buffer, const double *window, int length)
{
    scaleEach(buffer, window, length);
}

PROCESSOR_CLONES
void weigh(COMPLEX32 *buffer, const float *window, int length)
{
    scaleEach(buffer, window, length);
}

PROCESSOR_CLONES
void weigh(float *buffer, const float *window, int length)
{
    scaleEach(buffer, window, length);
}
} // namespace

template <typename Real>
void BasicWindow<Real>::init(int length, Window type)
{
    if (length == int(mWindow.size()))
        return;
    length = std::max(length, kShortest);
    mWindow.assign(std::size_t(length), Real(0));
    calc(mWindow.data(), length, type);
}

template <typename Real>
void BasicWindow<Real>::calc(Real *table, int length, Window type)
{
    switch (type) {
    case Window::Sine:
        return fillSine(table, length, 0.6360628048372603);
    case Window::Lanczos:
        return fillLanczos(table, length, 0.8413951416451951);
    case Window::Bartlett:
        return fillTriangle(table, length, 0.5011872336272722);
    case Window::Hann:
        return fillCosineSum(table, length, 0.5011872336272722, kHann);
    case Window::Hamming:
        return fillCosineSum(table, length, 0.5388898453732869, kHamming);
    case Window::Blackman:
        return fillCosineSum(table, length, 0.41975898399100753, kBlackman);
    case Window::BlackmanHarris:
        return fillCosineSum(table, length, 0.35850894827655494, kBlackmanHarris);
    case Window::Nuttall:
        return fillCosineSum(table, length, 0.35481338923357547, kNuttall);
    case Window::BlackmanNuttall:
        return fillCosineSum(table, length, 0.3630780547701013, kBlackmanNuttall);
    case Window::FlatTop:
        return fillCosineSum(table, length, 1.1220184543019633, kFlatTop);
    case Window::Gauss03:
        return fillGauss(table, length, 0.19952623149688797, 0.3);
    case Window::Gauss05:
        return fillGauss(table, length, 0.3357376142429546, 0.5);
    case Window::Gauss12:
        return fillGauss(table, length, 0.5035006087879048, 1.2);
    }
    std::fill_n(table, length, Real(1));
}

template <typename Real>
template <typename Sample>
void BasicWindow<Real>::process(Sample *buffer, int length, const char *signature) const
{
    if (buffer == nullptr || length == 0) {
        vm::log::warning(signature, " (pSrcDst == NULL) || (lenght == 0) ");
        return;
    }
    if (length != int(mWindow.size())) {
        vm::log::warning(signature, " mLenght != lenght ");
        return;
    }
    weigh(buffer, mWindow.data(), length);
}

template class BasicWindow<double>;
template class BasicWindow<float>;
template void BasicWindow<double>::process(COMPLEX *, int, const char *) const;
template void BasicWindow<float>::process(COMPLEX32 *, int, const char *) const;
template void BasicWindow<float>::process(float *, int, const char *) const;
} // namespace DspCore
