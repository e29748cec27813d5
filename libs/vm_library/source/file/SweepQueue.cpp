// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/file/SweepQueue.h"

#include "vm_library/source/containers/RingCore.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <sys/mman.h>
#include <unistd.h>

namespace vm::file
{
namespace
{
constexpr std::size_t kFront = 4 * 1024 * 1024; // bytes
constexpr std::size_t kPart = 256 * 1024;       // bytes, some ten microseconds' work
} // namespace

void SweepQueue::open()
{
    if (!m_bytes)
        m_bytes.reset(new (std::nothrow) unsigned char[kBytes]);
    m_capacity = m_bytes ? kBytes : 0;
    m_populated = m_first = m_stored = m_firstLength = m_sweeps = 0;
}

void SweepQueue::close()
{
    m_bytes.reset();
    m_capacity = 0;
}

void SweepQueue::populateSome()
{
    const std::size_t front = std::min(kFront, m_capacity);
    if (m_populated == front)
        return;
    const auto page = std::uintptr_t(sysconf(_SC_PAGESIZE));
    // Whole pages; what shares its page with something else comes by itself.
    const auto begin = reinterpret_cast<std::uintptr_t>(m_bytes.get());
    const std::uintptr_t first = (begin + m_populated + page - 1) / page * page;
    m_populated += std::min(kPart, front - m_populated);
    const std::uintptr_t last = (begin + m_populated) / page * page;
#ifdef MADV_POPULATE_WRITE
    // A system that does not know this refuses, and the pages come one by one.
    if (last > first)
        madvise(reinterpret_cast<void *>(first), last - first, MADV_POPULATE_WRITE);
#else
    static_cast<void>(first);
    static_cast<void>(last);
#endif
}

bool SweepQueue::add(Velmora::RingBuffer<unsigned char> &ring)
{
    const unsigned int count = ring.count();
    if (count == 0 || count > m_capacity - m_stored || m_sweeps == kMostSweeps)
        return false;
    const std::size_t begin = (m_first + m_stored) % m_capacity;
    const auto toEnd = (unsigned int)(std::min<std::size_t>(count, m_capacity - begin));
    ring.read(m_bytes.get() + begin, toEnd);
    ring.read(m_bytes.get(), count - toEnd);
    m_lengths[(m_firstLength + m_sweeps) % kMostSweeps] = count;
    m_stored += count;
    ++m_sweeps;
    return true;
}

void SweepQueue::copy(unsigned char *bytes, unsigned int count) const
{
    containers::copyOutOfRing(m_bytes.get(), m_capacity, m_first, bytes, std::size_t(count));
}

void SweepQueue::drop()
{
    const unsigned int count = oldest();
    m_first = (m_first + count) % m_capacity;
    m_stored -= count;
    m_firstLength = (m_firstLength + 1) % kMostSweeps;
    if (--m_sweeps == 0)
        m_first = 0;
}
} // namespace vm::file
