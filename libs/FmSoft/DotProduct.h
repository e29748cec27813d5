// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace FmSoft
{
/// Sum of a[i] * b[i], summed in independent lanes. Any thread.
double dotProduct(const double *a, const double *b, std::size_t length);
} // namespace FmSoft
