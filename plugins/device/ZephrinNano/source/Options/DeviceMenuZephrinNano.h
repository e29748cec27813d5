// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Control/DiscoverZephrinNANO.h"
#include "Control/driver/HardwareZephrinNANO.h"
#include "Options/FormTexts.h"

#include <QStringView>
#include <QWidget>
#include <list>
#include <memory>
#include <optional>

namespace Ui
{
class DeviceMenuZephrinNano;
}

/// The panel of the tool bar's device menu: which receiver, its sample rate, the automatic preamp,
/// and whether a receiver is there.
///
/// By keyboard: Tab, Backtab and the arrows up and down go round its controls, space opens a box or
/// turns the switch. A box that is closed does not change by arrows.
///
/// The setters of rate, preamp and serial do nothing for the value held already, so that two
/// widgets may be kept in step by connecting each to the other. GUI thread.
class DeviceMenuZephrinNano : public QWidget
{
    Q_OBJECT

public:
    explicit DeviceMenuZephrinNano(QWidget *parent = nullptr);
    ~DeviceMenuZephrinNano() override;

    void setAutoPreamp(bool state);
    bool autoPreamp() const { return m_autoPreamp; }

    void setSampleRate(HardwareZephrinNANO::SampleRate rate);
    HardwareZephrinNANO::SampleRate sampleRate() const { return m_sampleRate; }

    void setSerial(QStringView serial);
    QString serial() const { return m_serial; }

    /// Rich text is taken as such.
    void setStatus(QStringView status);

    /// Fills the box with the serials. The device chosen stays so as long as it is in the list,
    /// else the first one is; neither raises deviceChanged().
    void setDevices(std::list<DiscoverZephrinNANO::DevId> devices);

    /// Index in the D2XX library's list of the device at a place of the box; all ones (-1) where
    /// there is none.
    int deviceId(int index) const;

    void setCurrentDevice(int index);

    /// The device cannot be changed while one is open.
    void setLock(bool lock);

    /// Widens the texts of the rates for a display of another density, by two blanks a call.
    void switchDpi();

    /// Keeps the wheel from turning a box that the pointer happens to pass; whatever lies below
    /// gets it. Takes the arrows up and down from a control.
    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void serialChanged(QStringView serial);
    void sampleRateChanged(HardwareZephrinNANO::SampleRate rate);
    void autoPreampChanged(bool state);

    /// Place in the box.
    void deviceChanged(int index);

protected:
    /// To the next control, and to the first after the last: the menu around would take the focus
    /// away with the second Tab.
    bool focusNextPrevChild(bool next) override;
    void focusInEvent(QFocusEvent *event) override;

    /// Another language: new words, the same values.
    void changeEvent(QEvent *event) override;

private:
    std::unique_ptr<Ui::DeviceMenuZephrinNano> m_ui;
    QString m_serial;
    HardwareZephrinNANO::SampleRate m_sampleRate = HardwareZephrinNANO::Rate48000;
    bool m_autoPreamp = false;
    std::list<DiscoverZephrinNANO::DevId> m_devices;
    std::optional<FormTexts> m_texts; // as soon as there is a form
};
