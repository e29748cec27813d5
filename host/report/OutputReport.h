// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "report/OutputResults.h"
#include "settings/HostSettings.h"

#include <QJsonObject>
#include <QStringList>

namespace host
{
/// Adds "preamp" and what was asked for of "recording", "vac", "line_out" and "spectrum".
void addTo(QJsonObject &json, const HostSettings &settings, const OutputResults &results);

/// A line for a reader on each.
QStringList toLines(const HostSettings &settings, const OutputResults &results);
} // namespace host
