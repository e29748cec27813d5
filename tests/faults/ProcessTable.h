// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <thread>
#include <vector>

/// Does the same with each row of a table and gives the results in its order, several at a time:
/// what runs processes mostly waits.
template <typename Row, typename Work>
auto resultsOf(const std::vector<Row> &rows, std::size_t atOnce, Work work)
{
    std::vector<decltype(work(rows.front()))> results(rows.size());
    std::atomic<std::size_t> next = 0;
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < atOnce; ++i)
        threads.emplace_back([&] {
            for (std::size_t row; (row = next++) < rows.size();)
                results[row] = work(rows[row]);
        });
    for (std::thread &thread : threads)
        thread.join();
    return results;
}
