// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <QStringList>
#include <QTimer>

#include <memory>

struct input_event;

namespace host
{
/// Reads keys and knobs from a Linux input device, and waits for it while it is not there. GUI
/// thread.
class PanelInput : public QObject
{
    Q_OBJECT

public:
    static constexpr int kLookMs = 1000; ///< between looks for a device that is not there

    PanelInput();
    ~PanelInput() override;

    /// A file, or a part of the name of an input device in any case; empty: none. Grabbing keeps
    /// its events from everyone else.
    void setDevice(const QString &device, bool isGrabbing);

    bool isPresent() const { return m_file >= 0; }

    /// Names of the devices that this user may read.
    static QStringList devices();

signals:
    /// See KeyControl::State.
    void keyChanged(int code, int state);
    void knobTurned(int code, int clicks, qint64 timeUs);
    void presentChanged(bool isPresent);

    /// Why a device that is there cannot be used, in one line; once, until it can be.
    void problem(const QString &text);

private:
    void look();
    int openNamed(QString *file) const;
    void read();
    void take(const input_event &event);
    void drop();

    QString m_device;
    bool m_isGrabbing = false;
    bool m_isTold = false; // of a problem
    int m_file = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_look;
    QByteArray m_rest;       // an event of which a part has come
    bool m_isLosing = false; // events were lost; what comes until the next report is incomplete
};
} // namespace host
