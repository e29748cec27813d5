// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace host
{
/// Lets the Tab key go through a window in the order of its layouts, which is the order of reading:
/// by itself it is that in which the widgets were made. To be called again when one has come.
void orderTabs(QWidget &window);
} // namespace host
