// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "thread_pool/FixedFunction.h"
#include "thread_pool/MPMCBoundedQueue.h"
#include "thread_pool/ThreadPoolImpl.h"

namespace tp
{
/// The pool that the host shares with its plugins. A job of up to 128 bytes lives in its queue
/// cell.
using ThreadPool = ThreadPoolImpl<FixedFunction<void(), 128>, MPMCBoundedQueue>;
} // namespace tp
