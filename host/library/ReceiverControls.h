// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "virtual_receiver/virtual_receiver.h"

#include <optional>

namespace host
{
class D2xxLibrary;

/// The virtual receiver's own functions, taken from the loaded library. Their meaning is told in
/// virtual_receiver/virtual_receiver.h; those of the list may be called from any thread.
struct ReceiverControls
{
    decltype(&vr_reset) reset = nullptr;
    decltype(&vr_scene_builtin) sceneBuiltin = nullptr;
    decltype(&vr_scene_file) sceneFile = nullptr;
    decltype(&vr_scene_notice) sceneNotice = nullptr;
    decltype(&vr_scene_band) sceneBand = nullptr;
    decltype(&vr_scene_frequency) sceneFrequency = nullptr;
    decltype(&vr_scene_width) sceneWidth = nullptr;
    decltype(&vr_scene_seconds) sceneSeconds = nullptr;
    decltype(&vr_scene_seek) sceneSeek = nullptr;
    decltype(&vr_scene_position) scenePosition = nullptr;
    decltype(&vr_scene_loop) sceneLoop = nullptr;
    decltype(&vr_scene_pause) scenePause = nullptr;
    decltype(&vr_set_pace) setPace = nullptr;
    decltype(&vr_add_credit) addCredit = nullptr;
    decltype(&vr_set_eeprom) setEeprom = nullptr;
    decltype(&vr_fault) fault = nullptr;
    decltype(&vr_get_status) getStatus = nullptr;
    decltype(&vr_forget_calls) forgetCalls = nullptr;
    decltype(&vr_last_error) lastError = nullptr;

    /// Nothing if one of them is missing: then the library drives real hardware.
    static std::optional<ReceiverControls> of(const D2xxLibrary &library);
};
} // namespace host
