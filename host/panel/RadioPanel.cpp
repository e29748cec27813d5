// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/RadioPanel.h"

#include "memory/RadioMemory.h"
#include "radio/Radio.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <algorithm>

namespace host
{
namespace
{
/// The place so many further, round the end.
int round(int place, int steps, int count)
{
    const int turned = (place + steps) % count;
    return turned < 0 ? turned + count : turned;
}
} // namespace

void RadioPanel::tune(int steps)
{
    m_radio.tune(steps);
}

void RadioPanel::turn(Dial dial, int steps)
{
    m_radio.setValue(dial, m_radio.value(dial) + steps * m_radio.rangeOf(dial).step);
}

void RadioPanel::toggle(Switch id)
{
    m_radio.toggle(id);
}

void RadioPanel::setMode(Mode mode)
{
    m_radio.setMode(mode);
}

void RadioPanel::stepMode(int steps)
{
    const auto modes = m_radio.functions().listModes();
    const auto isHere = [this](const auto &item) { return item.mode == m_radio.mode(); };
    const auto here = std::find_if(modes.begin(), modes.end(), isHere);
    m_radio.setMode(modes[round(int(here - modes.begin()), steps, modes.size())].mode);
}

void RadioPanel::chooseFilter(int filter)
{
    if (filter >= 0 && filter < m_radio.filters().filters(m_radio.mode()).size())
        m_radio.chooseFilter(filter);
}

/// From edges that are none of the list it goes to the first one.
void RadioPanel::stepFilter(int steps)
{
    const FilterMemory &filters = m_radio.filters();
    const int here = filters.chosen(m_radio.mode());
    const int count = filters.filters(m_radio.mode()).size();
    m_radio.chooseFilter(here < 0 ? 0 : round(here, steps, count));
}

void RadioPanel::goToBand(const QString &name)
{
    const auto bands = m_memory.bands().bands();
    for (int i = 0; i < bands.size(); ++i)
        if (bands[i].name.compare(name, Qt::CaseInsensitive) == 0) {
            m_memory.goToBand(i);
            return;
        }
    emit message(tr("The receiver has no band '%1'.").arg(name));
}

void RadioPanel::stepBand(int steps)
{
    m_memory.goToNextBand(steps > 0 ? 1 : -1);
}

void RadioPanel::stepStep(int steps)
{
    const auto &all = Radio::steps();
    m_radio.setStep(all[round(all.indexOf(m_radio.step()), steps, all.size())]);
}

void RadioPanel::toggleVfo()
{
    m_radio.setActive(other(m_radio.active()));
}

void RadioPanel::swapVfos()
{
    m_radio.swapVfos();
}

void RadioPanel::toggleSplit()
{
    m_radio.setSplit(!m_radio.isSplit());
}

void RadioPanel::toggleLock()
{
    m_radio.setLocked(!m_radio.isLocked());
}

void RadioPanel::togglePower()
{
    m_radio.setPower(!m_radio.isPowered());
}

void RadioPanel::send(const QString &keys)
{
    if (!m_sender.send(keys))
        emit message(m_sender.error());
}
} // namespace host
