// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/thread/SpinBody.h"

namespace vm::thread
{
/// The lock of vm::containers::ring_buffer, for use with std::lock_guard. It spins longer than
/// SpinLock before it gives the time slice away, 128 failed tries: the ring's two sides meet rarely
/// and hold it for one copy.
class spinlock : public SpinBody<127, 128>
{ };
} // namespace vm::thread
