// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace host
{
/// How a command of rig control ended: the numbers that hamlib's clients know.
enum class RigError : int {
    None = 0,
    Invalid = -1,       ///< unknown command, wrong or missing argument
    Rejected = -9,      ///< not now: the dial is locked, the receiver is gone
    NotAvailable = -11, ///< this receiver has no such thing
};
} // namespace host
