// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/Apf.h"
#include "DspCore/audio/Dse.h"
#include "DspCore/demodulators/DemodulatorAM.h"
#include "DspCore/demodulators/DemodulatorCW.h"
#include "DspCore/demodulators/DemodulatorNFM.h"
#include "DspCore/demodulators/DemodulatorSAM.h"
#include "DspCore/demodulators/DemodulatorWFM.h"
#include "DspCore/fft/FFT64.h"
#include "DspCore/filters/Biquad.h"
#include "DspCore/filters/DownConverter.h"
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/Iir.h"
#include "DspCore/filters/Window64.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <functional>

using namespace DspCore;

namespace
{
constexpr char kFft[] =
    ": (pSrcDst == 0) || (lenght == 0) || (mLenght == 0) || (mLenght != lenght)";
constexpr char kIncorrect[] = "): Incorrect input parameters!";
constexpr char kDemodulator[] = " : Incorrect input parameters!";

/// Calls process(); one with a result must return false.
template <typename Block>
auto on(Block &block)
{
    return [&block](COMPLEX *x, int n) {
        if constexpr (std::is_void_v<decltype(block.process(x, n))>)
            block.process(x, n);
        else
            EXPECT_FALSE(block.process(x, n));
    };
}

/// A call with bad input, which part of a warning names the caller, and the warning; null: none.
struct Call
{
    const char *caller;
    const char *text;
    int length; // of a buffer that is there; 0: a null buffer of 32 as well
    std::function<void(COMPLEX *, int)> process;
};
} // namespace

TEST(BadInputTest, IsReportedAndLeftAlone)
{
    FFT64 fft;
    fft.init(32);
    const auto forward = [&fft](COMPLEX *x, int n) {
        EXPECT_FALSE(fft.process(x, n, FftType::Forward));
    };
    Window64 window;
    window.init(16, Window::Hann); // becomes 32
    Biquad biquad;
    Iir unsetIir;
    DownConverter mixer;
    FastFir unsetFir;
    FastFir fir;
    fir.init(-0.1, 0.1, 500);
    DemodulatorAM am;
    DemodulatorSAM sam;
    DemodulatorCW cw;
    DemodulatorNFM nfm;
    DemodulatorWFM wfm;
    Dse dse; // reports even when switched off
    Apf apf;
    apf.setEnable(true);

    const Call calls[] = {
        {"FFT64::process", kFft, 0, forward},
        {"FFT64::process", kFft, 16, forward},
        {"Window64::process", " (pSrcDst == NULL) || (lenght == 0) ", 0, on(window)},
        {"Window64::process", " mLenght != lenght ", 16, on(window)},
        {"Biquad::process(", kIncorrect, 0, on(biquad)},
        {"Biquad::process2", kIncorrect, -1,
            [&](COMPLEX *x, int n) { EXPECT_FALSE(biquad.process2(x, n)); }},
        {"Iir::process", " Not initialize.", 32, on(unsetIir)},
        {"DownConverter::process", ", -3 ): Incorrect input parameters!", -3, on(mixer)},
        {"FastFir::process", ": Incorrect input parameters. ", 0, on(fir)},
        {"FastFir::process", ippGetStatusString(ippStsSizeErr), -1, on(fir)},
        {"FFT64::process", kFft, 32, on(unsetFir)},
        {"DemodulatorAM::process", kDemodulator, 0, on(am)},
        {"DemodulatorSAM::process", kDemodulator, 0, on(sam)},
        {"DemodulatorCW::process", kDemodulator, 0, on(cw)},
        {"DemodulatorWFM::process", kDemodulator, -3, on(wfm)},
        {"void DspCore::Dse::process(COMPLEX *, int)", kIncorrect, 0, on(dse)},
        {"DemodulatorNFM", nullptr, 0, on(nfm)},
        {"Apf", nullptr, 0, on(apf)},
    };
    for (const Call &call : calls) {
        const std::vector<COMPLEX> buffer(32, COMPLEX{1.0, 2.0});
        auto used = buffer;
        test::LogCapture log;
        call.process(used.data(), call.length);
        if (call.length == 0)
            call.process(nullptr, 32);
        const auto lines =
            call.text ? log.warnings().filter(call.caller).filter(call.text) : log.lines();
        const int expected = call.length == 0 ? 2 : 1;
        EXPECT_EQ(lines.size(), call.text ? expected : 0) << call.caller;
        EXPECT_EQ(used, buffer) << call.caller;
    }
}
