// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "radio/AudioOutlet.h"
#include "radio/DeviceKnobs.h"
#include "radio/Dial.h"
#include "radio/FilterMemory.h"
#include "radio/Readings.h"
#include "radio/StreamHealth.h"
#include "radio/Switch.h"
#include "radio/Vfo.h"

#include "device/PluginReceiver.h"
#include "device/SceneSetup.h"
#include "library/D2xxLibrary.h"
#include "library/ReceiverControls.h"
#include "settings/HostSettings.h"
#include "stream/StreamLedger.h"

#include "host_interfaces/SpectrumView.h"

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <array>
#include <map>
#include <memory>
#include <optional>

class DeviceFunctionsAbstract;
class QSettings;

namespace host
{
struct DeviceKind;

/// The one receiver of the program: what window, rig control, panel keys and memories act on and
/// look at. It holds the settings, limits them to what the device's capability tables allow, hands
/// them to the device, and tells of every change by a signal, so that whoever acts need not know
/// who looks.
///
///     load() once, setPower(true): looks for a receiver until one is there, starts it, and looks
///     again when it is gone. Settings may change at any time, with the power on or off.
///
/// Units are hertz, dB and dBm; frequencies are those on the air. A setter limits what it is given,
/// leaves out what is no number, and emits nothing where nothing changes.
///
/// The device's channel 0 always listens to the active VFO and channel 1 to the other one: wide FM,
/// RIT, the virtual cable and the line output go by channel 0. One mode and one filter rule both
/// channels, those of the active VFO.
///
/// Threads: all of it on the GUI thread, under an event loop, but AudioOutlet::pull().
class Radio : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Off,
        Searching, ///< wanted, and no receiver there
        Receiving,
    };
    Q_ENUM(State)

    static constexpr int kReadingsMs = 40; ///< 25 times a second
    static constexpr int kSaveMs = 4000;   ///< settings are on the disk so soon after a change

    Radio();
    ~Radio() override;

    /// Loads library, scene, plugin and stored settings; what the command line gives is laid over
    /// them. False: error() tells why in one line.
    bool load(const HostSettings &settings);
    const QString &error() const { return m_error; }

    /// A line on each thing that load() found not as one might think.
    const QStringList &notices() const { return m_notices; }

    void setPower(bool on);
    bool isPowered() const { return m_isPowered; }
    State state() const { return m_state; }

    /// While one is searched for, why there is none and what to do about it; else empty.
    const QString &searchText() const { return m_searchText; }

    /// By what way the receiver is reached; null for a library of one's own.
    const DeviceKind *deviceKind() const { return m_kind; }

    /// The file of that library, empty if this run has none.
    QString ownLibrary() const { return m_settings.d2xxFile; }

    /// Another one from now on, which is kept in the settings; null for ownLibrary(). Where power
    /// is on it is searched for. False: message() and error() tell why, all is as before.
    bool setDeviceKind(const DeviceKind *kind);

    // What the device can do.

    DeviceFunctionsAbstract &functions() const;
    QString deviceName() const;

    /// Lowest and highest frequency.
    double lowestHz() const { return m_lowestHz; }
    double highestHz() const { return m_highestHz; }

    /// The limits and the step of a dial for this device.
    struct Range
    {
        double low;
        double high;
        double step;
    };
    Range rangeOf(Dial dial) const;

    // Tuning. While locked no frequency changes, and those that would give false.

    const Vfo &vfo(VfoId id) const { return m_vfos[std::size_t(id)]; }
    VfoId active() const { return m_active; }
    const Vfo &activeVfo() const { return vfo(m_active); }
    double frequencyHz() const { return activeVfo().frequencyHz; }
    Mode mode() const { return activeVfo().mode; }

    /// What is heard through the active VFO's dial: with RIT.
    double receivedHz() const;

    /// Of the active VFO the device's centre follows where the filter would leave the sampled band.
    bool setFrequency(VfoId id, double hertz);
    bool setFrequency(double hertz) { return setFrequency(m_active, hertz); }

    /// By so many steps, to multiples of the step.
    bool tune(int steps);

    /// One of steps().
    static const QVector<int> &steps();
    int step() const { return m_step; }
    void setStep(int hertz);

    void setLocked(bool locked);
    bool isLocked() const { return m_isLocked; }

    /// The VFO that is tuned, heard and looked at from now on.
    void setActive(VfoId id);

    /// Hear both; the other one only where it lies in the sampled band and the mode allows it.
    void setSplit(bool split);
    bool isSplit() const { return m_isSplit; }
    bool isOtherHeard() const;

    /// Frequency and mode of A and B change places; the other VFO becomes as the active one.
    bool swapVfos();
    void copyToOther();

    void setMode(VfoId id, Mode mode);
    void setMode(Mode mode) { setMode(m_active, mode); }

    /// Frequency, mode and filter of the active VFO at once.
    Reception reception() const;
    bool setReception(const Reception &reception);

    // The sampled band.

    /// Frequency of the device. The active VFO is taken along as far as it must be to stay inside.
    double centerHz() const { return m_centerHz; }
    bool setCenter(double hertz);

    /// IQ samples a second, and the width of the spectrum.
    double rateHz() const;
    double spanHz() const;

    /// One of EngineLimits::kRatesHz. A running stream is begun anew with the event loop served
    /// meanwhile. False if the device has no such rate.
    bool setRate(int hertz);

    // Filters.

    const FilterMemory &filters() const { return *m_filters; }
    FilterMemory::Edges filterEdges() const { return m_filters->edges(mode()); }
    void setFilterEdges(const FilterMemory::Edges &edges);
    void moveFilterLow(double hertz);
    void moveFilterHigh(double hertz);
    void chooseFilter(int filter);
    void addFilter();
    void removeFilter(int filter);
    void restoreFilters();

    /// Where the filter lies on the air, relative to the frequency: in DIGL and DIGU beside it, as
    /// there the edges are those of the audio.
    FilterMemory::Edges filterOnAir() const;

    /// Where the audio's 0 Hz lies on the air, relative to the frequency: 0 but in DIGL and DIGU.
    double carrierHz(Mode mode) const;

    // Switches, dials, gain control, equalizer.

    bool isOn(Switch id) const { return m_switches[std::size_t(id)]; }
    void setOn(Switch id, bool on);
    void toggle(Switch id) { setOn(id, !isOn(id)); }
    double value(Dial id) const { return m_dials[std::size_t(id)]; }
    void setValue(Dial id, double value);

    /// Whether it has an effect in the present mode.
    bool isUseful(Switch id) const { return rowOf(id).modes.has(mode()); }
    bool isUseful(Dial id) const { return rowOf(id).modes.has(mode()); }

    /// Position in DeviceFunctionsAbstract::listAgc(), kept for each mode.
    int agcMode() const;
    void setAgcMode(int agc);

    /// 18 gains in dB, lowest band first.
    const QList<int> &equalizerGains() const { return m_equalizerGains; }
    void setEqualizerGains(const QList<int> &gains);

    // Notches of the amateur band around the centre, or of all that lies outside of them.

    HostNotchControl &notches() const;
    std::size_t notchBand() const;

    /// Into the first place that is free. False if there is none or it is out of range.
    bool addNotch(double frequencyHz, double widthHz);
    void removeNotch(std::size_t id);

    // What comes out.

    const Readings &readings() const { return m_readings; }

    /// The last line, valid until the next call; to be asked for on spectrumReady().
    SpectrumView spectrum() const;

    /// Lines a second, 25 to 100.
    void setSpectrumRate(int linesPerSecond);

    /// Number of bins; and how many lines are averaged, 1: none.
    void setSpectrumSize(int bins);
    void setSpectrumAveraging(int lines);

    AudioOutlet &audio() const { return *m_audio; }

    // What it is made of, for outlets, recordings, reports and the options dialog. After load().

    DeviceAbstract &device() const { return m_receiver->device(); }
    HostBridge &bridge() const { return m_receiver->bridge(); }
    HostIqServer &iqServer() { return m_receiver->iqServer(); }
    HostManager &manager() const { return m_receiver->manager(); }
    const StreamLedger &ledger() const { return m_ledger; }
    QWidget &optionsPage() { return m_receiver->optionsPage(); }

    /// The virtual receiver's own functions; null for real hardware.
    const ReceiverControls *virtualReceiver() const { return m_controls ? &*m_controls : nullptr; }

    /// What the virtual receiver hears: a recording, a band description, the built-in band without
    /// a name. Tunes to its middle. False: error() tells why, the scene before goes on.
    bool openScene(const QString &file);
    QString sceneName() const { return m_scene->name(); }

    /// The settings file, for others that keep something; written some seconds after each change
    /// and at the end. No group is open.
    QSettings &settings();

    /// Now. False: error() tells why in one line.
    bool save();

    /// Without waiting for the disk; false if the time before failed.
    bool saveLater();

