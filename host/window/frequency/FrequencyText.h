// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace host
{
/// Hertz of what a person types: "14.074M", "14074k", "14074000 Hz". Without a unit a number below
/// 1000 is taken for megahertz, one below 100000 for kilohertz, others for hertz: what receivers of
/// this kind are tuned to is written so. A comma is a point where it stands alone. Empty if it is
/// none.
std::optional<double> frequencyFrom(const QString &text);

/// "14.074.000", whole hertz in groups of three.
QString frequencyText(double hertz);
} // namespace host
