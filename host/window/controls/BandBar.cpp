// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/BandBar.h"

#include "memory/RadioMemory.h"

#include "settings/Language.h"

#include <QToolButton>

namespace host
{
BandBar::BandBar(RadioMemory &memory, QWidget *parent)
    : ChoiceGrid(QT_TRANSLATE_NOOP("ChoiceGrid", "Band"),
        std::max(1, int(memory.bands().bands().size())), parent)
{
    const auto bands = memory.bands().bands();
    QStringList names;
    for (const auto &band : bands)
        names += band.name;
    setTexts(names);
    say(this, [this, bands] {
        for (int i = 0; i < bands.size(); ++i)
            button(i).setToolTip(tr("%1 to %2 MHz, as last used")
                                     .arg(numberText(bands[i].lowHz / 1e6, 3),
                                         numberText(bands[i].highHz / 1e6, 3)));
    });
    connect(this, &ChoiceGrid::clicked, this, [this, &memory](int band) {
        memory.goToBand(band);
        setChosen(memory.currentBand()); // also where the radio is locked
    });
    connect(&memory, &RadioMemory::currentBandChanged, this, &BandBar::setChosen);
    setChosen(memory.currentBand());
}
} // namespace host
