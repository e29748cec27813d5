// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/SoundDesk.h"

#include "radio/Radio.h"

namespace host
{
template <typename HostOutlet>
SoundDesk::Outlet::Outlet(HostOutlet &outlet, const StreamLedger &ledger)
    : source([&outlet](auto &&...block) { return outlet.pull(block...); }, ledger), channel(source)
{ }

SoundDesk::SoundDesk(Radio &radio) : m_radio(radio), m_speaker(radio.audio())
{
    // A stream that begins, or changes its rate, empties the rings of its outlets.
    const auto restart = [this] {
        for (const auto &outlet : {m_vac.get(), m_lineOut.get()})
            if (outlet)
                outlet->source.restart();
    };
    connect(&radio, &Radio::stateChanged, this, restart);
    connect(&radio, &Radio::rateChanged, this, restart);
}

SoundDesk::~SoundDesk()
{
    setVac(false);
    setLineOut(false);
}

void SoundDesk::setVac(bool on)
{
    setOutlet(m_vac, m_radio.bridge().vac(), on);
}

void SoundDesk::setLineOut(bool on)
{
    setOutlet(m_lineOut, m_radio.bridge().lineOut(), on);
}

template <typename HostOutlet>
void SoundDesk::setOutlet(std::unique_ptr<Outlet> &outlet, HostOutlet &host, bool on)
{
    if (on == bool(outlet))
        return;
    if (on) {
        host.open(FrameSource::kRateHz);
        outlet = std::make_unique<Outlet>(host, m_radio.ledger());
        return;
    }
    emit aboutToClose(&outlet->channel);
    outlet.reset();
    host.close();
}
} // namespace host
