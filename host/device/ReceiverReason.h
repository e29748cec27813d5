// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace host
{
/// What the virtual receiver has to say, in the user's language: the library speaks English and
/// knows nothing of translations. A file's name in front ("band.txt:3: ") stays, several things
/// one after another may be joined by "; ". A text that is not known stays as it is.
QString receiverReason(const QString &english);
} // namespace host
