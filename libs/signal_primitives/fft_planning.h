// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace signal_primitives
{
/// From here on transforms are planned without measuring, so that every run of the program takes
/// the same plans and gives the same bits, at a loss of speed of up to 15 % in the receiver. Plans
/// made before stay. It holds for the whole process: also for plugins that carry these transforms
/// themselves. Before any other thread plans.
void planReproducibly();
} // namespace signal_primitives
