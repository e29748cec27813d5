// SPDX-License-Identifier: GPL-3.0-or-later
// Texts that describe a band.
#include "FuzzInput.h"
#include "scenes/band/BandFile.h"
#include "scenes/band/BandScene.h"

#include <cmath>
#include <functional>
#include <sstream>

namespace
{
using fuzz::require;

constexpr std::size_t kSamples = 64;

/// What takes its time and has little to do with the text: speech is made in a second, audio comes
/// from files, and ten seconds of a tone or of slow morse take tens of milliseconds, so of the
/// texts with these one in 32 is tried.
bool isCostly(std::string_view text)
{
    const auto has = [text](const char *word) { return text.find(word) != text.npos; };
    return has("speech") || has("audio")
        || ((has("tone") || has("wpm")) && std::hash<std::string_view>()(text) % 32 != 0);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    fuzz::Input input(data, size);
    const std::string text(input.text());
    if (isCostly(text))
        return 0;
    std::istringstream stream(text);
    std::string error;
    const auto band = vr::readBand(stream, "band", "/", error);
    require(band.has_value() == error.empty(), "a refusal has a reason");
    if (!band || band->stations.size() > 1)
        return 0;
    vr::BandScene scene(*band);
    vr::Sample samples[kSamples];
    scene.start(48000.0, band->centreHz);
    scene.render(samples, kSamples);
    for (const vr::Sample &sample : samples)
        require(std::isfinite(sample.real()) && std::isfinite(sample.imag()),
            "a band is made of numbers");
    return 0;
}
