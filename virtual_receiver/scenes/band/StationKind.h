// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AudioLoop.h"
#include "BandDescription.h"
#include "Modulator.h"

#include <memory>
#include <string>
#include <string_view>

namespace vr
{
/// What a station sends besides its carrier.
enum class Programme {
    None,   ///< nothing
    Audio,  ///< a sound file, tones or a synthetic voice
    Keying, ///< a text in Morse code
};

/// A kind of station. All kinds are rows of one table, from which bands are read and played and
/// messages are made; docs/scenes.md tells how to add one.
struct StationKind
{
    /// The key of a band file that this kind alone has; name is null without one.
    struct OwnKey
    {
        const char *name = nullptr;
        double StationDescription::*value = nullptr;
        double low = 0.0;
        double high = 0.0;
    };

    const char *name; ///< as in mode=usb
    Programme programme;

    /// Makes the signal from the programme; null for a plain carrier.
    std::unique_ptr<Modulator> (*modulator)(const StationDescription &, AudioLoop programme);

    OwnKey ownKey = {};

    /// Null if there is no such kind.
    static const StationKind *find(std::string_view name);

    /// All names in the order of the table.
    static std::string names(const char *separator);
};
} // namespace vr
