// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/IQRecorderConfigure.h"

#include <QCoreApplication>

namespace
{
QString layoutTag(vm::file::IQFile::Format format)
{
    switch (format) {
    case vm::file::IQFile::StandartWave:
        return "wv";
    case vm::file::IQFile::HDSDR:
        return "hd";
    case vm::file::IQFile::VelmoraSDR2:
        break;
    }
    return {};
}
} // namespace

QString IQRecorderConfigure::fileName(const QString &device) const
{
    return fileName(device, QDateTime::currentDateTime());
}

QString IQRecorderConfigure::fileName(const QString &device, const QDateTime &start) const
{
    return path + "/" + QCoreApplication::applicationName() + "_" + device + "_"
        + start.toString("yyyyMMdd_hh-mm-ss_") + layoutTag(format) + ".wav";
}
