// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <array>
#include <cstddef>
#include <optional>

/// The lengths of the band filter, one for each class of modes, and the mode in force.
///
/// Not thread-safe; the owner serialises.
class FilterTaps
{
public:
    enum Class : std::size_t {
        Ssb = 0,
        Am = 1, // every mode that is in no other class
        Dig = 2,
        Cw = 3,
    };

    /// Stores the mode and gives the taps of its class.
    int setModulation(DspCore::Modulation modulation);

    /// Stores the taps of a class, limited to 200..8000. Gives them if they act now: in the class
    /// of the mode in force, and for AM always.
    std::optional<int> set(Class modes, int taps);

private:
    static constexpr int kFirst = 1537;

    Class m_current = Am;
    std::array<int, 4> m_taps{kFirst, kFirst, kFirst, kFirst};
};
