// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace FmSoft
{
/// Sum of a[i] * b[i], summed in independent lanes. Any thread.
double dotProduct(const double *a, const double *b, std::size_t length);

/// Dot products of a with runs of b that begin `step` numbers after each other:
///
///     out[n] = dotProduct(a, b + n step, length), n < count
///
/// Four runs at a time share each number of a that is read. Any thread.
void dotProducts(const double *a, std::size_t length, const double *b, std::size_t step,
    double *out, std::size_t count);
} // namespace FmSoft
