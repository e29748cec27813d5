// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>

class DeviceAbstract;
class IQRecorderConfigure;

namespace host
{
/// One recording of the IQ stream by the device's own recorder. Main thread.
class IqRecording
{
public:
    /// Both must outlive the recording. The folder and the layout are those of `where`.
    IqRecording(DeviceAbstract &device, const IQRecorderConfigure &where)
        : m_device(device), m_where(where)
    { }

    /// On a running stream. False if the file cannot be written; error() tells which.
    bool start();

    /// Before the stream ends; returns when the file is complete.
    void stop();

    const QString &file() const { return m_file; }
    const QString &error() const { return m_error; }

    /// What is in the file. After stop().
    std::uint64_t samples() const { return m_samples; }

private:
    DeviceAbstract &m_device;
    const IQRecorderConfigure &m_where;
    QString m_file;
    QString m_error;
    std::uint64_t m_samples = 0;
};
} // namespace host