signals:
    void stateChanged(host::Radio::State state);
    void searchChanged(const QString &text);

    /// Before the library is another one, while virtualReceiver() still is what it was; and after.
    void deviceKindChanging();
    void deviceKindChanged();

    /// Something a person should read, in one line.
    void message(const QString &text);

    void frequencyChanged(host::VfoId id, double hertz);
    void activeChanged(host::VfoId id);
    void splitChanged(bool split);
    void lockedChanged(bool locked);
    void stepChanged(int hertz);
    void modeChanged(host::VfoId id, host::Mode mode);
    void centerChanged(double hertz);

    /// Rate or span or both.
    void rateChanged(double hertz);

    /// Edges in use, or where they lie on the air.
    void filterChanged();

    /// The list of filters of the mode.
    void filtersChanged();

    void switchChanged(host::Switch id, bool on);
    void dialChanged(host::Dial id, double value);
    void agcModeChanged(int agc);
    void equalizerChanged();
    void notchesChanged();
    void sceneChanged(const QString &name);
    void readingsChanged();
    void spectrumReady();

    /// Before the settings are written: who keeps something puts it into settings() now.
    void aboutToSave();

private:
    bool fail(const QString &text);
    bool loadLibrary();
    void take(const D2xxLibrary &library, const DeviceKind *kind);
    void openSceneAnew();
    void join();
    void begin(const HostSettings &settings);

    // Searching and receiving.
    void look();
    void tryStart();
    void onLost();
    void setState(State state);
    void setSearchText(const QString &text);

    /// Whether the device has it.
    bool isKnown(Mode mode) const;

    // Device. Each hands over what is set.
    void sendAll();
    void sendTuning();
    void sendChannels();
    void sendMode();
    void sendFilter();
    void sendAgc();
    void sendNotches();
    void send(Switch id);
    void send(Dial id);

    double limited(double hertz) const;
    double widestReachHz() const;
    bool isReceivable(double hertz) const;
    void moveCenter(double hertz);
    bool store(VfoId id, double hertz);
    void filterMoved(bool moved);
    void onRate(double spanHz);
    void onPreamp(float db);
    void restartHealth();
    void readMeters();

    void writeSettings(QSettings &settings) const;
    void readSettings(QSettings &settings);

    D2xxLibrary m_d2xx;
    const DeviceKind *m_kind = nullptr;
    std::optional<ReceiverControls> m_controls; // empty for real hardware
    std::optional<SceneSetup> m_scene;
    StreamLedger m_ledger;
    std::optional<PluginReceiver> m_receiver;
    std::unique_ptr<DeviceKnobs> m_knobs;
    std::unique_ptr<AudioOutlet> m_audio;
    std::unique_ptr<FilterMemory> m_filters;
    HostSettings m_settings;
    QString m_error;
    QStringList m_notices;
    double m_lowestHz = 0.0;
    double m_highestHz = 0.0;

    bool m_isPowered = false;
    State m_state = State::Off;
    QString m_searchText;
    bool m_isListNew = true; // whether the device's list is not that of a library before
    std::array<Vfo, 2> m_vfos;
    VfoId m_active = VfoId::A;
    bool m_isSplit = false;
    bool m_isLocked = false;
    int m_step = 100;
    double m_centerHz = 7.1e6;
    std::array<bool, kSwitches> m_switches{};
    std::array<double, kDials> m_dials{};
    std::map<Mode, int> m_agcModes;
    QList<int> m_equalizerGains;
    std::size_t m_notchBand = 0;                         // the one whose notches the device has
    std::array<int, 2> m_digitalOffsets = {-2200, 1500}; // of DIGL and DIGU in the audio, hertz

    Readings m_readings;
    StreamHealth m_health;
    quint64 m_overflows = 0;
    QElapsedTimer m_sinceOverflow;
    QElapsedTimer m_sinceTry;
    int m_pauseMs = 0; // from that try to the next
    QTimer m_readingsTimer;
    QTimer m_saveTimer;
};
} // namespace host
