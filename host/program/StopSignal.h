// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace host
{
/// Turns the first SIGINT, SIGTERM or SIGHUP (the terminal was closed) into a Qt signal on the
/// thread that made it; the second one ends the program as usual. One per process.
class StopSignal : public QObject
{
    Q_OBJECT

public:
    explicit StopSignal(QObject *parent = nullptr);
    ~StopSignal() override;

signals:
    void raised();

private:
    QSocketNotifier m_notifier;
};
} // namespace host
