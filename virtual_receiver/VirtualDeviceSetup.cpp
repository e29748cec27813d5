// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the device that no receiver has: what the vr_ functions set and ask.
#include "VirtualDevice.h"

#include "scenes/BuiltinScene.h"

#include <algorithm>

namespace vr
{
void VirtualDevice::reset()
{
    Lock lock(m_mutex);
    m_handle = nullptr;
    m_deadHandles.clear();
    m_plugged = true;
    m_foreignDevices = 0;
    powerOn();
    m_badBytes = 0;
    m_clock = StreamClock();
    m_skip = 0;
    ++m_run;
    m_scene = makeBuiltinScene();
    m_eeprom = Eeprom();
    m_faults.clear();
    m_calls.clear();
    m_commands.clear();
    m_commandCount = 0;
    m_reads = m_framesSent = m_samplesSent = m_shortReads = m_overruns = m_clipped = 0;
    m_sceneEnded = false;
    m_changed.notify_all();
}

void VirtualDevice::setScene(std::shared_ptr<Scene> scene)
{
    Lock lock(m_mutex);
    m_scene = std::move(scene);
    m_sceneEnded = false;
    ++m_run;
}

double VirtualDevice::sceneSeconds() const
{
    Lock lock(m_mutex);
    return m_scene->seconds();
}

double VirtualDevice::sceneFrequencyHz() const
{
    Lock lock(m_mutex);
    return m_scene->frequencyHz();
}

void VirtualDevice::setPace(Pace pace)
{
    Lock lock(m_mutex);
    m_clock.setPace(pace, std::chrono::steady_clock::now());
    m_changed.notify_all();
}

void VirtualDevice::addCredit(std::uint64_t samples)
{
    Lock lock(m_mutex);
    m_clock.addCredit(samples);
    m_changed.notify_all();
}

bool VirtualDevice::useEepromFile(const std::string &path, std::string &error)
{
    Lock lock(m_mutex);
    return m_eeprom.useFile(path, error);
}

bool VirtualDevice::putEeprom(const std::uint8_t *bytes, std::size_t size, std::string &error)
{
    Lock lock(m_mutex);
    return m_eeprom.replace(bytes, size, error);
}

std::vector<std::uint8_t> VirtualDevice::eeprom() const
{
    Lock lock(m_mutex);
    return m_eeprom.bytes();
}

bool VirtualDevice::addFaults(const std::string &list, std::string &error)
{
    Lock lock(m_mutex);
    return m_faults.add(list, error);
}

void VirtualDevice::setPlugged(bool plugged)
{
    Lock lock(m_mutex);
    plug(plugged);
}

void VirtualDevice::setForeignDevices(unsigned count)
{
    Lock lock(m_mutex);
    m_foreignDevices = count;
}

vr_status VirtualDevice::status()
{
    Lock lock(m_mutex);
    runPlugFaults();
    countOverruns(std::chrono::steady_clock::now());
    vr_status status = {};
    status.frequency_word = m_state.frequencyWord();
    status.frequency_hz = m_state.frequencyHz();
    status.state_word = m_state.stateWord();
    status.attenuator = m_state.attenuator();
    std::copy(m_state.adcRegisters().begin(), m_state.adcRegisters().end(), status.adc_registers);
    status.open = m_handle != nullptr;
    status.streaming = m_state.streaming();
    status.sample_rate_hz = m_state.sampleRateHz();
    status.commands = m_commandCount;
    status.bad_bytes = m_badBytes + m_parser.badBytes();
    status.frames_sent = m_framesSent;
    status.samples_sent = m_samplesSent;
    status.short_reads = m_shortReads;
    status.fifo_overruns = m_overruns;
    status.clipped_samples = m_clipped;
    status.scene_ended = m_sceneEnded;
    status.reads = m_reads;
    return status;
}

std::vector<std::uint8_t> VirtualDevice::commands() const
{
    Lock lock(m_mutex);
    return m_commands;
}

std::string VirtualDevice::calls() const
{
    Lock lock(m_mutex);
    return m_calls.text();
}
} // namespace vr
