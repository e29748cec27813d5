// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/LoadedPlugin.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <stdexcept>

namespace test
{
LoadedPlugin::LoadedPlugin()
{
    loader.setLoadHints({}); // by default it keeps a library for good
    device = qobject_cast<DeviceAbstract *>(loader.instance());
    if (!device)
        throw std::runtime_error(loader.errorString().toStdString());
    auto &functions = *device->getAvalibleFunctions();
    bridge =
        std::make_unique<host::HostBridge>(ledger, host::HostNotchControl::bandNames(functions));
    manager =
        std::make_unique<host::HostManager>(&sensors, host::PreampControl::limitsOf(functions));
}

LoadedPlugin::~LoadedPlugin()
{
    if (device)
        device->deinit();
    loader.unload();
}

bool LoadedPlugin::init(QLayout *page, bool advanced)
{
    if (!device->init(*bridge, page, false, advanced))
        return false;
    device->setManager(manager.get());
    device->setIqServer(&iqServer);
    return true;
}

void runEvents(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

bool waitFor(const std::function<bool()> &condition, int ms)
{
    constexpr int kStepMs = 5;
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > ms)
            return false;
        runEvents(kStepMs);
    }
    return true;
}
} // namespace test
