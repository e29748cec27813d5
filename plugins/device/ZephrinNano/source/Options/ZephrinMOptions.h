// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"
#include "Options/FormTexts.h"

#include <QPointer>
#include <QStringView>
#include <QWidget>
#include <memory>
#include <optional>

class DeviceMenuZephrinNano;
class OptionControls;
class QDoubleSpinBox;
class QMenu;
class QMessageBox;
class QSettings;

namespace Ui
{
class ZephrinMOptions;
}

/// The options page of the plugin, and the owner of all its stored settings.
///
/// It does nothing with a value but show it, store it and tell it: each control has a signal, which
/// the plugin connects to the engine or to the device control (see OptionControls). A change raises
/// it, whoever makes it, and readSettings() raises it for every control that is stored, changed or
/// not. Until then page, engine and device agree because the form starts with what they start with.
///
/// The device menu of the tool bar shows device, sample rate, automatic preamp and status once
/// more; page and menu follow each other.
///
/// Units: times in ms, frequencies and offsets in Hz, gains in dB, filters in taps, unless stated
/// otherwise. Values beyond the range of a control are limited to it. GUI thread.
class ZephrinMOptions : public QWidget
{
    Q_OBJECT

public:
    // Signals and slots are matched by the text of their parameters; the engine spells these two
    // the same way.
    using AgcMode = DspCore::AgcMode;

    explicit ZephrinMOptions(QWidget *parent = nullptr);
    ~ZephrinMOptions() override;

    /// Row of the rate table, 0..8.
    int sampleRateIndex() const;

    /// Whether the low-pass filter is taken out.
    bool bypass() const;
    bool preampAuto() const;

    /// Position of the preamp slider: half decibels, -63..12.
    int attValue() const;

    /// Pitch of a CW station in tune.
    int cwPitch() const;

    /// Index in the D2XX library's list of the device chosen, -1 without one.
    int getCurrentDeviceID() const;

    /// Times of a mode of the gain control. Off has none and gives 0.
    double agcAttack(AgcMode mode) const;
    double agcDecay(AgcMode mode) const;
    int agcHangTime(AgcMode mode) const;

    /// Belongs to the page.
    QMenu *deviceMenu() const { return m_menu; }

    /// Keeps the wheel from turning a box that the pointer passes; the page scrolls instead.
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    /// Another language: new words, the same values.
    void changeEvent(QEvent *event) override;

public slots:
    /// Reads all controls but the filter lengths, which start anew each time, and tells each, and
    /// both digital offsets at the end. What is missing or makes no sense takes its default.
    void readSettings(QSettings *settings);
    void writeSettings(QSettings *settings);

    /// A row beyond the table is ignored.
    void setSampleRateIndex(int index);
    void setBypass(bool bypass);
    void setStatus(const QString &status);

    /// The device with this serial is chosen, at once or when a scan brings it.
    void setSerial(QStringView serial);

    /// Chooses the device with this serial if it is there.
    void restoreDevice(const QString &serial);

    /// A device is open: it cannot be changed, and what is done to an open one can be.
    void setLock(bool lock);

    /// Slider position in half decibels, and the same in decibels, rounded to the nearest half.
    void setAttValue(int halfDecibels);
    void setPreampValue(float decibels);

    /// A mode without times is ignored.
    void setAgcAttack(AgcMode mode, double ms);
    void setAgcDecay(AgcMode mode, double ms);
    void setAgcHangTime(AgcMode mode, int ms);

    /// Values of the calibration: decibels, and factors on the tuned frequency. One that the
    /// control cannot hold exactly is shown as near as it gets and raises no signal: the rounded
    /// value would replace the one in the calibration.
    void setUserPreampCoeff(double value);
    void setUserFreqCoeff(double value);
    void setAdminPreampCoeff(double value);
    void setAdminFreqCoeff(double value);

    /// A stream has started: tells the filter lengths, which no file tells.
    void onUpdate();

