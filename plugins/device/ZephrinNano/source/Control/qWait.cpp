// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/qWait.h"

#include <QEventLoop>
#include <QTimer>
#include <algorithm>

void Qt::qWait(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(
        std::max(time, std::chrono::milliseconds(1)), Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}
