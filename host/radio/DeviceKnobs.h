// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPointer>

class QCheckBox;
class QComboBox;
class QWidget;

namespace host
{
/// Turns what only the device's own options page offers: its sample rate and its automatic preamp,
/// for which the host has no call. They are found by the names of their controls; a device without
/// them is left alone. GUI thread.
class DeviceKnobs : public QObject
{
    Q_OBJECT

public:
    /// A page that holds the device's options; it may go before the knobs.
    explicit DeviceKnobs(const QWidget &page);

    /// By the place in EngineLimits::kRatesHz. A running stream is begun anew, which takes some
    /// tenths of a second with the event loop served meanwhile. False if there is no such control.
    bool setRateCode(int code);

    /// False if there is no such control.
    bool setAutoPreamp(bool on);
    bool isAutoPreamp() const;

signals:
    /// By the program or on the page.
    void autoPreampChanged(bool on);

private:
    QPointer<QComboBox> m_rates;
    QPointer<QCheckBox> m_autoPreamp;
};
} // namespace host
