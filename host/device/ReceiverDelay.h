// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

class QSettings;

namespace host
{
struct HostSettings;

/// Milliseconds by which the audio is later than the IQ, within 0.2: pre-filter, band filter and
/// the gain control's look-ahead; tools that were switched on add theirs. `stored` holds what the
/// device wrote of its options. Empty in wide FM, which goes another way.
std::optional<double> receiverDelayMs(const HostSettings &settings, const QSettings &stored);
} // namespace host
