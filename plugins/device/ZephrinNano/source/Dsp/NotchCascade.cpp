// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/NotchCascade.h"

#include "processor/Clones.h"

namespace zephrinnano
{
namespace
{
/// Two complex numbers.
typedef double Pair __attribute__((vector_size(32)));
typedef long long Mask __attribute__((vector_size(32)));

/// Factor of a complex product: re * x + im * (x with its parts swapped).
struct Factor
{
    Pair re;
    Pair im;
};

// By reference: values of this type would be passed in other registers by each version.
[[gnu::always_inline]] inline void setFactor(Factor &factor, COMPLEX first, COMPLEX second)
{
    factor.re = Pair{first.re, first.re, second.re, second.re};
    factor.im = Pair{-first.im, first.im, -second.im, second.im};
}

[[gnu::always_inline]] inline void swapParts(const Pair &x, Pair &swapped)
{
    swapped = __builtin_shufflevector(x, x, 1, 0, 3, 2);
}

/// kRegisters registers, twice as many notches; those beyond the list pass what they get.
template <int kRegisters>
struct Run
{
    static constexpr int kDelay = 2 * kRegisters - 1; // steps from input to output

    Factor zero[kRegisters];
    Factor pole[kRegisters];
    Pair input[kRegisters]; // last one, and with its parts swapped
    Pair swappedInput[kRegisters];
    Pair output[kRegisters];
    Pair swappedOutput[kRegisters];

    [[gnu::always_inline]] inline void load(NotchSection *const *sections, int count)
    {
        const NotchSection none;
#pragma GCC unroll 4
        for (int k = 0; k < kRegisters; ++k) {
            const NotchSection &a = k < count ? *sections[k] : none;
            const NotchSection &b = k + kRegisters < count ? *sections[k + kRegisters] : none;
            setFactor(zero[k], {-a.zero.re, -a.zero.im}, {-b.zero.re, -b.zero.im});
            setFactor(pole[k], a.pole, b.pole);
            input[k] = Pair{a.input.re, a.input.im, b.input.re, b.input.im};
            output[k] = Pair{a.output.re, a.output.im, b.output.re, b.output.im};
            swapParts(input[k], swappedInput[k]);
            swapParts(output[k], swappedOutput[k]);
        }
    }

    [[gnu::always_inline]] inline void store(NotchSection *const *sections, int count) const
    {
#pragma GCC unroll 4
        for (int k = 0; k < kRegisters; ++k) {
            if (k < count) {
                sections[k]->input = {input[k][0], input[k][1]};
                sections[k]->output = {output[k][0], output[k][1]};
            }
            if (k + kRegisters < count) {
                sections[k + kRegisters]->input = {input[k][2], input[k][3]};
                sections[k + kRegisters]->output = {output[k][2], output[k][3]};
            }
        }
    }

    /// A step of all notches; from the last register to the first, as each takes what the one
    /// before it gave last. At the ends of a block (kEnds) some have no sample at step t of length:
    /// their states stay.
    template <bool kEnds>
    [[gnu::always_inline]] inline void step(COMPLEX x, int t, int length)
    {
        const Pair last = output[kRegisters - 1];
        const Pair first{x.re, x.im, last[0], last[1]};
        Pair swappedFirst;
        swapParts(first, swappedFirst);
#pragma GCC unroll 4
        for (int k = kRegisters - 1; k >= 0; --k) {
            const Pair in = k == 0 ? first : output[k - 1];
            const Pair swappedIn = k == 0 ? swappedFirst : swappedOutput[k - 1];
            Pair y = in + zero[k].re * input[k] + zero[k].im * swappedInput[k];
            y = (y + pole[k].re * output[k]) + pole[k].im * swappedOutput[k];
            if constexpr (kEnds) {
                const long long a = t >= k && t - k < length ? -1 : 0;
                const long long b = t >= k + kRegisters && t - k - kRegisters < length ? -1 : 0;
                const Mask active{a, a, b, b};
                input[k] = active ? in : input[k];
                output[k] = active ? y : output[k];
                swapParts(input[k], swappedInput[k]);
            } else {
                input[k] = in;
                output[k] = y;
                swappedInput[k] = swappedIn;
            }
            swapParts(output[k], swappedOutput[k]);
        }
    }

    [[gnu::always_inline]] inline void give(COMPLEX *data) const
    {
        *data = {output[kRegisters - 1][2], output[kRegisters - 1][3]};
    }

    [[gnu::always_inline]] inline void all(COMPLEX *data, int length)
    {
        constexpr COMPLEX kNone{0.0, 0.0};
        int t = 0;
        for (; t < kDelay; ++t)
            step<true>(t < length ? data[t] : kNone, t, length);
        for (; t < length; ++t) {
            step<false>(data[t], t, length);
            give(data + t - kDelay);
        }
        for (; t < length + kDelay; ++t) {
            step<true>(kNone, t, length);
            give(data + t - kDelay);
        }
    }
};

template <int kRegisters>
[[gnu::always_inline]] inline void run(
    NotchSection *const *sections, int count, COMPLEX *data, int length)
{
    Run<kRegisters> run;
    run.load(sections, count);
    run.all(data, length);
    run.store(sections, count);
}

PROCESSOR_CLONES
void runNotches(NotchSection *const *sections, int count, COMPLEX *data, int length)
{
    switch ((count + 1) / 2) {
    case 1:
        return run<1>(sections, count, data, length);
    case 2:
        return run<2>(sections, count, data, length);
    case 3:
        return run<3>(sections, count, data, length);
    default:
        return run<4>(sections, count, data, length);
    }
}

// x + factor * y
[[gnu::always_inline]] inline COMPLEX sum(COMPLEX x, COMPLEX factor, COMPLEX y)
{
    return {
        (x.re + factor.re * y.re) - factor.im * y.im, (x.im + factor.re * y.im) + factor.im * y.re};
}

// A notch alone has no others to fill the time until its output. Two samples a round halve it: with
// e[n] = x[n] - zero x[n-1], y[n+1] = (e[n+1] + pole e[n]) + pole^2 y[n-1].
PROCESSOR_CLONES
void runNotch(NotchSection &section, COMPLEX *data, int length)
{
    const COMPLEX zero{-section.zero.re, -section.zero.im};
    const COMPLEX pole = section.pole;
    const COMPLEX square = sum({0.0, 0.0}, pole, pole);
    COMPLEX input = section.input;
    COMPLEX output = section.output;
    int n = 0;
    for (; n + 1 < length; n += 2) {
        const COMPLEX first = sum(data[n], zero, input);
        const COMPLEX second = sum(sum(data[n + 1], zero, data[n]), pole, first);
        input = data[n + 1];
        data[n] = sum(first, pole, output);
        output = sum(second, square, output);
        data[n + 1] = output;
    }
    if (n < length) {
        output = sum(sum(data[n], zero, input), pole, output);
        input = data[n];
        data[n] = output;
    }
    section.input = input;
    section.output = output;
}
} // namespace

void NotchCascade::process(NotchSection *const *sections, int count, COMPLEX *data, int length)
{
    if (count == 1)
        runNotch(*sections[0], data, length);
    else
        runNotches(sections, count, data, length);
}
} // namespace zephrinnano
