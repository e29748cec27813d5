// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "d2xx/ftd2xx.h"

#include <QCoreApplication>
#include <QString>

namespace host
{
/// What a look at the bus found.
struct BusView
{
    bool isKnown = false;     ///< else nobody has looked yet
    FT_STATUS status = FT_OK; ///< whether the library could look
    unsigned devices = 0;     ///< with a chip that the library knows
    unsigned nameless = 0;    ///< of which the name may not be read

    /// Why there is no receiver on the USB and what to do about it, for a person; one sentence.
    QString reason() const;

private:
    Q_DECLARE_TR_FUNCTIONS(host::BusView)
};
} // namespace host
