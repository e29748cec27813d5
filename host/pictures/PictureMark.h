// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace host
{
/// What a picture points out beside the data.
struct PictureMark
{
    enum class Kind {
        Station,
        Notch,
    };
    double frequencyHz = 0.0;
    QString label;
    Kind kind = Kind::Station;
};

/// A shaded part of the spectrum, such as the pass band of a filter.
struct PictureBand
{
    double lowHz = 0.0;
    double highHz = 0.0;
};
} // namespace host
