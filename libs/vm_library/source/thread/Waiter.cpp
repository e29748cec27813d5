// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/thread/Waiter.h"

#include <QEventLoop>
#include <QTimer>

void Waiter::wait(int milliseconds)
{
    QTimer timer;
    QEventLoop loop;
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    timer.setInterval(milliseconds);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start();
    loop.exec();
}
