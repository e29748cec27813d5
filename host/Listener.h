// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AudioFile.h"
#include "DirectReceiver.h"
#include "HostSettings.h"
#include "Measurement.h"
#include "Progress.h"
#include "Scene.h"
#include "SoundDevice.h"
#include "StopSignal.h"
#include "StreamFeed.h"
#include "StreamLedger.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSaveFile>
#include <QTimer>

#include <optional>

namespace host
{
/// One run from the command line to the files: sets everything up, waits in the event loop until
/// the stream is over, measures, writes.
///
///     Scene -> virtual receiver -> DirectReceiver -> SoundDevice -> AudioFile
///                     ^ StreamFeed ------ StreamLedger -------'
///
/// Threads: main (this class), the driver's reader, the engine, the sound device.
class Listener : public QObject
{
    Q_OBJECT

public:
    static constexpr int kSuccess = 0;
    static constexpr int kFailure = 1;  ///< the receiver failed, or what it gave could not be kept
    static constexpr int kBadInput = 2; ///< a file or a setting cannot be used

    explicit Listener(const HostSettings &settings);
    ~Listener() override;

    /// Exit status of the program.
    int run();

private:
    bool openFiles();
    bool startStream();
    void finish(const QString &ending);
    void onTick();
    void onEnd();
    bool keepResults();
    CpuTimes cpuTimes() const;
    Measurement measurement() const;
    int complain(const QString &text, int status);

    HostSettings m_settings;
    Scene m_scene;
    AudioFile m_audioFile;
    std::optional<QSaveFile> m_reportFile;
    StreamLedger m_ledger;
    std::optional<DirectReceiver> m_receiver;
    std::optional<StreamFeed> m_feed;
    std::optional<SoundDevice> m_sound;
    Progress m_progress;
    StopSignal m_stopSignal;
    QTimer m_tick;
    QElapsedTimer m_wallClock;
    ThreadClock m_mainThread;
    CpuTimes m_cpuAtStart;
    Measurement m_result;
};
} // namespace host
