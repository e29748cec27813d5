// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/AlignedVector.h"
#include "DspCore/types.h"
#include "signal_primitives/ipps.h"

#include <memory>

namespace DspCore
{
/// Butterworth low-pass or high-pass of order 1 to 10 for complex blocks, each part by itself.
/// Not thread-safe.
class Iir
{
public:
    /// Any value but LowPass is taken as high-pass.
    enum class Type : int {
        LowPass = 0,
        HighPass = 1,
    };

    /// Designs the filter with an empty history. fc is in cycles per sample, limited to
    /// 1e-06..0.499999, the order to 1..10. False with a warning if the design or its set-up fails;
    /// the filter is then not set up. Allocates.
    bool init(double fc, int order, Type type);

    /// A disabled filter leaves blocks as they are. Enabled at construction.
    void setEnable(bool enable) { mEnable = enable; }
    bool enable() const { return mEnable; }

    /// Filters in place, length 1..SIGNAL_MAX_SIZE. A null buffer, a length below 1 and a filter
    /// that is not set up are reported and the buffer left alone. Allocates nothing.
    void process(COMPLEX *buffer, int length);

    /// Empties the history; the filter stays.
    void clear();

    /// Releases the filter; it is then not set up.
    void free();

private:
    struct FreeState
    {
        void operator()(IppsIIRState_64f *state) const { ippsIIRFree_64f(state); }
    };
    using State = std::unique_ptr<IppsIIRState_64f, FreeState>;
    using Array = AlignedVector<double>;

    bool design(double fc);
    bool makeState(State &state, const Array &delays);
    bool makeStates();

    Type mType = Type::LowPass;
    IppStatus mStatus = ippStsNoErr;
    bool mEnable = true;
    int mOrder = 0;
    State mStateRe;
    State mStateIm;
    Array mTaps = Array(SIGNAL_MAX_SIZE);
    Array mDelaysRe = Array(SIGNAL_MAX_SIZE); // contents of the delays at the start
    Array mDelaysIm = Array(SIGNAL_MAX_SIZE);
    Array mRe = Array(SIGNAL_MAX_SIZE);
    Array mIm = Array(SIGNAL_MAX_SIZE);
};
} // namespace DspCore
