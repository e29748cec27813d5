// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "sound/OutletSource.h"
#include "sound/SoundChannel.h"

#include <QObject>

#include <memory>

namespace host
{
class HostBridge;
class Radio;

/// All that is heard: the loudspeaker, and while they are switched on the virtual cable and the
/// line output, each with a sound card of its own choice.
///
/// For a window: speaker() is always there; its output() has the list of cards, the state and the
/// volume (SoundOutput, SoundStream). setVac(true) opens the cable, after which vac() has the same;
/// so with the line output. A recording of a channel is added to its pump().
///
/// GUI thread. The radio must have been loaded and must outlive the desk.
class SoundDesk : public QObject
{
    Q_OBJECT

public:
    explicit SoundDesk(Radio &radio);
    ~SoundDesk() override;

    SoundChannel &speaker() { return m_speaker; }

    /// The cable's audio is neither changed by the volume nor by mute.
    void setVac(bool on);
    SoundChannel *vac() { return m_vac ? &m_vac->channel : nullptr; }

    void setLineOut(bool on);
    SoundChannel *lineOut() { return m_lineOut ? &m_lineOut->channel : nullptr; }

signals:
    /// Before a channel goes: whoever added a sink to its pump removes it.
    void aboutToClose(host::SoundChannel *channel);

private:
    struct Outlet
    {
        template <typename HostOutlet>
        Outlet(HostOutlet &outlet, const StreamLedger &ledger);

        OutletSource source;
        SoundChannel channel;
    };

    template <typename HostOutlet>
    void setOutlet(std::unique_ptr<Outlet> &outlet, HostOutlet &host, bool on);

    Radio &m_radio;
    SoundChannel m_speaker;
    std::unique_ptr<Outlet> m_vac;
    std::unique_ptr<Outlet> m_lineOut;
};
} // namespace host
