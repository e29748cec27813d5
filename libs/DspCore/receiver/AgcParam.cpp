// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/receiver/AgcParam.h"

#include <algorithm>

namespace DspCore
{
AgcParam limited(const AgcParam &param)
{
    // The look-ahead ring is 30 attack times long: the upper limit keeps it at 150 ms.
    return {std::clamp(param.attack, 0.1, 5.0), std::clamp(param.decay, 1.0, 3000.0),
        std::clamp<quint32>(param.hang, 1, 3000), param.on};
}
} // namespace DspCore
