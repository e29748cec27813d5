// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/containers/RingBuffer.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace vm::file
{
/// What the ring of a recording held when it got too full, sweep after sweep, until the file thread
/// has time for it.
///
/// A sweep is all that the ring held at a moment. It comes out as it went in, whole and in order.
/// An empty queue begins at the front of its memory again, so that only as much of it is ever used,
/// and has to be given back at the end, as was waiting at once.
/// The caller's lock guards everything but copy(), by which the one reader takes the oldest sweep
/// out while others are added.
class SweepQueue
{
public:
    static constexpr std::size_t kBytes = 64 * 1024 * 1024; // 3.6 s at 3.072 MHz

    /// Takes the memory, unless it is there, and empties the queue. Without memory the queue has no
    /// room for anything. The pages are still to come: see populateSome().
    void open();

    /// Gives the memory back.
    void close();

    /// Has the system put pages behind the next part of the front, so that what a busy machine
    /// leaves waiting, a fifth of a second at 3.072 MHz, finds them there. To be called again and
    /// again. Reader only, without the lock.
    void populateSome();

    /// Takes all of a ring, which nobody else may read meanwhile. False, with the ring as it was,
    /// if it is empty or there is no room. Allocates nothing.
    bool add(Velmora::RingBuffer<unsigned char> &ring);

    /// Bytes of all sweeps.
    std::size_t stored() const { return m_stored; }

    /// Bytes of the oldest sweep, 0 if there is none.
    unsigned int oldest() const { return m_sweeps == 0 ? 0 : m_lengths[m_firstLength]; }

    /// Copies the oldest sweep of count bytes, which stays. Reader only, without the lock.
    void copy(unsigned char *bytes, unsigned int count) const;

    /// Drops the oldest sweep.
    void drop();

private:
    // The memory is full before, as the ring is emptied when it is more than half full.
    static constexpr std::size_t kMostSweeps = 4096;

    std::unique_ptr<unsigned char[]> m_bytes;
    std::size_t m_capacity = 0;
    std::size_t m_populated = 0; // bytes
    std::size_t m_first = 0;     // where the oldest byte is
    std::size_t m_stored = 0;    // bytes
    std::vector<unsigned int> m_lengths = std::vector<unsigned int>(kMostSweeps);
    std::size_t m_firstLength = 0;
    std::size_t m_sweeps = 0;
};
} // namespace vm::file
