// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/SpectrumRmsAverager.h"

#include "signal_primitives/ipps.h"
#include "vm_library/source/log/Log.h"

namespace DspCore
{
void SpectrumRmsAverager::write(REAL32 *line, std::size_t size)
{
    if (size != spectrumSize()) {
        vm::log::debug("virtual void DspCore::SpectrumRmsAverager::write(REAL32 *, std::size_t)",
            " incorrect input buffer size!");
        return;
    }
    REAL32 *const squares = nextRow();
    ippsMul_32f_A24(line, line, squares, int(size));
    average(squares, [](REAL32 *mean, int count) { ippsSqrt_32f_I(mean, count); });
}
} // namespace DspCore
