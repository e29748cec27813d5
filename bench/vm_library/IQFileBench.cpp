// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Signals.h"
#include "vm_library/source/file/IQFile.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <random>

// Real time at the highest rate is 3.072e6 items/s, on either thread of a recording.
namespace
{
using vm::file::IQFile;

class OpenScale : public IQFile
{
public:
    using IQFile::scale;
};

// The engine's side: pack and queue. Unpaced blocks soon find the ring full; a refused one was
// packed all the same.
void BM_IQFileWrite(benchmark::State &state)
{
    auto block = test::noise(int(state.range(0)), /*seed*/ 1);
    const QTemporaryDir folder;
    IQFile file;
    file.setFormat(IQFile::VelmoraSDR2);
    file.open(folder.path() + "/a.wav");
    double refused = 0.0;
    for (auto _ : state)
        refused += file.write(block) ? 0.0 : 1.0;
    file.close();
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["refused"] = benchmark::Counter(refused, benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_IQFileWrite)->Arg(84)->Arg(512)->Arg(4096);

// The file thread's side: a sweep takes what came in a millisecond, 3072 samples, or a full ring.
void BM_IQFileScale(benchmark::State &state)
{
    std::mt19937 random(1);
    std::vector<unsigned char> source(std::size_t(state.range(0)) * 6);
    for (unsigned char &byte : source)
        byte = (unsigned char)(random());
    auto bytes = source;
    OpenScale file;
    for (auto _ : state) {
        std::copy(source.begin(), source.end(), bytes.begin());
        file.scale(bytes, 31.622776601683793);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_IQFileScale)->Arg(3072)->Arg(10922);
} // namespace
