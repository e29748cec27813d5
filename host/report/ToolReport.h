// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/ToolSettings.h"

#include <QJsonObject>

namespace host
{
/// The settings that differ from the default, for the report.
QJsonObject toJson(const ToolSettings &settings);
} // namespace host
