// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tp
{
/// Dmitry Vyukov's bounded queue for any number of producers and consumers, without a lock and
/// without an allocation after construction ("Bounded MPMC queue", 1024cores.net).
///
/// Each cell carries a sequence number. With positions that count up for ever and a capacity n, a
/// cell is free for the producer at position p when its number is p, and holds a task for the
/// consumer at p when it is p + 1; taking the task sets it to p + n, free for the next lap.
///
/// Any thread may push and pop. A producer that has won a cell and not yet published it delays only
/// the consumer of that cell.
template <typename T>
class MPMCBoundedQueue
{
public:
    /// Capacity in tasks, a power of two from 2 on (with a single cell "full" and "free for the
    /// next lap" are the same number); anything else throws std::invalid_argument.
    explicit MPMCBoundedQueue(std::size_t capacity)
        : m_cells(checked(capacity)), m_mask(capacity - 1)
    {
        for (std::size_t i = 0; i < capacity; ++i)
            m_cells[i].sequence.store(i, std::memory_order_relaxed);
    }

    MPMCBoundedQueue(const MPMCBoundedQueue &) = delete;
    MPMCBoundedQueue &operator=(const MPMCBoundedQueue &) = delete;

    /// Makes a task of the callable and queues it. False, with nothing changed, when the queue is
    /// full.
    template <typename Callable>
    bool push(Callable &&callable)
    {
        std::uint64_t position = 0;
        Cell *cell = claim(m_enqueue, 0, position);
        if (!cell)
            return false;
        {
            T task(std::forward<Callable>(callable));
            cell->task = std::move(task);
        }
        cell->sequence.store(position + 1, std::memory_order_release);
        return true;
    }

    /// Takes the oldest task. False, with the target unchanged, when none is ready.
    bool pop(T &task)
    {
        std::uint64_t position = 0;
        Cell *cell = claim(m_dequeue, 1, position);
        if (!cell)
            return false;
        task = std::move(cell->task);
        // What a move leaves knows the code it came from, which may be a plugin that is unloaded
        // before the next lap.
        cell->task = T();
        cell->sequence.store(position + m_mask + 1, std::memory_order_release);
        return true;
    }

private:
    struct Cell
    {
        std::atomic<std::uint64_t> sequence;
        T task;
    };

    static constexpr std::size_t kCacheLine = 64; // bytes, x86-64

    static std::size_t checked(std::size_t capacity)
    {
        if (capacity < 2 || !std::has_single_bit(capacity))
            throw std::invalid_argument("queue capacity must be a power of two above 1");
        return capacity;
    }

    // Wins the cell at a counter whose sequence number is position + lead. Null when that number
    // still lies behind: the queue is full for a producer, empty for a consumer.
    Cell *claim(std::atomic<std::uint64_t> &counter, std::uint64_t lead, std::uint64_t &position)
    {
        position = counter.load(std::memory_order_relaxed);
        for (;;) {
            Cell &cell = m_cells[position & m_mask];
            const std::uint64_t sequence = cell.sequence.load(std::memory_order_acquire);
            const auto difference = static_cast<std::int64_t>(sequence - (position + lead));
            if (difference < 0)
                return nullptr;
            if (difference > 0)
                position = counter.load(std::memory_order_relaxed);
            else if (counter.compare_exchange_weak(
                         position, position + 1, std::memory_order_relaxed))
                return &cell;
        }
    }

    std::vector<Cell> m_cells;
    const std::uint64_t m_mask;
    // Producers and consumers each write one counter; on lines of their own they do not slow each
    // other, nor the readers of the two members above.
    alignas(kCacheLine) std::atomic<std::uint64_t> m_enqueue = 0;
    alignas(kCacheLine) std::atomic<std::uint64_t> m_dequeue = 0;
};
} // namespace tp
