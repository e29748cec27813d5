// SPDX-License-Identifier: GPL-3.0-or-later
// Real time needs 48e3 items/s and channel; the engine's blocks are 512 samples at the input rate,
// which leaves 8 at the highest rate.
#include "../RunBlocks.h"
#include "DspCore/agc/Vm_Agc.h"
#include "DspCore/agc/Vm_Binaural.h"
#include "DspCore/agc/Vm_Clipper.h"

namespace
{
void BM_Agc(benchmark::State &state) // second argument: on; the ring is scanned once per block
{
    Velmora::CppDsp::Vm_Agc<double> agc;
    agc.setAttack(2.5);
    agc.setOn(state.range(1) != 0);
    bench::runBlocks(
        state, [&](auto &block) { agc.process(block.data(), unsigned(block.size())); });
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
} // namespace

BENCHMARK(BM_Agc)->ArgNames({"", "on"})->ArgsProduct({{8, 128, 512}, {0, 1}});
BENCHMARK(BM_Binaural)->Arg(128)->Arg(512);
BENCHMARK(BM_Clipper)->ArgNames({"", "soft"})->ArgsProduct({{128, 512}, {0, 1}});
