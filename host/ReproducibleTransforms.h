// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace host
{
/// From here on, Fourier transforms are planned without measuring their speed. Measured plans
/// differ from run to run, and so does the rounding of their results: in the last digit, but a file
/// that is to come out the same each time shows it. Costs a free run up to a sixth of the engine's
/// speed.
void makeTransformsReproducible();
} // namespace host
