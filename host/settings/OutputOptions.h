// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/HostSettings.h"
#include "settings/OptionReader.h"

namespace host
{
/// Declares the options of what a run leaves behind: files of audio and IQ, pictures, the report.
void declareOutputOptions(QCommandLineParser &parser);

/// Reads them; throws UsageError.
void readOutputOptions(const OptionReader &options, HostSettings &settings);
} // namespace host
