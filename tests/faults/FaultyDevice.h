// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

/// What a session's plugin has below it: one receiver whose calls go wrong as asked. Each program
/// has one kind of it.
#pragma GCC visibility push(default)
namespace faulty
{
/// In the beginning, in the language of that kind. False for a text that is not understood.
bool arm(const std::string &text);

/// All calls do what they should from here on.
void mend();

/// What a listener does when nothing else helps. Ends what is open.
void replug();

/// Threads that what is still open keeps.
int threads();

/// How often the function of the armed fault was called.
unsigned calls();
} // namespace faulty
#pragma GCC visibility pop
