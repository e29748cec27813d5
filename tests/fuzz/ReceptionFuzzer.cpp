// SPDX-License-Identifier: GPL-3.0-or-later
// Any samples and any settings through the engine, block after block, as its thread would do it.
// Whatever comes, the listener gets samples within full scale.
#include "Dsp/ZephrinMDSP.h"
#include "FuzzInput.h"
#include "QtProgram.h"
#include "settings/ToolLimits.h"
#include "support/TestHost.h"

#include <array>
#include <cmath>
#include <random>

namespace
{
using fuzz::require;

constexpr std::size_t kBlock = EngineLimits::kBlock;
constexpr int kMostBlocks = 24; // an execution stays below some 10 ms
constexpr int kMostSteps = 64;

/// The equalizer limits nothing, and 18 bands of hundreds of decibels leave the numbers that there
/// are: without the repair `numbers` it gets what command line and window can ask for.
int equalizerDb(int value, bool isRepaired)
{
    return isRepaired ? value : value % (host::limits::kMostEqualizerDb + 1);
}

/// Its thread sleeps; the blocks are processed where they are made.
class StillEngine : public ZephrinMDSP
{
public:
    using ZephrinMDSP::ZephrinMDSP;
    ~StillEngine() override { close(); }
    void run() override { }
    void work() { ZephrinMDSP::run(); }
};

/// A filter of no width has no gain to scale and is no number, nor is one beyond half of the rate:
/// without the repair `numbers` it gets what every rate carries.
void setBandFilter(StillEngine &engine, unsigned channel, int low, int width, bool isRepaired)
{
    constexpr int kHighestEdge = 15'000; // Hz; with the width below 24 kHz, half of the lowest rate
    constexpr int kWidest = 8'000;
    if (!isRepaired) {
        low %= kHighestEdge;
        width = width % kWidest == 0 ? 1 : width % kWidest;
    }
    engine.setBandFilterIf(channel, low, low + width);
}

/// Samples as a receiver may send them: nothing above full scale.
std::vector<COMPLEX> block(fuzz::Input &input)
{
    std::vector<COMPLEX> samples(kBlock);
    const auto kind = input.take<std::uint8_t>();
    const double level = std::ldexp(1.0, -(kind >> 3));
    std::minstd_rand random(input.take<std::uint16_t>());
    const double step = double(random()) / double(std::minstd_rand::max()) * 2.0 - 1.0;
    for (std::size_t n = 0; n < kBlock; ++n) {
        const double x = double(random()) / double(std::minstd_rand::max()) * 2.0 - 1.0;
        const double phase = M_PI * step * double(n);
        switch (kind & 7) {
        case 0:
            break;
        case 1: // noise
            samples[n] = {level * x, level * (2.0 * double(random() % 1024) / 1023.0 - 1.0)};
            break;
        case 2: // a carrier
            samples[n] = {level * std::cos(phase), level * std::sin(phase)};
            break;
        case 3: // direct current
            samples[n] = {level, -level};
            break;
        case 4: // clicks
            samples[n] = {n % 61 == 0 ? level : 0.0, 0.0};
            break;
        case 5: // square, as from an overdriven input
            samples[n] = {x > 0.0 ? 1.0 : -1.0, x > 0.5 ? 1.0 : -1.0};
            break;
        case 6: // the smallest that there is
            samples[n] = {x > 0.0 ? 1e-310 : -1e-310, 0.0};
            break;
        default:
            samples[n] = {double(input.take<std::int8_t>()) / 128.0, 0.0};
        }
    }
    return samples;
}

void set(StillEngine &engine, fuzz::Input &input, bool isRepaired)
{
    const auto what = input.take<std::uint8_t>();
    const unsigned channel = input.take<std::uint8_t>() % 3;
    const int value = input.take<std::int16_t>();
    const bool on = value & 1;
    switch (what % 27) {
    case 0:
        return engine.setModulation(0, DspCore::Modulation(unsigned(value) % 11));
    case 1:
        return setBandFilter(engine, channel, value, input.take<std::int16_t>(), isRepaired);
    case 2:
        return engine.setDownConverter(channel, value * 64.0);
    case 3:
        return engine.setRit(0, channel, value);
    case 4:
        return engine.setChannelEnable(0, channel, on);
    case 5:
        return engine.setMainVolume(value / 64.0);
    case 6:
        return engine.setVolume(0, channel, value / 64.0);
    case 7:
        return engine.setBalance(0, channel, value / 64.0);
    case 8:
        return engine.setAgcMode(ZephrinMDSP::AgcMode(unsigned(value) % 8));
    case 9:
        return engine.setAgcGain(channel, value);
    case 10:
        return engine.setCwTone(value);
    case 11:
        return engine.setNb1(0, on);
    case 12:
        return engine.setNb2(0, on);
    case 13:
        return engine.setNr(0, on);
    case 14:
        return engine.setAnf(0, on);
    case 15:
        return engine.setBin(0, on);
    case 16:
        return engine.setEqualizerEnable(0, on);
    case 17:
        return engine.setEqualizerGains(
            0, QVector<int>(value % 20 == 0 ? 17 : 18, equalizerDb(value, isRepaired)));
    case 18:
        return engine.setSqlEnable(0, channel, on);
    case 19:
        return engine.setSqlValue(0, channel, value);
    case 20:
        return engine.setEnableCTCSS(0, on);
    case 21:
        return engine.setToneCTCSS(0, value);
    case 22:
        return engine.setWfmStereo(0, on);
    case 23:
        return engine.setLineOutEnable(on);
    case 24:
        return engine.setSpectrumAveraging(unsigned(value) % 64);
    case 25:
        return engine.setSpectrumAveragingType(unsigned(value) % 8);
    default:
        return engine.setDds(0, value * 1000.0);
    }
}

/// Whatever the input before has set.
void standard(StillEngine &engine)
{
    engine.setModulation(0, DspCore::Modulation::USB);
    engine.setBandFilterIf(0, 300, 2700);
    engine.setMainVolume(0.0);
    for (const unsigned channel : {0u, 1u}) {
        engine.setDownConverter(channel, 0.0);
        engine.setVolume(0, channel, 0.0);
        engine.setBalance(0, channel, 0.0);
        engine.setSqlEnable(0, channel, false);
        engine.setSqlValue(0, channel, -100);
    }
    engine.setRit(0, 0, 0.0);
    engine.setChannelEnable(0, 1, false);
    engine.setAgcMode(ZephrinMDSP::AgcMode::Med);
    engine.setAgcGain(0, 60);
    engine.setCwTone(700);
    engine.setNb1(0, false);
    engine.setNb2(0, false);
    engine.setNr(0, false);
    engine.setAnf(0, false);
    engine.setBin(0, false);
    engine.setEqualizerEnable(0, false);
    engine.setEqualizerGains(0, QVector<int>(18, 0));
    engine.setEnableCTCSS(0, false);
    engine.setToneCTCSS(0, 0);
    engine.setWfmStereo(0, true);
    engine.setLineOutEnable(false);
    engine.setSpectrumAveraging(1);
    engine.setSpectrumAveragingType(0);
    engine.setDds(0, 7.1e6);
}

/// One for all executions, as making one takes longer than an execution.
struct Receiver
{
    explicit Receiver(Repairs repairs) { engine.setRepairs(repairs); }

