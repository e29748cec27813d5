// SPDX-License-Identifier: GPL-3.0-or-later
// Real time needs 48e3 items/s and channel, the wide-FM demodulator 192e3.
#include "../RunBlocks.h"
#include "DspCore/demodulators/DemodulatorAM.h"
#include "DspCore/demodulators/DemodulatorCW.h"
#include "DspCore/demodulators/DemodulatorNFM.h"
#include "DspCore/demodulators/DemodulatorSAM.h"
#include "DspCore/demodulators/DemodulatorWFM.h"

namespace
{
template <typename Demodulator>
void BM_Demodulator(benchmark::State &state)
{
    Demodulator demodulator;
    bench::runBlocks(
        state, [&](auto &block) { demodulator.process(block.data(), int(block.size())); });
}

void BM_DemodulatorWFM(benchmark::State &state) // second argument: stereo
{
    DspCore::DemodulatorWFM demodulator;
    demodulator.setSampleRate(192000.0);
    demodulator.setStereo(state.range(1) != 0);
    bench::runBlocks(
        state, [&](auto &block) { demodulator.process(block.data(), int(block.size())); });
}
} // namespace

BENCHMARK_TEMPLATE(BM_Demodulator, DspCore::DemodulatorAM)->Arg(8)->Arg(128)->Arg(512);
BENCHMARK_TEMPLATE(BM_Demodulator, DspCore::DemodulatorSAM)->Arg(8)->Arg(128)->Arg(512);
BENCHMARK_TEMPLATE(BM_Demodulator, DspCore::DemodulatorCW)->Arg(8)->Arg(128)->Arg(512);
BENCHMARK_TEMPLATE(BM_Demodulator, DspCore::DemodulatorNFM)->Arg(8)->Arg(128)->Arg(512);
BENCHMARK(BM_DemodulatorWFM)->ArgNames({"", "stereo"})->ArgsProduct({{512}, {0, 1}});
