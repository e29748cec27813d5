// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/Primitives.h"

#include <memory>
#include <vector>

namespace DspCore
{
/// What FFT64 and FFT32 have in common; see there. The caller's signature goes into the warnings.
template <typename Sample>
class BasicFft
{
public:
    bool init(int length, const char *signature);
    void free();
    bool process(Sample *buffer, int length, FftType type, const char *signature);
    bool direct(Sample *buffer, const char *signature);
    bool invers(Sample *buffer, const char *signature);
    bool directInto(const Sample *in, Sample *out, const char *signature);
    bool inversInto(const Sample *in, Sample *out, const char *signature);

    int length() const { return mLength; }
    IppStatus status() const { return mStatus; }

private:
    using Ops = Primitives<Sample>;
    using Spec = typename Ops::FftSpec;

    struct FreeSpec
    {
        void operator()(Spec *spec) const { Ops::fftFree(spec); }
    };
    struct FreeBuffer
    {
        void operator()(Ipp8u *buffer) const { ippsFree(buffer); }
    };
    struct SetUp
    {
        int length = 0;
        std::unique_ptr<Spec, FreeSpec> spec;
        std::unique_ptr<Spec, FreeSpec> undivided; // of the same plans
        std::unique_ptr<Ipp8u, FreeBuffer> buffer;
    };

    IppStatus allocate(SetUp &setUp);
    bool succeeded(const char *signature, int line) const;

    int mLength = 0; // points, a power of two; 0 = not set up
    IppStatus mStatus = ippStsNoErr;
    std::vector<SetUp> mSetUps; // one for each length so far; the last one is in use
};

extern template class BasicFft<COMPLEX>;
extern template class BasicFft<COMPLEX32>;
} // namespace DspCore
