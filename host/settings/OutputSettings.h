// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/file/IQFile.h"

#include <QString>

#include <optional>

namespace host
{
/// The spectrum of the received band and what becomes of it. What is empty stays as the receiver
/// has it.
struct SpectrumSettings
{
    std::optional<int> fftSize;       ///< points; the receiver takes the next power of two
    std::optional<int> averaging;     ///< lines
    std::optional<int> averagingType; ///< into kAveragingNames
    std::optional<int> intervalMs;    ///< between lines
    bool hideSlopes = false;          ///< leave out the slopes of the receiver's input filter
    bool waterfallFilter = false;

    QString panoramaFile; ///< PNG; empty: none
    QString waterfallFile;
    QString audioSpectrumFile;

    bool isWanted() const { return !panoramaFile.isEmpty() || !waterfallFile.isEmpty(); }
};

inline constexpr const char *kAveragingNames[] = {"linear", "rms", "exp"};

/// The IQ stream on disk, by the receiver's own recorder.
struct RecordingSettings
{
    std::optional<vm::file::IQFile::Format> format; ///< empty: no recording
    QString folder = ".";

    bool isOn() const { return format.has_value(); }
};

/// An outlet beside the sound card, and where its audio goes.
struct OutletSettings
{
    QString file; ///< WAV; empty: the outlet stays closed
    int rateHz = 48000;

    bool isOn() const { return !file.isEmpty(); }
};
} // namespace host
