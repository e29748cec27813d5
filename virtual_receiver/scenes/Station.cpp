// SPDX-License-Identifier: GPL-3.0-or-later
#include "Station.h"

#include "AmModulator.h"
#include "CwModulator.h"
#include "NfmModulator.h"
#include "SsbModulator.h"

#include <cmath>

namespace vr
{
namespace
{
// From 12 kHz, the widest a station is, to 36 kHz, where its first image begins.
constexpr double kTransition = 0.5;

std::unique_ptr<Modulator> makeModulator(const StationDescription &station)
{
    if (station.mode == StationMode::Carrier)
        return nullptr;
    AudioLoop audio(station.clip, station.startSeconds, station.pauseSeconds, station.repeat);
    switch (station.mode) {
    case StationMode::Am:
        return std::make_unique<AmModulator>(std::move(audio), station.depth);
    case StationMode::Nfm:
        return std::make_unique<NfmModulator>(std::move(audio), station.deviationHz);
    case StationMode::Cw:
        return std::make_unique<CwModulator>(std::move(audio));
    default:
        return std::make_unique<SsbModulator>(
            std::move(audio), station.clip->activeRms, station.mode == StationMode::Usb);
    }
}
} // namespace

Station::Station(const StationDescription &description)
    : m_frequencyHz(description.frequencyHz),
      m_amplitude(std::pow(10.0, description.levelDb / 20.0)),
      m_modulator(makeModulator(description))
{ }

void Station::start(double rateHz, double tunedHz)
{
    m_rateHz = rateHz;
    m_mixer.reset();
    if (m_modulator) {
        m_modulator->rewind();
        m_resampler.init(kAudioRateHz, rateHz, kTransition);
    }
    retune(tunedHz);
}

void Station::retune(double tunedHz)
{
    const double offsetHz = m_frequencyHz - tunedHz;
    m_inBand = std::fabs(offsetHz) <= m_rateHz / 2.0;
    m_mixer.setFrequency(offsetHz / m_rateHz);
}

void Station::add(Sample *out, std::size_t count)
{
    if (!m_modulator) {
        if (m_inBand)
            m_mixer.addTone(m_amplitude, out, count);
        return;
    }
    m_baseband.resize(m_resampler.needed(count));
    m_modulator->make(m_baseband.data(), m_baseband.size());
    m_resampler.push(m_baseband.data(), m_baseband.size());
    if (!m_inBand) {
        m_resampler.skip(count);
        return;
    }
    m_block.resize(count);
    m_resampler.pull(m_block.data(), count);
    for (Sample &sample : m_block)
        sample *= m_amplitude;
    m_mixer.add(m_block.data(), out, count);
}
} // namespace vr
