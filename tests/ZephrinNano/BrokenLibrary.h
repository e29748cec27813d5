// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace test
{
/// Makes the D2XX library of this program tell nonsense, or take its time. The calls that are not
/// touched go through. Healthy again at the end of its life; one at a time.
class BrokenLibrary
{
public:
    BrokenLibrary() = default;
    ~BrokenLibrary();
    BrokenLibrary(const BrokenLibrary &) = delete;
    BrokenLibrary &operator=(const BrokenLibrary &) = delete;

    /// 0: the truth.
    void countDevices(unsigned count);
    void sizeUserArea(unsigned bytes);

    /// The list of devices is not answered before it is let go.
    void holdList(bool hold);
};
} // namespace test
