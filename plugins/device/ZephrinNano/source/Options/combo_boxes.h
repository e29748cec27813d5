// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Control/DiscoverZephrinNANO.h"

#include <list>

class QComboBox;

/// Fills the box with the serials of the devices, with the index in the D2XX library's list as the
/// data of each. The text chosen before stays so if it is still there, else the first is chosen.
/// The box raises no signal. One that shows these devices already is left alone, so that it does
/// not close under the pointer at each scan.
void fillDevices(QComboBox &box, const std::list<DiscoverZephrinNANO::DevId> &devices);

/// Adds two blanks to each text: a style that was made for another density cuts them off else.
void widenItems(QComboBox &box);
