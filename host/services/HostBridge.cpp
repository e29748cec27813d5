// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/HostBridge.h"

#include "host_interfaces/IqRecorder.h"

#include <QDir>

namespace host
{
namespace
{
// A device posts a spectrum now and then. Its jobs spread over the workers, so two keep a slow one
// from holding up the next, and a full queue would take seconds of all of them standing still.
constexpr tp::ThreadPoolOptions kPool{.workerCount = 2, .queueSize = 256};
} // namespace

HostBridge::HostBridge(StreamLedger &ledger, const QStringList &bandNames)
    : m_pool(kPool), m_notchControl(bandNames), m_audioCounter(ledger)
{
    m_recording.path = QDir::currentPath();
}

void HostBridge::setRecordingFormat(vm::file::IQFile::Format format)
{
    if (m_recording.format == format)
        return;
    m_recording.format = format;
    Q_EMIT m_recording.formatChanged(format);
}

void HostBridge::followRecorder(IqRecorder &recorder)
{
    connect(&recorder, &IqRecorder::pathChanged, this, &HostBridge::setRecordingPath,
        Qt::UniqueConnection);
    connect(&recorder, &IqRecorder::formathChanged, this, &HostBridge::setRecordingFormat,
        Qt::UniqueConnection);
    setRecordingPath(recorder.path());
    setRecordingFormat(recorder.format());
}
} // namespace host
