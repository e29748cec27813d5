// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/IqRecording.h"

#include "host_interfaces/DeviceAbstract.h"
#include "host_interfaces/IQRecorderConfigure.h"

#include <QFileInfo>

namespace host
{
namespace
{
constexpr int kReceiver = 0;
constexpr qint64 kBytesPerSample = 6; // 24 bits each of I and Q

/// Bytes in front of the samples.
qint64 headerBytes(vm::file::IQFile::Format layout)
{
    switch (layout) {
    case vm::file::IQFile::VelmoraSDR2:
        return 112;
    case vm::file::IQFile::HDSDR:
        return 216;
    case vm::file::IQFile::StandartWave:
        break;
    }
    return 44;
}
} // namespace

bool IqRecording::start()
{
    bool isRefused = false;
    const auto watch = QObject::connect(&m_device, &DeviceAbstract::sWriteIQ,
        [&isRefused](bool state, int) { isRefused = isRefused || !state; });
    // The name has the time in it, which may go on to the next second meanwhile.
    const QDateTime before = QDateTime::currentDateTime();
    m_device.writeIQ(true, kReceiver);
    QObject::disconnect(watch);
    const QString name = m_device.name();
    for (const QDateTime &time : {QDateTime::currentDateTime(), before})
        if (m_file.isEmpty() && QFileInfo::exists(m_where.fileName(name, time)))
            m_file = m_where.fileName(name, time);
    if (isRefused || m_file.isEmpty()) {
        m_error = "--record: cannot write " + m_where.fileName(name, before);
        return false;
    }
    return true;
}

void IqRecording::stop()
{
    m_device.writeIQ(false, kReceiver);
    const qint64 bytes = QFileInfo(m_file).size() - headerBytes(m_where.format);
    m_samples = std::uint64_t(std::max<qint64>(0, bytes / kBytesPerSample));
}
} // namespace host
