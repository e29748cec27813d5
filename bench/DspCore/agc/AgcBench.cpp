// SPDX-License-Identifier: GPL-3.0-or-later
// Real time needs 48e3 items/s and channel; the engine's blocks are 512 samples at the input rate,
// which leaves 8 at the highest rate.
#include "../RunBlocks.h"
#include "DspCore/agc/Vm_Agc.h"

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
} // namespace

BENCHMARK(BM_Agc)->ArgNames({"", "on"})->ArgsProduct({{8, 128, 512}, {0, 1}});
