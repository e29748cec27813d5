// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/ReceiverControls.h"

#include "library/D2xxLibrary.h"

#include <type_traits>

namespace host
{
std::optional<ReceiverControls> ReceiverControls::of(const D2xxLibrary &library)
{
    ReceiverControls receiver;
    bool complete = true;
    const auto find = [&](auto &function, const char *name) {
        function =
            reinterpret_cast<std::remove_reference_t<decltype(function)>>(library.function(name));
        complete = complete && function != nullptr;
    };
    find(receiver.reset, "vr_reset");
    find(receiver.sceneBuiltin, "vr_scene_builtin");
    find(receiver.sceneFile, "vr_scene_file");
    find(receiver.sceneNotice, "vr_scene_notice");
    find(receiver.sceneBand, "vr_scene_band");
    find(receiver.sceneFrequency, "vr_scene_frequency");
    find(receiver.sceneWidth, "vr_scene_width");
    find(receiver.sceneSeconds, "vr_scene_seconds");
    find(receiver.sceneSeek, "vr_scene_seek");
    find(receiver.scenePosition, "vr_scene_position");
    find(receiver.sceneLoop, "vr_scene_loop");
    find(receiver.scenePause, "vr_scene_pause");
    find(receiver.setPace, "vr_set_pace");
    find(receiver.addCredit, "vr_add_credit");
    find(receiver.setEeprom, "vr_set_eeprom");
    find(receiver.fault, "vr_fault");
    find(receiver.getStatus, "vr_get_status");
    find(receiver.forgetCalls, "vr_forget_calls");
    find(receiver.lastError, "vr_last_error");
    return complete ? std::optional(receiver) : std::nullopt;
}
} // namespace host
