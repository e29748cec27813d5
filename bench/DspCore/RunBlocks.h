// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/Signals.h"

#include <algorithm>
#include <benchmark/benchmark.h>

namespace bench
{
/// Runs `process(block)` over a fresh copy of noise each round; the first argument is the length.
template <typename Process>
void runBlocks(benchmark::State &state, Process process)
{
    const auto source = test::noise(int(state.range(0)), /*seed*/ 1);
    auto block = source;
    for (auto _ : state) {
        std::copy(source.begin(), source.end(), block.begin());
        process(block);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
} // namespace bench
