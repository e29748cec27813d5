// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/Resampler.h"

#include "signal_primitives/ipps.h"
#include "vm_library/source/log/Log.h"

#include <algorithm>
#include <bit>
#include <cassert>

namespace DspCore
{
namespace
{
constexpr int kRingSize = 131072;    // floats, the least
constexpr int kTapsPerPhase = 8;     // filter length / up
constexpr float kCutoff = 0.4f;      // of the input rate
constexpr double kStepsPerHz = 10.0; // rates are exact to a tenth of a hertz

/// sum h[k up] ring[newest - k] in single precision, k ascending.
inline float tapSum(const float *h, int up, const float *ring, int newest, int mask)
{
    float sum = 0.0f;
    if (newest >= kTapsPerPhase - 1) {
        const float *const sample = ring + newest;
        for (int k = 0; k < kTapsPerPhase; ++k)
            sum += h[(long long)k * up] * sample[-k];
    } else {
        for (int k = 0; k < kTapsPerPhase; ++k)
            sum += h[(long long)k * up] * ring[(newest - k) & mask];
    }
    return sum;
}

/// tapSum() at each of `count` samples, the rate staying as it is. `newest` is that of the first
/// one; the samples before it lie in front of it. The bits are those of tapSum(): built for the
/// baseline like it, without fused products.
void filterEach(const float *h, const float *newest, float *__restrict out, int count)
{
    for (int n = 0; n < count; ++n) {
        float sum = 0.0f;
        for (int k = 0; k < kTapsPerPhase; ++k)
            sum += h[k] * newest[n - k];
        out[n] = sum;
    }
}
} // namespace

int NOK(int a, int b)
{
    for (int divisor = 2; divisor <= 10; ++divisor) {
        if (a % divisor == 0 && b % divisor == 0)
            return divisor;
    }
    return 0;
}

void Resampler::gdc(double in, double out, int &up, int &down)
{
    unsigned inSteps = unsigned(in * kStepsPerHz);
    unsigned outSteps = unsigned(out * kStepsPerHz);
    // Two zeros could be divided for ever.
    while (inSteps != 0 || outSteps != 0) {
        const int divisor = NOK(int(inSteps), int(outSteps));
        if (divisor == 0)
            break;
        inSteps /= unsigned(divisor);
        outSteps /= unsigned(divisor);
    }
    up = int(outSteps);
    down = int(inSteps);
}

bool Resampler::setSampleRates(double in, double out)
{
    mInputRate = float(in);
    mOutputRate = float(out);
    int up = 0;
    int down = 0;
    gdc(in, out, up, down);
    return init(up, down);
}

bool Resampler::init(int up, int down)
{
    free();
    mRe = newPolyPhaseFIRF(kRingSize, 0, up, 0, down);
    mIm = newPolyPhaseFIRF(kRingSize, 0, up, 0, down);
    return true;
}

FIR_REAL Resampler::design(int up, Window32 &window)
{
    return newFIR_Lowpass_REAL(kCutoff, float(up), kTapsPerPhase * up, window);
}

int Resampler::outputsOf(int inputLength, int up, int phase, int down)
{
    const long long steps = (long long)inputLength * up - phase;
    return steps > 0 ? int((steps + down - 1) / down) : 0;
}

Resampler::StatePointer Resampler::newPolyPhaseFIRF(
    int ringSize, int writeIndex, int up, int phase, int down)
{
    auto state = std::make_unique<resampleF_state>();
    state->filterLength = kTapsPerPhase * up;
    state->ringSize = int(std::bit_ceil(unsigned(std::max(ringSize, state->filterLength))));
    state->ring.assign(std::size_t(state->ringSize), 0.0f);
    state->mask = state->ringSize - 1;
    state->writeIndex = writeIndex;
    state->up = up;
    state->phase = phase;
    state->down = down;
    state->filter = design(up, mWindow);
    if (!state->filter.valid())
        vm::log::warning(Q_FUNC_INFO, "Can't generate filter coefficients.");
    return state;
}

// The block goes into the ring at once (the ring holds far more than a block and the 8 samples that
// an output looks back), then each output is found where its newest sample stands. For a high
// decimation that visits only the samples at which something comes out.
void Resampler::PolyPhaseFIRF(resampleF_state &state)
{
    const int untilWrap = std::min(state.inputLength, state.ringSize - state.writeIndex);
    std::copy_n(state.input, untilWrap, state.ring.begin() + state.writeIndex);
    std::copy(state.input + untilWrap, state.input + state.inputLength, state.ring.begin());

    const float *const h = state.filter.coefficients.data();
    const float *const ring = state.ring.data();
    const int up = state.up;
    const int down = state.down;
    const float gain = float(up); // what stuffing with zeros takes away
    int phase = state.phase;      // steps from the newest sample to the next output
    int newest = state.writeIndex;
    int n = 0;
    if (up == 1 && down == 1 && newest >= kTapsPerPhase - 1) {
        n = std::min(state.outputLength, state.ringSize - newest);
        filterEach(h, ring + newest, state.output, n);
        newest = (newest + n) & state.mask;
    }
    for (; n < state.outputLength; ++n) {
        if (phase >= up) {
            newest = (newest + phase / up) & state.mask;
            phase %= up;
        }
        state.output[n] = tapSum(h + phase, up, ring, newest, state.mask) * gain;
        phase += down;
    }
    state.phase =
        int(state.phase + (long long)state.outputLength * down - (long long)state.inputLength * up);
    state.writeIndex = (state.writeIndex + state.inputLength) & state.mask;
}

template <typename Sample>
void Resampler::run(const Sample *in, int length, Sample *out, int &outLength)
{
    using Real = decltype(Sample::re);

    outLength = 0;
    if (!mRe || !mIm || !mRe->filter.valid() || mRe->down < 1 || length < 1)
        return;
    const int outputs = outputsOf(length, mRe->up, mRe->phase, mRe->down);
    assert(length <= SIGNAL_MAX_SIZE && outputs <= SIGNAL_MAX_SIZE);

    for (int n = 0; n < length; ++n) {
        mInputRe[std::size_t(n)] = float(in[n].re);
        mInputIm[std::size_t(n)] = float(in[n].im);
    }
    mRe->input = mInputRe.data();
    mIm->input = mInputIm.data();
    mRe->output = mOutputRe.data();
    mIm->output = mOutputIm.data();
    for (resampleF_state *state : {mRe.get(), mIm.get()}) {
        state->inputLength = length;
        state->outputLength = outputs;
        PolyPhaseFIRF(*state);
    }
    outLength = mRe->outputLength;
    for (int n = 0; n < outLength; ++n)
        out[n] = {Real(mOutputRe[std::size_t(n)]), Real(mOutputIm[std::size_t(n)])};
}

void Resampler::process(COMPLEX *in, int length, COMPLEX *out, int &outLength)
{
    run(in, length, out, outLength);
}

void Resampler::process32f(COMPLEX32 *in, int length, COMPLEX32 *out, int &outLength)
{
    run(in, length, out, outLength);
}

void Resampler::clear()
{
    if (!mRe || !mIm)
        return;
    ippsZero_32f(mRe->ring.data(), mRe->ringSize);
    ippsZero_32f(mIm->ring.data(), mIm->ringSize);
}

void Resampler::free()
{
    mRe.reset();
    mIm.reset();
}
} // namespace DspCore
