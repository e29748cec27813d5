// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/AlignedVector.h"
#include "DspCore/filters/LowpassDesign.h"
#include "DspCore/types.h"

#include <memory>
#include <span>

namespace DspCore
{
/// The first of 2, 3, 4, 5, 6, 7, 8, 9, 10 that divides both numbers, 0 if none does.
int NOK(int a, int b);

/// Changes the rate of a complex stream by a ratio up / down with a polyphase FIR filter.
///
/// The signal is thought of as stuffed with up - 1 zeros between samples, low-pass filtered at 0.4
/// of the input rate with 8 taps per phase, and every down-th sample kept (Crochiere/Rabiner,
/// Multirate Digital Signal Processing); only what is kept is computed. The filter removes the
/// images of the up-sampling and does not narrow for a decimation: what would alias has to be
/// filtered out before. It works in single precision, on the real and the imaginary part apart. Not
/// thread-safe.
class Resampler
{
public:
    /// One of the two parts: its history and its place in the filter.
    struct resampleF_state
    {
        const float *input = nullptr;
        float *output = nullptr;
        AlignedVector<float> ring; // the last inputs
        FIR_REAL filter;           // without coefficients if the design failed
        int ringSize = 0;          // a power of two
        int inputLength = 0;
        int filterLength = 0;
        int writeIndex = 0;
        int up = 0;
        int phase = 0; // of the next output; one input sample is `up` steps
        int down = 0;
        int outputLength = 0;
        int mask = 0; // ring size - 1
    };
    using ResStF = resampleF_state;

    /// Sets the ratio from two rates in hertz, kept exact to a tenth of a hertz, and starts with an
    /// empty history at phase 0. Always true. Allocates.
    bool setSampleRates(double in, double out);

    /// The same by the factors themselves; the stored rates stay. Always true.
    bool init(int up, int down);

    /// The ratio out / in in tenths of a hertz, reduced by factors from 2 to 10: a common factor
    /// with a prime above 7 stays.
    static void gdc(double in, double out, int &up, int &down);

    /// The filter for an interpolation by `up`: 8 taps per phase, empty if it cannot be designed.
    static FIR_REAL design(int up, Window32 &window);

    /// How many outputs a block makes: one at each multiple of `down` steps in front of its end,
    /// the first one `phase` steps from its start. One input sample is `up` steps.
    static int outputsOf(int inputLength, int up, int phase, int down);

    /// Converts a block. Input and output are at most SIGNAL_MAX_SIZE samples and may be the same
    /// array. Block lengths are free: any cut of a stream gives the same output. No output before
    /// setSampleRates() or init(). Allocates nothing.
    void process(COMPLEX *in, int length, COMPLEX *out, int &outLength);
    void process32f(COMPLEX32 *in, int length, COMPLEX32 *out, int &outLength);

    /// The filter's response; with `up` phases in turn. Empty before init().
    std::span<const float> taps() const
    {
        return mRe ? std::span<const float>(mRe->filter.coefficients) : std::span<const float>();
    }

    /// Steps from the next input to the next output; one input is `up` steps. 0 before init().
    int phase() const { return mRe ? mRe->phase : 0; }

    /// Zeroes the history; the place in the stream stays.
    void clear();

    /// Releases the filter and the history.
    void free();

    double inputRate() const { return mInputRate; }
    double outputRate() const { return mOutputRate; }

private:
    using StatePointer = std::unique_ptr<resampleF_state>;

    StatePointer newPolyPhaseFIRF(int ringSize, int writeIndex, int up, int phase, int down);
    static void PolyPhaseFIRF(resampleF_state &state);
    template <typename Sample>
    void run(const Sample *in, int length, Sample *out, int &outLength);

    float mInputRate = 48000.0f; // hertz
    float mOutputRate = 44100.0f;
    StatePointer mRe;
    StatePointer mIm;
    Window32 mWindow; // of the filter design
    AlignedVector<float> mInputRe = AlignedVector<float>(SIGNAL_MAX_SIZE);
    AlignedVector<float> mInputIm = AlignedVector<float>(SIGNAL_MAX_SIZE);
    AlignedVector<float> mOutputRe = AlignedVector<float>(SIGNAL_MAX_SIZE);
    AlignedVector<float> mOutputIm = AlignedVector<float>(SIGNAL_MAX_SIZE);
};
} // namespace DspCore
