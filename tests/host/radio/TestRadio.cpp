// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestRadio.h"

#include "settings/CommandLine.h"

#include "support/Signals.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QLoggingCategory>
#include <QTimer>

#include <cmath>
#include <gtest/gtest.h>

namespace test
{
namespace
{
constexpr int kStartMs = 10000; // a busy machine
constexpr int kRateHz = host::AudioOutlet::kRateHz;
} // namespace

void serve(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

TestRadio::TestRadio(const QByteArray &band)
{
    QLoggingCategory::setFilterRules("*.debug=false"); // a line for each block of audio
    QFile file(path("test.band"));
    if (file.open(QIODevice::WriteOnly))
        file.write(band);
}

bool TestRadio::start(const QStringList &options)
{
    const auto command = host::readCommandLine(
        QStringList{"velmora-host", "--headless", "--plugin", PLUGIN_FILE, "--d2xx", VIRTUAL_D2XX,
            "--settings", path("settings.ini"), "--scene", path("test.band")}
        + options);
    m_radio = std::make_unique<host::Radio>();
    if (!m_radio->load(std::get<host::HostSettings>(command)))
        return false;
    m_radio->setPower(true);
    QElapsedTimer clock;
    for (clock.start(); m_radio->state() != host::Radio::State::Receiving; serve(10))
        if (clock.hasExpired(kStartMs))
            return false;
    return true;
}

bool TestRadio::restart(const QStringList &options)
{
    m_radio.reset();
    return start(options);
}

std::size_t TestRadio::pull(float *interleaved, std::size_t frames)
{
    return m_source ? m_source->pull(interleaved, frames)
                    : m_radio->audio().pull(interleaved, frames);
}

std::vector<COMPLEX> TestRadio::listen(double seconds, int skipMs)
{
    const std::size_t skipped = std::size_t(skipMs) * kRateHz / 1000;
    const std::size_t wanted = skipped + std::size_t(seconds * kRateHz);
    std::vector<float> pulled(2 * host::AudioOutlet::kCapacity);
    // What waits is older than the change.
    while (pull(pulled.data(), host::AudioOutlet::kCapacity) > 0) { }
    std::vector<COMPLEX> audio;
    QElapsedTimer clock;
    for (clock.start(); audio.size() < wanted && !clock.hasExpired(kStartMs); serve(5)) {
        const std::size_t frames = pull(pulled.data(), host::AudioOutlet::kCapacity);
        for (std::size_t i = 0; i < frames; ++i)
            audio.push_back({pulled[2 * i], pulled[2 * i + 1]});
    }
    if (audio.size() < wanted)
        return {};
    audio.erase(audio.begin(), audio.begin() + std::ptrdiff_t(skipped));
    audio.resize(std::size_t(seconds * kRateHz));
    return audio;
}

double TestRadio::toneDb(double hertz, int skipMs)
{
    std::vector<COMPLEX> audio = listen(0.2, skipMs);
    if (audio.empty()) {
        ADD_FAILURE() << "no audio";
        return 0.0;
    }
    for (COMPLEX &sample : audio)
        sample.im = 0.0;
    return decibels(2.0 * magnitude(component(audio, hertz / kRateHz)));
}
} // namespace test
