// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReceiverRig.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace
{
std::atomic<long> allocations = 0;
} // namespace

// Replaces the allocator of this program by one that counts.
void *operator new(std::size_t size)
{
    ++allocations;
    if (void *memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

void *operator new(std::size_t size, std::align_val_t alignment)
{
    ++allocations;
    const auto step = std::size_t(alignment);
    if (void *memory = std::aligned_alloc(step, (size + step - 1) / step * step))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::align_val_t) noexcept
{
    std::free(memory);
}

namespace
{
using DspCore::Modulation;

TEST(ReceiverAllocationTest, ASteadyBlockAllocatesNothing)
{
    DspCore::Receiver receiver;
    receiver.setEnableVfob(true);
    test::switchToolsOn(receiver);
    receiver.setEnableCTCSS(true);
    auto block = test::noise(4096, 1);
    for (int mode = int(Modulation::AM); mode <= int(Modulation::DRM); ++mode) {
        test::setMode(receiver, Modulation(mode));
        receiver.process(block.data(), 4096);
        const long before = allocations;
        for (int i = 0; i < 20; ++i)
            receiver.process(block.data(), 512);
        EXPECT_EQ(allocations, before) << "mode " << mode;
    }
    EXPECT_GT(allocations, 0);
}
} // namespace
