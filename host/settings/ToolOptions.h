// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/OptionReader.h"
#include "settings/ToolSettings.h"

namespace host
{
/// Declares the options of the receiver's tools.
void declareToolOptions(QCommandLineParser &parser);

/// Reads them; throws UsageError. Where channel B may be tuned is for the caller to check.
ToolSettings readToolOptions(const OptionReader &options);
} // namespace host
