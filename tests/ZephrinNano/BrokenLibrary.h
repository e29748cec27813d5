// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>

namespace test
{
/// Makes the D2XX library of this program tell nonsense, or take its time. The calls that are not
/// touched go through. Healthy again at the end of its life; one at a time.
struct BrokenLibrary
{
    ~BrokenLibrary() { devices = userArea = listHeld = 0; }

    static inline std::atomic<unsigned> devices = 0;  ///< how many it counts; 0: the truth
    static inline std::atomic<unsigned> userArea = 0; ///< its size in bytes; 0: the truth
    static inline std::atomic<unsigned> listHeld = 0; ///< 1: the list is not answered
};
} // namespace test
