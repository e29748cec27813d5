// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/Biquad.h"

#include "signal_primitives/ipps.h"
#include "vm_library/source/log/Log.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace DspCore
{
namespace
{
constexpr double kMinQ = 0.1;
} // namespace

/// c0 s^2 + c1 s + c2, half of an analog prototype with its cut-off at 1 radian per second.
struct Biquad::Quadratic
{
    double c0;
    double c1;
    double c2;

    // Coefficients of z^0, z^-1 and z^-2 after s = (1 - z^-1) / (K (1 + z^-1)), with the common
    // K^2 (1 + z^-1)^2 taken out.
    double now(double k) const { return c0 + c1 * k + c2 * k * k; }
    double one(double k) const { return 2.0 * (c2 * k * k - c0); }
    double two(double k) const { return c0 - c1 * k + c2 * k * k; }
};

void Biquad::init(Type type, double fc, double q, double gainDb)
{
    q = std::max(q, kMinQ);
    const double k = std::tan(std::numbers::pi * fc);
    const double v = std::pow(10.0, std::abs(gainDb) / 20.0);
    const double t = std::sqrt(2.0 * v);
    const Quadratic resonance{1.0, 1.0 / q, 1.0};
    const Quadratic flat{1.0, std::numbers::sqrt2, 1.0}; // a shelf without gain
    // A cut is the boost upside down.
    const auto boostOrCut = [&](const Quadratic &raised, const Quadratic &level) {
        mScale = 1.0 / v;
        gainDb >= 0.0 ? design(raised, level, k) : design(level, raised, k);
    };

    clear();
    mScale = 1.0;
    switch (type) {
    case Type::LowPass:
        return design({0.0, 0.0, 1.0}, resonance, k);
    case Type::HighPass:
        return design({1.0, 0.0, 0.0}, resonance, k);
    case Type::BandPass:
        return design({0.0, 1.0 / q, 0.0}, resonance, k);
    case Type::Notch:
        return design({1.0, 0.0, 1.0}, resonance, k);
    case Type::Peak:
        return boostOrCut({1.0, v / q, 1.0}, resonance);
    case Type::LowShelf:
        return boostOrCut({1.0, t, v}, flat);
    case Type::HighShelf:
        return boostOrCut({v, t, 1.0}, flat);
    }
    vm::log::warning(Q_FUNC_INFO, __LINE__, "Incorrect filter type!");
}

void Biquad::design(const Quadratic &numerator, const Quadratic &denominator, double k)
{
    const double n = 1.0 / denominator.now(k);
    mCoefficients = {.a0 = numerator.now(k) * n,
        .a1 = numerator.one(k) * n,
        .a2 = numerator.two(k) * n,
        .b1 = denominator.one(k) * n,
        .b2 = denominator.two(k) * n};
}

void Biquad::clear()
{
    mState1 = {0.0, 0.0};
    mState2 = {0.0, 0.0};
}

bool Biquad::process(double *buffer, int length)
{
    if (buffer == nullptr || length < 1) {
        vm::log::warning(Q_FUNC_INFO, " (", buffer, ",", length, "): Incorrect input parameters!");
        return false;
    }
    if (mEnable)
        run(buffer, length);
    return true;
}

bool Biquad::process(COMPLEX *buffer, int length)
{
    if (buffer == nullptr || length < 1) {
        vm::log::warning(Q_FUNC_INFO, " (", buffer, ",", length, "): Incorrect input parameters!");
        return false;
    }
    if (!mEnable)
        return true;
    run(buffer, length);
    if (!qFuzzyCompare(mScale, 1.0))
        ippsMulC_64f_I(mScale, reinterpret_cast<double *>(buffer), 2 * length);
    return true;
}

bool Biquad::process2(COMPLEX *buffer, int length)
{
    if (buffer == nullptr || length < 1) {
        vm::log::warning(Q_FUNC_INFO, " (", buffer, ",", length, "): Incorrect input parameters!");
        return false;
    }
    if (mEnable)
        run(buffer, length);
    return true;
}

void Biquad::filtering(double &sample)
{
    run(&sample, 1);
}

void Biquad::filtering(COMPLEX &sample)
{
    run(&sample, 1);
}

inline double Biquad::step(const Coefficients &c, double x, double &state1, double &state2)
{
    const double y = c.a0 * x + state1;
    state1 = c.a1 * x + state2 - c.b1 * y;
    state2 = c.a2 * x - c.b2 * y;
    return y;
}

void Biquad::run(double *buffer, int length)
{
    const Coefficients c = mCoefficients;
    double state1 = mState1.re;
    double state2 = mState2.re;
    for (int n = 0; n < length; ++n)
        buffer[n] = step(c, buffer[n], state1, state2);
    mState1.re = state1;
    mState2.re = state2;
    mOutput.re = buffer[length - 1];
}

void Biquad::run(COMPLEX *buffer, int length)
{
    const Coefficients c = mCoefficients;
    COMPLEX state1 = mState1;
    COMPLEX state2 = mState2;
    for (int n = 0; n < length; ++n) {
        buffer[n].re = step(c, buffer[n].re, state1.re, state2.re);
        buffer[n].im = step(c, buffer[n].im, state1.im, state2.im);
    }
    mState1 = state1;
    mState2 = state2;
    mOutput = buffer[length - 1];
}
} // namespace DspCore
