// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/LoadedPlugin.h"

#include <QElapsedTimer>
#include <QWidget>

#include <functional>

/// The loaded plugin, and a host that does with it what a listener does, whatever comes of it. Main
/// thread; every call into the plugin is timed.
class Session
{
public:
    Session();
    ~Session();

    /// Finds the receiver, starts it, tunes it, writes and reads its calibration, changes its rate,
    /// stops and closes it. True if a stream flowed.
    bool listen(int searchMs, int flowMs);

    /// The stream stopped by itself and the host was told.
    bool wasLost() const { return m_wasLost; }

    /// Longest time that one call into the plugin, or one event in between, held the main thread.
    qint64 longestMs() const { return m_longestMs; }

private:
    /// Times a call.
    template <typename Body>
    auto call(Body body);
    bool waitFor(const std::function<bool()> &condition, int ms);
    bool flows(int ms);
    bool flowsOrIsLost(int ms);
    void work();

    QWidget m_page;
    test::LoadedPlugin m_plugin;
    qint64 m_longestMs = 0;
    bool m_wasLost = false;
};
