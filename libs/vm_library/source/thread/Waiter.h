// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// A pause for code on a thread with an event loop.
class Waiter
{
public:
    /// Returns after the given milliseconds, to the millisecond. The calling thread's events go on
    /// being delivered meanwhile, so slots of the caller may run inside this call.
    static void wait(int milliseconds);
};
