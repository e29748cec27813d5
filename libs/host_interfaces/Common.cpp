// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/Common.h"

#include <QCoreApplication>
#include <QStandardPaths>

QString Common::settingsPath()
{
    const QStringList folders = QStandardPaths::standardLocations(QStandardPaths::ConfigLocation);
    if (folders.isEmpty())
        return QCoreApplication::applicationDirPath();
    return folders.first() + "/" + "Velmora Labs" + "/" + "VelmoraSDR2";
}
