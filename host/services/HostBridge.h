// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/AudioCounter.h"
#include "services/HostLineOutManager.h"
#include "services/HostNotchControl.h"
#include "services/HostSoundOut.h"
#include "services/HostVacManager.h"

#include "host_interfaces/BridgeAbstract.h"
#include "host_interfaces/IQRecorderConfigure.h"

class IqRecorder;

namespace host
{
/// The host's services for a device, all of them owned here. GUI thread.
class HostBridge : public BridgeAbstract
{
    Q_OBJECT

public:
    /// The ledger must outlive the bridge; of the names see HostNotchControl.
    explicit HostBridge(StreamLedger &ledger, const QStringList &bandNames = {});

    HostSoundOut *soundOut() override { return &m_soundOut; }
    HostVacManager *vacManager() override { return &m_vacManager; }
    HostLineOutManager *lineOutManager() override { return &m_lineOutManager; }
    tp::ThreadPool &threadPool() override { return m_pool; }
    IQRecorderConfigure *iqRecorderConfigure() override { return &m_recording; }
    HostNotchControl *radioNotchControl() override { return &m_notchControl; }
    AudioCounter *audioServer() override { return &m_audioCounter; }

    HostVac &vac() { return m_vacManager.output(); }
    HostLineOut &lineOut() { return m_lineOutManager.output(); }

    /// Where the next IQ recording goes: a folder, at first the current one, and a layout.
    void setRecordingPath(const QString &folder) { m_recording.path = folder; }
    void setRecordingFormat(vm::file::IQFile::Format format);

    /// Takes folder and layout from the user's choice, now and whenever that changes.
    void followRecorder(IqRecorder &recorder);

    void reserved1() override { }
    void reserved2() override { }
    void reserved4() override { }
    void reserved8() override { }

private:
    tp::ThreadPool m_pool; // ends last: it may still run a job
    HostSoundOut m_soundOut;
    HostVacManager m_vacManager;
    HostLineOutManager m_lineOutManager;
    IQRecorderConfigure m_recording;
    HostNotchControl m_notchControl;
    AudioCounter m_audioCounter;
};
} // namespace host
