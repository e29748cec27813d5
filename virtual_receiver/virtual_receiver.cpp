// SPDX-License-Identifier: GPL-3.0-or-later
// The vr_ functions: how a test or a host sets the device up and looks into it.
#pragma GCC visibility push(default)
#include "virtual_receiver.h"
#pragma GCC visibility pop

#include "VirtualDevice.h"
#include "scenes/SceneLimits.h"
#include "scenes/band/BandFile.h"
#include "scenes/band/BuiltinScene.h"
#include "scenes/recordings/FileSource.h"
#include "scenes/recordings/MemorySource.h"
#include "scenes/recordings/RecordedScene.h"

#include <algorithm>
#include <new>
#include <type_traits>

namespace
{
thread_local std::string lastError;
thread_local std::string lastNotice;

vr::VirtualDevice &device()
{
    return vr::VirtualDevice::instance();
}

/// Every function runs in here, for its caller may be C: what is thrown becomes a reason in
/// vr_last_error() and the value that tells of a failure.
template <typename Body>
auto guarded(std::invoke_result_t<Body> failed, Body body) noexcept
{
    try {
        return body();
    } catch (const std::bad_alloc &) {
        lastError = "no memory"; // short enough to need none
    } catch (const std::exception &problem) {
        lastError = problem.what();
    }
    return failed;
}

/// The same for what returns nothing.
template <typename Body>
void guarded(Body body) noexcept
{
    guarded(0, [&] {
        body();
        return 0;
    });
}

/// The same for what is asked to set something: set(error) is false with a reason in error.
template <typename Set>
int result(Set set) noexcept
{
    return guarded(-1, [&] {
        std::string error;
        if (set(error))
            return 0;
        lastError = error;
        return -1;
    });
}

std::size_t copyOut(const std::vector<std::uint8_t> &from, std::uint8_t *to, std::size_t capacity)
{
    std::copy_n(from.begin(), std::min(from.size(), capacity), to);
    return from.size();
}
} // namespace

void vr_reset(void)
{
    guarded([] { device().reset(); });
}

int vr_scene_builtin(void)
{
    return result([](std::string &) {
        device().setScene(vr::makeBuiltinScene());
        return true;
    });
}

int vr_scene_samples(
    const double *iq, std::size_t samples, double rate_hz, double frequency_hz, int repeat)
{
    return result([&](std::string &error) {
        std::string wrong = !iq || samples == 0 ? "no samples" : vr::wrongRate(rate_hz);
        if (wrong.empty())
            wrong = vr::wrongFrequency(frequency_hz);
        if (!wrong.empty()) {
            error = "scene from memory: " + wrong;
            return false;
        }
        const auto *first = reinterpret_cast<const vr::Sample *>(iq);
        auto source = std::make_unique<vr::MemorySource>(
            std::vector<vr::Sample>(first, first + samples), rate_hz, frequency_hz);
        device().setScene(std::make_shared<vr::RecordedScene>(std::move(source), repeat != 0));
        return true;
    });
}

int vr_scene_file(const char *path, const char *format, double rate_hz, double frequency_hz)
{
    return result([&](std::string &error) {
        error = "recording: no file name";
        auto source = path
            ? vr::FileSource::open(path, format ? format : "", rate_hz, frequency_hz, error)
            : nullptr;
        if (!source)
            return false;
        lastNotice = source->notice();
        device().setScene(std::make_shared<vr::RecordedScene>(std::move(source), /*repeat*/ false));
        return true;
    });
}

int vr_scene_band(const char *path)
{
    return result([&](std::string &error) {
        error = "band: no file name";
        const std::shared_ptr<vr::Scene> scene = path ? vr::loadBandScene(path, error) : nullptr;
        if (scene)
            device().setScene(scene);
        return scene != nullptr;
    });
}

const char *vr_scene_notice(void)
{
    return lastNotice.c_str();
}

double vr_scene_frequency(void)
{
    return guarded(0.0, [] { return device().sceneFrequencyHz(); });
}

double vr_scene_width(void)
{
    return device().sceneWidthHz();
}

double vr_scene_seconds(void)
{
    return guarded(0.0, [] { return device().sceneSeconds(); });
}

int vr_scene_seek(double seconds)
{
    return result([=](std::string &error) { return device().seekScene(seconds, error); });
}

double vr_scene_position(void)
{
    return guarded(0.0, [] { return device().scenePosition(); });
}

void vr_scene_loop(int loop)
{
    guarded([=] { device().loopScene(loop != 0); });
}

void vr_scene_pause(int pause)
{
    guarded([=] { device().pauseScene(pause != 0); });
}

void vr_set_pace(enum vr_pace pace)
{
    using vr::Pace;
    guarded([=] {
        device().setPace(pace == VR_PACE_CREDIT ? Pace::Credit
                : pace == VR_PACE_FREE          ? Pace::Free
                                                : Pace::RealTime);
    });
}

void vr_add_credit(std::uint64_t samples)
{
    guarded([=] { device().addCredit(samples); });
}

int vr_set_eeprom(const char *path)
{
    return result(
        [=](std::string &error) { return device().useEepromFile(path ? path : "", error); });
}

std::size_t vr_get_eeprom(std::uint8_t *bytes, std::size_t capacity)
{
    return guarded(0, [=] { return copyOut(device().eeprom(), bytes, capacity); });
}

int vr_put_eeprom(const std::uint8_t *bytes, std::size_t size)
{
    return result([=](std::string &error) { return device().putEeprom(bytes, size, error); });
}

int vr_fault(const char *spec)
{
    return result([=](std::string &error) {
        error = "fault: no text given";
        return spec && device().addFaults(spec, error);
    });
}

void vr_set_plugged(int plugged)
{
    guarded([=] { device().setPlugged(plugged != 0); });
}

void vr_set_foreign_devices(unsigned count)
{
    guarded([=] { device().setForeignDevices(count); });
}

void vr_get_status(struct vr_status *status)
{
    guarded([=] { *status = device().status(); });
}

std::size_t vr_get_commands(std::uint8_t *bytes, std::size_t capacity)
{
    constexpr std::size_t kSize = vr::CommandPacket::kSize;
    return guarded(
        0, [=] { return copyOut(device().commands(), bytes, capacity * kSize) / kSize; });
}

const char *vr_get_calls(void)
{
    static thread_local std::string calls;
    return guarded("", [] {
        calls = device().calls();
        return calls.c_str();
    });
}

void vr_forget_calls(void)
{
    guarded([] { device().forgetCalls(); });
}

const char *vr_last_error(void)
{
    return lastError.c_str();
}
