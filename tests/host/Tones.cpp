// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tones.h"

#include "support/Signals.h"

#include <cmath>
#include <gtest/gtest.h>

namespace test
{
std::vector<COMPLEX> carrier(double offsetHz, double amplitude)
{
    return tone(2 * kSceneRateHz, offsetHz / kSceneRateHz, amplitude);
}

void startReception(
    HostProcess &host, const std::vector<COMPLEX> &iq, const QString &options, int rateHz)
{
    host.start(QString("--scene %1 --scene-rate %2 --scene-frequency 14M --rate %2 --free-run "
                       "--out a.wav --report r.json ")
                   .arg(host.writeScene(iq))
                   .arg(rateHz)
        + options);
}

void receive(HostProcess &host, const std::vector<COMPLEX> &iq, const QString &options)
{
    startReception(host, iq, options);
    host.wait();
    ASSERT_EQ(host.status(), 0) << qPrintable(host.errors());
}

std::vector<COMPLEX> settledLeft(const std::vector<COMPLEX> &audio)
{
    std::vector<COMPLEX> left;
    for (std::size_t i = audio.size() / 2; i < audio.size(); ++i)
        left.push_back({audio[i].re, 0.0});
    return left;
}

double purity(const std::vector<COMPLEX> &signal, double frequencyHz, double rateHz)
{
    const double amplitude = 2.0 * magnitude(component(signal, frequencyHz / rateHz));
    return amplitude / (rms(signal) * std::sqrt(2.0));
}

double levelAt(const std::vector<COMPLEX> &signal, double frequencyHz)
{
    return 2.0 * magnitude(component(signal, frequencyHz / kAudioRateHz));
}
} // namespace test
