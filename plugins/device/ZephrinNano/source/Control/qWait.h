// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>

namespace Qt
{
/// Lets time pass (at least 1 ms) in an event loop of its own: timers, signals and the user's
/// clicks are served meanwhile, so the caller may find its object changed afterwards. Needs the
/// event loop of a Qt thread.
void qWait(std::chrono::milliseconds time);
} // namespace Qt
