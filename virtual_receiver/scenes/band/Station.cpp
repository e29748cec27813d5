// SPDX-License-Identifier: GPL-3.0-or-later
#include "Station.h"

#include "StationKind.h"

#include <cmath>

namespace vr
{
namespace
{
// From 12 kHz, the widest a station is, to 36 kHz, where its first image begins.
constexpr double kTransition = 0.5;

std::unique_ptr<Modulator> makeModulator(const StationDescription &station)
{
    if (!station.kind->modulator)
        return nullptr;
    return station.kind->modulator(station,
        AudioLoop(station.clip, station.startSeconds, station.pauseSeconds, station.repeat));
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
        m_rateConverter.init(kAudioRateHz, rateHz, kTransition);
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
    m_baseband.resize(m_rateConverter.needed(count));
    m_modulator->make(m_baseband.data(), m_baseband.size());
    m_rateConverter.push(m_baseband.data(), m_baseband.size());
    if (!m_inBand) {
        m_rateConverter.skip(count);
        return;
    }
    m_block.resize(count);
    m_rateConverter.pull(m_block.data(), count);
    for (Sample &sample : m_block)
        sample *= m_amplitude;
    m_mixer.add(m_block.data(), out, count);
}
} // namespace vr
