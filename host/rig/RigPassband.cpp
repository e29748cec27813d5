// SPDX-License-Identifier: GPL-3.0-or-later
#include "rig/RigPassband.h"

namespace host
{
RigPassband rigPassband(
    DeviceFunctionsAbstract &functions, Mode mode, RigPassband present, double hertz)
{
    if (hertz == 0.0) {
        const ReceptionMode &usual = *findMode(mode);
        return {usual.filterLowHz, usual.filterHighHz};
    }
    if (functions.isSimmetricFilter(mode))
        return {-hertz / 2.0, hertz / 2.0};
    if (present.highHz <= 0.0)
        return {present.highHz - hertz, present.highHz};
    return {present.lowHz, present.lowHz + hertz};
}
} // namespace host
