// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/file/IQFile.h"

#include <QDateTime>
#include <QObject>
#include <QString>

/// Where the host wants IQ recordings, and in which layout.
///
/// A device reads both members when a recording starts. The host sets them, from IqRecorder for
/// example, and emits formatChanged() when the layout changed. GUI thread only.
class IQRecorderConfigure : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    QString path; // folder, without a slash at the end
    vm::file::IQFile::Format format = vm::file::IQFile::HDSDR;

    /// The file for a recording that starts now: folder, application, device, local time to the
    /// second and a tag of the layout, as in "/home/me/iq/App_Device_20240229_23-59-01_hd.wav".
    QString fileName(const QString &device) const;

    /// The same for a recording that starts at the given time.
    QString fileName(const QString &device, const QDateTime &start) const;

Q_SIGNALS:
    void formatChanged(vm::file::IQFile::Format format);
};
