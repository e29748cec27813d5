// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "window/controls/ChoiceGrid.h"

namespace host
{
class RadioMemory;

/// A button for each amateur band of the device's table; each goes back to where the band was left.
/// GUI thread.
class BandBar : public ChoiceGrid
{
    Q_OBJECT

public:
    /// The memory must outlive the bar.
    explicit BandBar(RadioMemory &memory, QWidget *parent = nullptr);
};
} // namespace host
