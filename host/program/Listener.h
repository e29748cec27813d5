// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "device/PluginReceiver.h"
#include "device/SceneSetup.h"
#include "library/D2xxLibrary.h"
#include "library/ReceiverControls.h"
#include "program/CpuMeter.h"
#include "program/DialogGuard.h"
#include "program/HeadlessRig.h"
#include "program/Outlets.h"
#include "program/StopSignal.h"
#include "program/Terminal.h"
#include "report/Measurement.h"
#include "rig/RigServer.h"
#include "settings/HostSettings.h"
#include "stream/AudioFile.h"
#include "stream/BandPictures.h"
#include "stream/IqRecording.h"
#include "stream/SoundDevice.h"
#include "stream/StreamFeed.h"
#include "stream/StreamLedger.h"

#include "pictures/AudioSpectrumPicture.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <optional>

namespace host
{
/// One run from the command line to the files: sets everything up, waits in the event loop until
/// the stream is over, measures, writes.
///
///     SceneSetup -> virtual receiver -> plugin in PluginReceiver -> SoundDevice -> AudioFile
///                     ^                        |-> OutletFile, BandPictures, IqRecording
///                     '- StreamFeed ------ StreamLedger -------'
///
/// Threads: main (this class), the watch of StopSignal, the driver's reader, the engine, the host's
/// pool, the sound device, one for each outlet that is open.
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
    // In this order. False: told on stderr, with the status to end with in m_status.
    bool openLibrary();
    bool loadPlugin();
    bool openFiles();
    bool openReceiver();
    QString remedy() const;
    bool openRig();
    bool openOutlets();
    bool startStream();

    void finish(const QString &ending);
    void onTick();
    void onEnd();

    // What comes after the stream.
    Measurement measurement() const;
    OutputResults outputs() const;
    void keepResults();
    void failOnFiles();
    void keepAudio();
    void keepPictures();
    void keepReport();

    const ReceiverControls *virtualReceiver() const
    {
        return m_virtualReceiver ? &*m_virtualReceiver : nullptr;
    }

    QString silence() const;

    /// Prints the reason of a status. False.
    bool fail(const QString &text, int status);

    static constexpr const char *kReceiverLost = "receiver lost";
    static constexpr const char *kReceiverSilent = "receiver silent";

    HostSettings m_settings;
    StopSignal m_stopSignal; // still counts while the rest ends
    DialogGuard m_dialogGuard;
    D2xxLibrary m_d2xx;
    std::optional<ReceiverControls> m_virtualReceiver; // empty for real hardware
    std::optional<SceneSetup> m_scene;
    AudioFile m_audioFile;
    std::optional<AudioSpectrumPicture> m_audioPicture;
    StreamLedger m_ledger;
    std::optional<PluginReceiver> m_receiver;
    std::optional<HeadlessRig> m_rig;
    std::optional<RigServer> m_rigServer;
    std::optional<BandPictures> m_pictures;
    std::optional<IqRecording> m_recording;
    std::optional<StreamFeed> m_feed;
    Outlets m_outlets;
    std::optional<SoundDevice> m_sound;
    Terminal m_terminal;
    QTimer m_tick;
    QElapsedTimer m_wallClock;
    CpuMeter m_cpu{m_ledger};
    Measurement m_result;
    int m_status = kSuccess;
};
} // namespace host
