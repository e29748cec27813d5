// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "report/Measurement.h"
#include "services/HostBridge.h"
#include "settings/HostSettings.h"
#include "stream/OutletFile.h"
#include "stream/StreamFeed.h"

#include <optional>

namespace host
{
/// The outlets beside the sound card that a run asks for, each with its file: virtual cable and
/// line output. Main thread.
class Outlets
{
public:
    /// Opens outlets and files, before the stream begins, which is where their count of frames
    /// begins. False if a file cannot be made; error() tells which. The ledger must outlive the
    /// outlets, the bridge is needed until finish().
    bool open(const HostSettings &settings, HostBridge &bridge, const StreamLedger &ledger);
    const QString &error() const { return m_error; }

    /// A free run leaves room in their rings.
    void addTo(StreamFeed &feed) const;

    void start();

    /// Pulls what is left and closes the outlets; before the stream ends.
    void finish();

    void closeFiles();

    /// Why a file is not whole, a line each.
    QStringList problems() const;

    std::optional<OutputResults::Outlet> vac() const { return resultOf(m_vac); }
    std::optional<OutputResults::Outlet> lineOut() const { return resultOf(m_lineOut); }

private:
    using File = std::optional<OutletFile>;

    static std::optional<OutputResults::Outlet> resultOf(const File &file);

    HostBridge *m_bridge = nullptr; // not owned
    File m_vac;
    File m_lineOut;
    QString m_error;
};
} // namespace host
