// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "BandDescription.h"
#include "NoiseGenerator.h"
#include "Station.h"
#include "scenes/Scene.h"

#include <memory>
#include <vector>

namespace vr
{
/// A band of stations over a noise floor, made at the device's rate.
class BandScene : public Scene
{
public:
    explicit BandScene(const BandDescription &band);

    void start(double rateHz, double tunedHz) override;
    void retune(double tunedHz) override;
    void render(Sample *out, std::size_t count) override;
    bool ended() const override { return m_length > 0 && m_rendered >= m_length; }
    double frequencyHz() const override { return m_centreHz; }
    double widthHz() const override { return m_widthHz; }
    double seconds() const override { return m_seconds; }

private:
    void renderBlock(Sample *out, std::size_t count);

    double m_centreHz;
    double m_widthHz = 0.0;
    double m_noiseDensity; // power in one hertz, 0 without noise
    double m_seconds;
    std::uint64_t m_seed;
    std::vector<std::unique_ptr<Station>> m_stations;
    NoiseGenerator m_noise;
    std::uint64_t m_rendered = 0; // samples
    std::uint64_t m_length = 0;   // samples, 0: never ends
};
} // namespace vr
