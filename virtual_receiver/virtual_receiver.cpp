// SPDX-License-Identifier: GPL-3.0-or-later
// The vr_ functions: how a test or a host sets the device up and looks into it.
#pragma GCC visibility push(default)
#include "virtual_receiver.h"
#pragma GCC visibility pop

#include "VirtualDevice.h"
#include "scenes/BandFile.h"
#include "scenes/BuiltinScene.h"
#include "scenes/FileSource.h"
#include "scenes/MemorySource.h"
#include "scenes/RecordedScene.h"

#include <algorithm>

namespace
{
thread_local std::string lastError;
thread_local std::string lastNotice;

vr::VirtualDevice &device()
{
    return vr::VirtualDevice::instance();
}

int result(bool good, const std::string &error)
{
    if (good)
        return 0;
    lastError = error;
    return -1;
}

std::size_t copyOut(const std::vector<std::uint8_t> &from, std::uint8_t *to, std::size_t capacity)
{
    std::copy_n(from.begin(), std::min(from.size(), capacity), to);
    return from.size();
}
} // namespace

void vr_reset(void)
{
    device().reset();
}

int vr_scene_builtin(void)
{
    device().setScene(vr::makeBuiltinScene());
    return 0;
}

int vr_scene_samples(
    const double *iq, std::size_t samples, double rate_hz, double frequency_hz, int repeat)
{
    if (!iq || samples == 0)
        return result(false, "scene from memory: no samples");
    if (!(rate_hz > 0.0))
        return result(false, "scene from memory: a sample rate above 0 is needed");
    const auto *first = reinterpret_cast<const vr::Sample *>(iq);
    auto source = std::make_unique<vr::MemorySource>(
        std::vector<vr::Sample>(first, first + samples), rate_hz, frequency_hz);
    device().setScene(std::make_shared<vr::RecordedScene>(std::move(source), repeat != 0));
    return 0;
}

int vr_scene_file(const char *path, const char *format, double rate_hz, double frequency_hz)
{
    std::string error = "recording: no file name";
    auto source = path
        ? vr::FileSource::open(path, format ? format : "", rate_hz, frequency_hz, error)
        : nullptr;
    if (!source)
        return result(false, error);
    lastNotice = source->notice();
    device().setScene(std::make_shared<vr::RecordedScene>(std::move(source), /*repeat*/ false));
    return 0;
}

int vr_scene_band(const char *path)
{
    std::string error = "band: no file name";
    std::shared_ptr<vr::Scene> scene = path ? vr::loadBandScene(path, error) : nullptr;
    if (!scene)
        return result(false, error);
    device().setScene(scene);
    return 0;
}

const char *vr_scene_notice(void)
{
    return lastNotice.c_str();
}

double vr_scene_frequency(void)
{
    return device().sceneFrequencyHz();
}

double vr_scene_seconds(void)
{
    return device().sceneSeconds();
}

void vr_set_pace(enum vr_pace pace)
{
    using vr::Pace;
    device().setPace(pace == VR_PACE_CREDIT ? Pace::Credit
            : pace == VR_PACE_FREE          ? Pace::Free
                                            : Pace::RealTime);
}

void vr_add_credit(std::uint64_t samples)
{
    device().addCredit(samples);
}

int vr_set_eeprom(const char *path)
{
    std::string error;
    return result(device().useEepromFile(path ? path : "", error), error);
}

std::size_t vr_get_eeprom(std::uint8_t *bytes, std::size_t capacity)
{
    return copyOut(device().eeprom(), bytes, capacity);
}

int vr_put_eeprom(const std::uint8_t *bytes, std::size_t size)
{
    std::string error;
    return result(device().putEeprom(bytes, size, error), error);
}

int vr_fault(const char *spec)
{
    std::string error = "fault: no text given";
    return result(spec && device().addFaults(spec, error), error);
}

void vr_set_plugged(int plugged)
{
    device().setPlugged(plugged != 0);
}

void vr_set_foreign_devices(unsigned count)
{
    device().setForeignDevices(count);
}

void vr_get_status(struct vr_status *status)
{
    *status = device().status();
}

std::size_t vr_get_commands(std::uint8_t *bytes, std::size_t capacity)
{
    constexpr std::size_t kSize = vr::CommandPacket::kSize;
    return copyOut(device().commands(), bytes, capacity * kSize) / kSize;
}

const char *vr_get_calls(void)
{
    static thread_local std::string calls;
    calls = device().calls();
    return calls.c_str();
}

const char *vr_last_error(void)
{
    return lastError.c_str();
}
