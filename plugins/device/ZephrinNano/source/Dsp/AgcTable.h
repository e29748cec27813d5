// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <optional>
#include <vector>

/// The times of each gain control mode, and the mode in force.
///
/// Not thread-safe; the owner serialises.
class AgcTable
{
public:
    /// Times in milliseconds.
    struct Param
    {
        double attack;
        double decay;
        double hangTime;
    };

    /// What the receiver is to be told.
    struct Setting
    {
        bool on;
        Param times;
    };

    DspCore::AgcMode mode() const { return m_mode; }

    /// A table that requires a choice gives nothing until the first setMode(), and calls that a
    /// change whatever the mode. One that does not begins as if Off had been chosen.
    void requireChoice(bool require) { m_isChosen = !require; }

    /// Whether setMode() is to be called for this mode.
    bool isChange(DspCore::AgcMode mode) const { return !m_isChosen || mode != m_mode; }

    /// Stores the mode, limited to the table. A number beyond the table stores User and gives the
    /// control switched off all the same.
    Setting setMode(DspCore::AgcMode mode);

    /// Stores one time, `field` of the row of `mode`. Gives the row if its mode is in force, else
    /// nothing. Throws std::out_of_range for a mode beyond the table.
    std::optional<Setting> setTime(DspCore::AgcMode mode, double Param::*field, double ms);

private:
    bool m_isChosen = true;
    DspCore::AgcMode m_mode = DspCore::AgcMode::Off;
    std::vector<Param> m_rows{
        {2.0, 400.0, 400.0},   // Off
        {2.5, 800.0, 800.0},   // Long
        {2.0, 400.0, 400.0},   // Slow
        {1.7, 250.0, 250.0},   // Med
        {1.2, 100.0, 100.0},   // Fast
        {2.5, 1000.0, 1000.0}, // User
    };
};
