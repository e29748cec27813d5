// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "window/controls/ChoiceGrid.h"

#include "radio/Vfo.h"

#include <map>

namespace host
{
class Radio;

/// A button for each amateur band of the device's table. Each goes back to the frequency, mode and
/// filter that were last used there, at first to the band's middle in its usual mode. GUI thread.
class BandBar : public ChoiceGrid
{
    Q_OBJECT

public:
    BandBar(Radio &radio, QWidget *parent = nullptr);

    /// As a click does.
    void recall(int band);

private:
    void remember();
    void readSettings();
    void writeSettings();

    Radio &m_radio;
    std::map<int, Reception> m_last;
};
} // namespace host
