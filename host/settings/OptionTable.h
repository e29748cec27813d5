// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Option.h"

#include <vector>

namespace host
{
// The parts of the table.
std::vector<Option> receptionOptions(); ///< parts of the program, scene, tuning, course of the run
std::vector<Option> toolOptions();      ///< what follows the band filter and cleans up the signal
std::vector<Option> outputOptions();    ///< the files of a run

/// All options but help and version, in the order of the help. The mode stands
/// above the rows that ask for it.
const std::vector<Option> &optionTable();
} // namespace host
