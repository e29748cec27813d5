// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/PreampControl.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace host
{
/// What came out of a run beside the sound card's audio. What is empty was not asked for.
struct OutputResults
{
    struct Preamp
    {
        double db = 0.0; ///< in the end
        std::uint64_t overflows = 0;
        std::vector<PreampControl::Step> steps; ///< of the automatic preamp
    };

    struct Recording
    {
        QString file;
        std::uint64_t samples = 0;
        std::uint64_t lostBlocks = 0; ///< of the engine, refused by the recorder
    };

    struct Outlet
    {
        std::uint64_t frames = 0;
        double rmsDbfs = 0.0;
        double peakDbfs = 0.0;
    };

    struct Spectrum
    {
        std::size_t lines = 0;
        std::size_t points = 0;
        double widthHz = 0.0;
    };

    Preamp preamp;
    std::optional<Recording> recording;
    std::optional<Outlet> vac;
    std::optional<Outlet> lineOut;
    std::optional<Spectrum> spectrum;
};
} // namespace host
