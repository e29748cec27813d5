// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

namespace host
{
/// How far a knob moves what it is mapped to.
class KnobValue
{
public:
    virtual ~KnobValue() = default;

    /// Steps for so many clicks of the knob, to the right above 0, at a time in microseconds of a
    /// clock that does not go back.
    virtual int steps(int clicks, qint64 timeUs) = 0;
};
} // namespace host
