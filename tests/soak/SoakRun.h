// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace soak
{
/// What one rate is put through.
struct SoakPlan
{
    double rateHz = 192e3;       // one of the device's
    double seconds = 86400.0;    // of stream
    double checkSeconds = 600.0; // of stream between two checks
    unsigned seed = 1;
};

/// Loads the plugin, runs the stream with changes every few seconds, checks at intervals, prints a
/// line at each, and unloads. Returns what was wrong, one line each; nothing if all was well.
std::vector<std::string> runSoak(const SoakPlan &plan);
} // namespace soak
