// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/SpectrumLinearAverager.h"

#include "vm_library/source/log/Log.h"

namespace DspCore
{
void SpectrumLinearAverager::write(REAL32 *line, std::size_t size)
{
    if (size != spectrumSize()) {
        vm::log::debug("virtual void DspCore::SpectrumLinearAverager::write(REAL32 *, std::size_t)",
            " incorrect input buffer size!");
        return;
    }
    average(line, nullptr);
}
} // namespace DspCore