    /// A scan is done: fills the device boxes and chooses the device asked for.
    void onDiscovered();

    /// The display changes its density: gives the texts of the boxes more room.
    void on4k(bool state);

    /// The buttons that put back what a tool works well with.
    void onDefaultNR();
    void onDefaultANF();
    void onDefaultNB1();
    void onDefaultNB2();
    void onDefaultDSE();
    void onDefaultAPFCW();
    void onDefaultAPFSSB();
    void onDefaultFilterTaps();
    void onDefaultDigOffset();
    void onDefaultAgcLong();
    void onDefaultAgcSlow();
    void onDefaultAgcMed();
    void onDefaultAgcfast();

    // Of single controls, which are found by sender() where several share a slot.
    void onDigOffset(int offset);
    void onLpf(bool on);
    void onPreamp(int halfDecibels);
    void onAgcAttack(double ms);
    void onAgcDecay(double ms);
    void onAgcHangTime(int ms);
    void onAdcRegWrite();
    void onAttWrite();

signals:
    void sampleRateChanged(int index);
    void bypassChanged(bool bypass);
    void preampAutoChanged(bool state);
    void preampChanged(float decibels);

    void agcAttackChanged(AgcMode mode, REAL ms);
    void agcDecayChanged(AgcMode mode, REAL ms);
    void agcHangTimeChanged(AgcMode mode, REAL ms);

    void nrTapsChanged(int taps);
    void nrDelayChanged(int samples);
    void nrRateChanged(double rate);
    void nrLeakChanged(double leak);
    void anfTapsChanged(int taps);
    void anfDelayChanged(int samples);
    void anfRateChanged(double rate);
    void anfLeakChanged(double leak);

    /// Ratio of amplitudes.
    void nb1ThresholdChanged(double threshold);
    void nb2ThresholdChanged(double threshold);

    void apfCwGainChanged(int gain);
    void apfCwQualityChanged(int quality);
    void apfSsbGainChanged(int gain);
    void apfSsbQualityChanged(double quality);
    void apfSsbFreqChanged(int frequency);

    void dseQualityChanged(int taps);
    void dseSwapChanged(bool swap);
    void wfmUsaChanged(bool usa);

    void filterTapsSsbChanged(int taps);
    void filterTapsAmChanged(int taps);
    void filterTapsDigChanged(int taps);
    void filterTapsCwChanged(int taps);

    void diglOffsetChanged(int offset);
    void diguOffsetChanged(int offset);

    /// Both offsets as the shift of the dial: DIGL downwards, thus negative.
    void digOffsetChanged(int digl, int digu);
    void cwPitchChanged(int pitch);

    /// Raw setting of the attenuator.
    void attValueChanged(int value);

    /// Register number in the high byte, its data in the low byte.
    void adcRegChanged(quint16 word);
    void adcResetChanged(bool state);

    /// Calibration: decibels, and factors on the tuned frequency.
    void userPreampCoeffChanged(double value);
    void userPreampFreqChanged(double value);
    void adminPreampCoeffChanged(double value);
    void adminPreampFreqChanged(double value);

    /// The calibration is to be read from, or written to, the memory of the receiver.
    void readArminCalibrations();
    void writeArminCalibrations();

private:
    void createDeviceMenu();
    void connectDevice();
    void connectDeviceMenu();
    void connectButtons();
    void stopWheel();
    void showCoefficient(QDoubleSpinBox *box, double value);
    void showPreamp();
    void chooseDevice(int index);
    void askToWrite();

    std::unique_ptr<Ui::ZephrinMOptions> m_ui;
    std::unique_ptr<OptionControls> m_controls;
    QString m_serial;                         // of the device asked for, there or not
    std::optional<FormTexts> m_texts;         // as soon as there is a form
    QPointer<QMessageBox> m_question;         // about writing the calibration, while it is open
    QMenu *m_menu = nullptr;                  // owned by this widget
    DeviceMenuZephrinNano *m_panel = nullptr; // owned by the menu
};
