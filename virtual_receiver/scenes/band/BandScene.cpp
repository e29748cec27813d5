// SPDX-License-Identifier: GPL-3.0-or-later
#include "BandScene.h"

#include <algorithm>
#include <cmath>

namespace vr
{
namespace
{
constexpr std::size_t kBlock = 1024; // samples of all stations that fit the cache together
constexpr double kStationHz = 12e3;  // the most that a station takes to either side
} // namespace

BandScene::BandScene(const BandDescription &band)
    : m_centreHz(band.centreHz),
      m_noiseDensity(band.noiseDb ? std::pow(10.0, *band.noiseDb / 10.0) : 0.0),
      m_seconds(band.seconds), m_seed(band.seed)
{
    for (const StationDescription &station : band.stations) {
        m_stations.push_back(std::make_unique<Station>(station));
        const double edgeHz = std::abs(station.frequencyHz - m_centreHz) + kStationHz;
        m_widthHz = std::max(m_widthHz, 2.0 * edgeHz);
    }
}

void BandScene::start(double rateHz, double tunedHz)
{
    m_noise.setSigma(std::sqrt(m_noiseDensity * rateHz / 2.0)); // half the power in each component
    m_noise.seed(m_seed);
    m_rendered = 0;
    m_length = std::uint64_t(std::ceil(m_seconds * rateHz));
    for (const auto &station : m_stations)
        station->start(rateHz, tunedHz);
}

void BandScene::retune(double tunedHz)
{
    for (const auto &station : m_stations)
        station->retune(tunedHz);
}

void BandScene::render(Sample *out, std::size_t count)
{
    std::fill_n(out, count, Sample());
    std::size_t live = count;
    if (m_length > 0)
        live =
            std::size_t(std::min<std::uint64_t>(count, m_length - std::min(m_length, m_rendered)));
    for (std::size_t done = 0; done < live; done += kBlock)
        renderBlock(out + done, std::min(kBlock, live - done));
    m_rendered += count;
}

void BandScene::renderBlock(Sample *out, std::size_t count)
{
    if (m_noiseDensity > 0.0)
        m_noise.add(out, count);
    for (const auto &station : m_stations)
        station->add(out, count);
}
} // namespace vr
