// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QThread>
#include <atomic>
#include <list>

/// Finds the receivers on the USB bus, on a short-lived thread of its own: asking every chip on the
/// bus for its strings takes too long for the GUI.
///
/// Threads:
/// 1. GUI: scan(), devices().
/// 2. Scan: run(), discover(), and the emission of discovered(). Fills m_devices without a lock:
///    devices() waits for the end of the thread before it touches the list.
/// readSerial() and readProduct() may be called on any.
class DiscoverZephrinNANO : public QThread
{
    Q_OBJECT

public:
    /// A receiver in the FIFO library's list.
    struct DevId
    {
        int index = -1; // in the library's list, as FT_Open takes it; other chips count too
        QString serial;

        bool operator==(const DevId &) const = default;
    };

    /// The only one. It goes with the library, after the end of a running scan.
    static DiscoverZephrinNANO *instance();
    ~DiscoverZephrinNANO() override;

    /// Starts a scan, unless one is running; discovered() follows.
    void scan();

    /// True until discovered() is about to be raised. While it is not, devices() answers at once.
    bool isScanning() const { return m_scanning; }

    /// The receivers of the last scan. Waits for a running one.
    std::list<DevId> devices();

    /// Strings of the chip at a place in the library's list; empty if it does not tell.
    QString readSerial(int index) const;
    QString readProduct(int index) const;

    /// One scan. Thread 2.
    void run() override;

    /// Appends the receivers, known by their product string, to the list. Returns the number of
    /// chips of any product, 0 also if the library fails or counts more than one bus can hold,
    /// which is logged as a warning.
    int discover();

signals:
    /// A scan is done, also without a receiver. Raised by thread 2.
    void discovered();

private:
    DiscoverZephrinNANO() = default;

    std::list<DevId> m_devices;
    std::atomic<bool> m_scanning = false; // set by 1, cleared by 2
};
