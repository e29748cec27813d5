// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/ZephrinMDSP.h"

#include "signal_primitives/ipps.h"
#include "vm_library/source/log/Log.h"

#include <algorithm>

namespace
{
// Linear gain of the sound card, applied on its own thread; the taps have theirs on the way in.
constexpr float kSoundCardGain = 0.7f;

bool silence(std::vector<float> &out)
{
    std::fill(out.begin(), out.end(), 0.0f);
    return true;
}
} // namespace

bool ZephrinMDSP::soundCardIO(
    std::vector<float> &, std::vector<float> &out, unsigned long, unsigned long channels)
{
    if (stopping() || !m_soundCard.read(m_receiver.buffer(), out, channels))
        return silence(out);
    ippsMulC_32f_I(kSoundCardGain, out.data(), int(out.size()));
    return true;
}

bool ZephrinMDSP::vacIO(
    std::vector<float> &, std::vector<float> &out, unsigned long, unsigned long channels)
{
    if (stopping() || !m_vac.pull(out, channels))
        return silence(out);
    return true;
}

bool ZephrinMDSP::lineOutIO(
    std::vector<float> &, std::vector<float> &out, unsigned long, unsigned long channels)
{
    return !stopping() && m_lineOut.pull(out, channels);
}

// Called by the receiver, inside its process(), with the block that also goes to the sound card.
void ZephrinMDSP::feedSoundCard(gsl::span<COMPLEX> audio)
{
    m_audio.resize(audio.size());
    ippsConvert_64f32f(reinterpret_cast<const double *>(audio.data()),
        reinterpret_cast<float *>(m_audio.data()), 2 * int(audio.size()));
    vm::log::debug("write audio to audioServer(), ", audio.size(), " samples");
    m_bridge.audioServer()->write(int(m_audio.size()), m_audio.data());
}

void ZephrinMDSP::setLineOutEnable(bool on)
{
    Lock lock(m_mutex);
    m_lineOutEnabled = on;
    if (!on)
        return;
    m_lineOut.clearRing();
    m_receiver.lineout().clear();
}

void ZephrinMDSP::lineoutOpen()
{
    setLineOutEnable(true);
}

void ZephrinMDSP::lineoutClose()
{
    setLineOutEnable(false);
}

void ZephrinMDSP::setLineOutSampleRate(double rate)
{
    Lock lock(m_mutex);
    m_lineOutRate = rate;
    m_lineOut.setSampleRates(m_soundCardRate, rate);
}

void ZephrinMDSP::vacOpen()
{
    Lock lock(m_mutex);
    m_vacEnabled = true;
    m_vac.clearRing();
    m_receiver.vac().clear();
}

void ZephrinMDSP::vacClose()
{
    Lock lock(m_mutex);
    m_vacEnabled = false;
}

void ZephrinMDSP::setVacSampleRate(double rate)
{
    Lock lock(m_mutex);
    m_vacRate = rate;
    m_vac.setSampleRates(m_soundCardRate, rate);
}
