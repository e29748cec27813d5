// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/qWait.h"

#include "vm_library/source/thread/Waiter.h"

#include <algorithm>

void Qt::qWait(std::chrono::milliseconds time)
{
    Waiter::wait(std::max(int(time.count()), 1));
}
