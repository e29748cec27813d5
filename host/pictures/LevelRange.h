// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

namespace host
{
/// The levels between which a picture is drawn, in decibels.
struct LevelRange
{
    double lowDb = -140.0;
    double highDb = 0.0;

    bool operator==(const LevelRange &) const = default;

    /// Whole tens of decibels, at least 30 dB apart, that hold the given shares of the levels
    /// (0..1, low below high) with 3 dB to spare. Levels that are not finite count for nothing; the
    /// defaults above if there are no others.
    static LevelRange holding(std::vector<float> levels, double lowShare, double highShare);

    /// Height of a level, 0 at the bottom to 1 at the top. Above and below the range it stays
    /// there, and what is not a number is at the bottom.
    double heightOf(double levelDb) const
    {
        if (!(levelDb > lowDb))
            return 0.0;
        return levelDb < highDb ? (levelDb - lowDb) / (highDb - lowDb) : 1.0;
    }
};
} // namespace host