    test::TestBridge bridge;
    StillEngine engine{bridge.threadPool(), bridge, nullptr};
};

/// An engine has its repairs for life. What one with them was given and may keep, another without
/// them never gets.
Receiver &receiverOf(bool isRepaired)
{
    static Receiver *const both = [] {
        fuzz::beQtProgram<QCoreApplication>();
        return new Receiver[2]{Receiver(Repairs()), Receiver(Repairs::all())};
    }();
    return both[isRepaired];
}

void listen(StillEngine &engine)
{
    std::vector<float> none;
    std::vector<float> audio(2 * kBlock);
    engine.soundCardIO(none, audio, 0, 2);
    require(std::all_of(audio.begin(), audio.end(), [](float x) { return std::fabs(x) <= 1.0f; }),
        "audio is finite and within full scale");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr std::array kRates = {48e3, 96e3, 192e3, 384e3, 768e3, 1536e3, 1920e3, 2560e3, 3072e3};
    fuzz::Input input(data, size);
    const auto head = input.take<std::uint16_t>();
    const bool isRepaired = head / kRates.size() % 2;
    Receiver &receiver = receiverOf(isRepaired);
    StillEngine &engine = receiver.engine;
    receiver.bridge.sink.switches.clear();
    engine.close();
    standard(engine);
    engine.setSampleRate(kRates[head % kRates.size()]);
    engine.open(vm::thread::jthread::Priority::Highest);
    int blocks = 0;
    for (int step = 0; step < kMostSteps && blocks < kMostBlocks && !input.isEmpty(); ++step) {
        if (input.flag()) {
            set(engine, input, isRepaired);
            continue;
        }
        auto samples = block(input);
        engine.processIQ(samples);
        engine.work();
        listen(engine);
        ++blocks;
    }
    return 0;
}
