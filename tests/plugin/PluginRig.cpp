// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginRig.h"

#include "support/Signals.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QSettings>
#include <QTemporaryDir>

#include <malloc.h>
#include <stdexcept>

namespace test
{
PluginRig::PluginRig()
{
    // The engine tells of every block it hands out, and filters of every set-up.
    QLoggingCategory::setFilterRules("default.debug=false\ndefault.warning=false");
    vr_reset();
}

void PluginRig::prepare(const QVariantMap &settings)
{
    init();
    readSettings(settings);
    if (!waitForReceiver())
        throw std::runtime_error("no receiver");
}

void PluginRig::start(const QVariantMap &settings)
{
    prepare(settings);
    if (!device().start())
        throw std::runtime_error("start() refused");
}

void PluginRig::init(bool advanced)
{
    if (!m_plugin.init(nullptr, advanced))
        throw std::runtime_error("init() refused");
}

void PluginRig::loseHost()
{
    m_plugin.manager.reset();
    m_plugin.bridge.reset();
}

bool PluginRig::unload()
{
    m_plugin.device = nullptr;
    return m_plugin.loader.unload();
}

void PluginRig::readSettings(const QVariantMap &values)
{
    const QTemporaryDir folder;
    QSettings settings(folder.filePath("settings.ini"), QSettings::IniFormat);
    for (auto value = values.begin(); value != values.end(); ++value)
        settings.setValue("ZephrinMOptions/" + value.key(), value.value());
    device().readSettings(&settings);
}

bool PluginRig::waitForReceiver()
{
    return waitFor(
        [this] {
            const bool opened = device().open();
            device().close();
            return opened;
        },
        3000);
}

void PluginRig::chooseCarriers(const std::vector<Carrier> &carriers)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("carriers.band"));
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("no file for the band");
    file.write("band centre=7.1M noise=-160\n");
    for (const auto &[hz, levelDb] : carriers)
        file.write(QString("station mode=carrier frequency=%1 level=%2\n")
                       .arg(hz, 0, 'f', 1)
                       .arg(levelDb)
                       .toUtf8());
    file.close();
    if (vr_scene_band(QFile::encodeName(file.fileName())) != 0)
        throw std::runtime_error(vr_last_error());
    vr_set_pace(VR_PACE_CREDIT);
}

void PluginRig::tune(double centreHz, double stationHz)
{
    device().setRxFreq(0, centreHz);
    device().setDownConverter(0, 0, stationHz - centreHz);
    device().setDspMode(0, 0, DeviceFunctionsAbstract::USB);
    device().setBandFilterIf(0, 0, 200.0, 3500.0);
}

std::vector<COMPLEX> PluginRig::listen(double seconds)
{
    constexpr unsigned kBlock = 1024;
    std::vector<COMPLEX> audio;
    std::vector<float> in, out(2 * kBlock);
    CreditPump pump = makePump();
    const std::uint64_t start = m_plugin.ledger.processedSamples();
    while (double(audio.size()) < seconds * kAudioRateHz) {
        waitForAudio(kBlock, pump, start);
        bridge().soundOut()->pull(in, out, kBlock, 2);
        m_plugin.ledger.addPulled(kBlock);
        for (unsigned i = 0; i < kBlock; ++i)
            audio.push_back({double(out[2 * i]), 0.0});
    }
    return audio;
}

double PluginRig::level(const std::vector<COMPLEX> &audio, double hz)
{
    return decibels(magnitude(component(audio, hz / kAudioRateHz)) + 1e-15);
}

/// Counts from here on: what was sent before has been processed or never will be.
CreditPump PluginRig::makePump() const
{
    const std::uint64_t before = receiver().samples_sent;
    return {receiver().sample_rate_hz,
        {vr_add_credit, [this, before] { return receiver().samples_sent - before; }},
        [this](std::uint64_t frames, double share) {
            return double(m_plugin.ledger.waitingFrames() + frames)
                <= share * double(EngineLimits::kAudioRing);
        }};
}

void PluginRig::waitForAudio(std::uint64_t frames, CreditPump &pump, std::uint64_t start)
{
    constexpr int kStepMs = 1;
    while (m_plugin.ledger.readyFrames() < frames) {
        const std::uint64_t processed = m_plugin.ledger.processedSamples() - start;
        // No more than it takes: a test may change something before it listens again.
        const double missing = double(frames - m_plugin.ledger.readyFrames());
        const auto wanted = std::uint64_t(missing * receiver().sample_rate_hz / kAudioRateHz);
        while (pump.granted() < processed + wanted && pump.grant(processed)) { }
        pump.nudge(processed, pump.granted() >= processed + wanted);
        wait(kStepMs);
    }
}

vr_status PluginRig::receiver() const
{
    vr_status status{};
    vr_get_status(&status);
    return status;
}

int threadCount()
{
    return int(QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size());
}

long allocatedKiB()
{
    constexpr size_t kKiB = 1024;
    const struct mallinfo2 info = mallinfo2();
    return long((info.uordblks + info.hblkhd) / kKiB);
}
} // namespace test
