// SPDX-License-Identifier: GPL-3.0-or-later
// Real time needs 48e3 items/s and channel; the input meter runs at the IQ rate, up to 3.072e6.
#include "../RunBlocks.h"
#include "DspCore/audio/Apf.h"
#include "DspCore/audio/Dse.h"
#include "DspCore/audio/Equalizer18.h"
#include "DspCore/audio/RxMeter.h"
#include "DspCore/audio/Sql.h"
#include "DspCore/audio/SqlCtcss.h"
#include "DspCore/audio/Vm_Binaural.h"
#include "DspCore/audio/Vm_Clipper.h"

namespace
{
void BM_Apf(benchmark::State &state)
{
    DspCore::Apf apf;
    apf.setEnable(true);
    bench::runBlocks(state, [&](auto &block) { apf.process(block.data(), int(block.size())); });
}

void BM_Binaural(benchmark::State &state)
{
    Velmora::CppDsp::Vm_Binaural<double> binaural;
    binaural.setDelaySamples(480);
    binaural.setOn(true);
    bench::runBlocks(state, [&](auto &block) { binaural.process(block.data(), block.size()); });
}

void BM_Clipper(benchmark::State &state) // second argument: mode, hard or soft
{
    const Velmora::CppDsp::Vm_Clipper<double> clipper(true, int(state.range(1)));
    bench::runBlocks(
        state, [&](auto &block) { clipper.process(block.data(), unsigned(block.size())); });
}

void BM_Dse(benchmark::State &state)
{
    DspCore::Dse dse;
    dse.setEnable(true);
    bench::runBlocks(state, [&](auto &block) { dse.process(block.data(), int(block.size())); });
}

void BM_Equalizer18(benchmark::State &state) // second argument: enabled, otherwise flat
{
    DspCore::Equalizer18 equalizer;
    equalizer.setSampleRate(48000.0);
    equalizer.init(QVector<int>(18, 6));
    equalizer.setEnable(state.range(1) != 0);
    bench::runBlocks(
        state, [&](auto &block) { equalizer.process(block.data(), unsigned(block.size())); });
}

void BM_RxMeter(benchmark::State &state)
{
    DspCore::RxMeter meter;
    bench::runBlocks(state, [&](auto &block) { meter.process(block.data(), int(block.size())); });
}

void BM_Sql(benchmark::State &state)
{
    DspCore::Sql squelch;
    squelch.setEnable(true);
    squelch.setThreshold(0.0);
    bench::runBlocks(
        state, [&](auto &block) { squelch.process(block.data(), int(block.size()), -60.0); });
}

void BM_SqlCtcss(benchmark::State &state) // 800 taps and the search for the tone
{
    DspCore::SqlCtcss squelch;
    squelch.setThreshold(-120.0);
    squelch.setEnable(true);
    bench::runBlocks(
        state, [&](auto &block) { squelch.process(block.data(), int(block.size()), -60.0); });
}
} // namespace

BENCHMARK(BM_Apf)->Arg(8)->Arg(128)->Arg(512);
BENCHMARK(BM_Binaural)->Arg(128)->Arg(512);
BENCHMARK(BM_Clipper)->ArgNames({"", "soft"})->ArgsProduct({{128, 512}, {0, 1}});
BENCHMARK(BM_Dse)->Arg(8)->Arg(128)->Arg(512);
BENCHMARK(BM_Equalizer18)->ArgNames({"", "on"})->ArgsProduct({{8, 128, 512}, {0, 1}});
BENCHMARK(BM_RxMeter)->Arg(8)->Arg(128)->Arg(512);
BENCHMARK(BM_Sql)->Arg(128)->Arg(512);
BENCHMARK(BM_SqlCtcss)->Arg(8)->Arg(128)->Arg(512);
