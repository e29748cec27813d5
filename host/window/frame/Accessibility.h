// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace host
{
/// Tells programs that read the screen aloud what the window's own widgets are: the frequency a
/// number that can be set, the meter an indicator, panorama, waterfall and curve charts. Once,
/// before the first window.
void installAccessibility();
} // namespace host
