// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/AgcTable.h"

#include <algorithm>

using DspCore::AgcMode;

AgcTable::Setting AgcTable::setMode(AgcMode mode)
{
    m_isChosen = true;
    m_mode = std::clamp(mode, AgcMode::Off, AgcMode::User);
    // Judged by the number asked for, not by the one stored.
    const bool on = mode >= AgcMode::Long && mode <= AgcMode::User;
    return {on, m_rows[on ? std::size_t(mode) : 0]};
}

std::optional<AgcTable::Setting> AgcTable::setTime(AgcMode mode, double Param::*field, double ms)
{
    Param &row = m_rows.at(std::size_t(mode));
    row.*field = ms;
    if (!m_isChosen || mode != m_mode)
        return std::nullopt;
    return Setting{mode != AgcMode::Off, row};
}
