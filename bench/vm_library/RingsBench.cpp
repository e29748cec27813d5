// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Signals.h"
#include "vm_library/source/containers/AccumulatedBuffer.h"
#include "vm_library/source/containers/CircularBuffer.h"
#include "vm_library/source/containers/ring_buffer.h"

#include <benchmark/benchmark.h>
#include <mutex>

// Each round hands one block over: a write and a read, on one thread. Real time at the highest rate
// is 3.072e6 items/s; a ring should take a small part of a per cent of it.
namespace
{
template <typename Lock>
void BM_ring_buffer(benchmark::State &state)
{
    auto source = test::noise(int(state.range(0)), /*seed*/ 1);
    auto target = source;
    vm::containers::ring_buffer<COMPLEX, Lock> ring;
    ring.resize(131072);
    for (auto _ : state) {
        ring.write(source);
        ring.read(target);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
// The same in the ring, as reader and engine do.
void BM_ring_buffer_in_place(benchmark::State &state)
{
    const auto count = std::size_t(state.range(0));
    vm::containers::ring_buffer<COMPLEX> ring;
    ring.resize(131072, count);
    for (auto _ : state) {
        benchmark::DoNotOptimize(ring.room(count));
        ring.commit();
        benchmark::DoNotOptimize(ring.take(count));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ring_buffer_in_place)->Arg(84)->Arg(512)->Arg(4096);
BENCHMARK(BM_ring_buffer<vm::thread::spinlock>)->Arg(84)->Arg(512)->Arg(4096);
BENCHMARK(BM_ring_buffer<std::mutex>)->Arg(84)->Arg(512)->Arg(4096); // the rival lock

void BM_CircularBuffer(benchmark::State &state)
{
    const auto source = test::noise(int(state.range(0)), /*seed*/ 1);
    auto target = source;
    CircularBuffer<COMPLEX> ring(16384);
    for (auto _ : state) {
        ring.write(source.data(), int(source.size()));
        ring.read(target.data(), int(target.size()));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_CircularBuffer)->Arg(84)->Arg(512)->Arg(4096);

void BM_AccumulatedBuffer(benchmark::State &state) // appends only: the window is read at frame rate
{
    const auto source = test::noise(int(state.range(0)), /*seed*/ 1);
    AccumulatedBuffer<COMPLEX> window;
    window.resize(65536);
    for (auto _ : state) {
        window.append(source.data(), int(source.size()));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_AccumulatedBuffer)->Arg(512)->Arg(4096);
} // namespace
