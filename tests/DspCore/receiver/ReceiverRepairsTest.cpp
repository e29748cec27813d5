// SPDX-License-Identifier: GPL-3.0-or-later
// Each repair, off: the dead end that it mends; on: the way out.
#include "ReceiverRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

using DspCore::Modulation;
using DspCore::Receiver;
using DspCore::ReceiverRepairs;

namespace
{
constexpr int kInRate = 192000; // Hz, of a new receiver
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// Samples at the input rate.
constexpr std::size_t ms(int milliseconds)
{
    return std::size_t(milliseconds) * kInRate / 1000;
}

double dbmOfA(const Receiver &receiver)
{
    double a = 0.0;
    double b = 0.0;
    receiver.getDbm(0, a, b);
    return a;
}

TEST(ReceiverRepairsTest, MeterComesBackAfterSilenceAndNoNumbers)
{
    constexpr double kSettledDb = 0.1;
    const std::vector<COMPLEX> carrier(ms(1000), COMPLEX{0.1, 0.0});
    for (const double nothing : {0.0, kNan}) {
        for (const bool repaired : {false, true}) {
            Receiver receiver;
            receiver.setRepairs({.meter = repaired});
            receiver.setBandFilterIf(0, -3000, 3000);
            test::setMode(receiver, Modulation::DSB);
            receiver.setSqlEnable(0, true);
            receiver.setSqlValue(0, -80);
            test::feed(receiver, carrier);
            const double before = dbmOfA(receiver);
            ASSERT_NEAR(before, -33.3, kSettledDb);
            test::feed(receiver, std::vector<COMPLEX>(ms(48), COMPLEX{nothing, 0.0}));
            const auto heard = test::feed(receiver, carrier);
            EXPECT_EQ(std::isfinite(dbmOfA(receiver)), repaired) << nothing;
            if (repaired) {
                EXPECT_NEAR(dbmOfA(receiver), before, kSettledDb);
            }
            if (nothing == 0.0) {
                EXPECT_EQ(heard.audio.back().re != 0.0, repaired) << "the squelch goes by it";
            }
        }
    }
}

TEST(ReceiverRepairsTest, NumbersThatAreNoneDoNotSilenceAMode)
{
    const struct
    {
        Modulation mode;
        bool nr;
        bool isLost; // unless repaired
    } rows[] = {{Modulation::SAM, false, true}, {Modulation::NFM, false, true},
        {Modulation::WFM, false, true}, {Modulation::AM, false, true},
        {Modulation::USB, true, true}, {Modulation::DIGU, false, false}};
    for (const auto &[mode, nr, isLost] : rows) {
        for (const double value : {kNan, double(INFINITY)}) {
            for (const bool repaired : {false, true}) {
                Receiver receiver;
                receiver.setRepairs({.numbers = repaired});
                const double edge = mode == Modulation::WFM ? 80000.0 : 4000.0;
                receiver.setBandFilterIf(0, -edge, edge);
                receiver.setNr(nr);
                test::setMode(receiver, mode);
                auto stream = test::noise(int(ms(300)), 1);
                test::feed(receiver, stream);
                stream[10].re = value;
                test::feed(receiver, stream);
                stream[10].re = 0.0;
                const auto heard = test::feed(receiver, stream).lineout;
                const double level = test::rms(test::last(heard, 4800));
                EXPECT_EQ(std::isfinite(level), repaired || !isLost) << int(mode) << value;
                if (repaired) {
                    EXPECT_GT(level, 1e-3) << int(mode) << value;
                }
            }
        }
    }
}

/// Milliseconds from the first block of a carrier to nine tenths of the way of the S-meter.
double meterMs(double rate, bool repaired, Modulation mode)
{
    Receiver receiver;
    receiver.setRepairs({.pace = repaired});
    receiver.setInputSampleRate(rate);
    const double edge = mode == Modulation::WFM ? 20000.0 : 3000.0;
    receiver.setBandFilterIf(0, -edge, edge);
    test::setMode(receiver, mode);
    constexpr double kFrom = -120.0;
    constexpr double kTo = -33.3;
    std::vector<COMPLEX> block(512, COMPLEX{0.1, 0.0});
    for (int blocks = 1;; ++blocks) {
        receiver.process(block.data(), 512);
        const double ms = 1e3 * 512.0 * blocks / rate;
        if (dbmOfA(receiver) > kFrom + 0.9 * (kTo - kFrom) || ms > 2000.0)
            return ms;
    }
}

TEST(ReceiverRepairsTest, PaceOfTheMeterIsThatOf48KilohertzAtEveryRate)
{
    constexpr double kTwoBlocksMs = 22.0; // at 48 kHz; the filters delay by less
    const double reference = meterMs(48000.0, false, Modulation::DSB);
    EXPECT_NEAR(reference, 491.0, 1.0);
    EXPECT_NEAR(meterMs(3072000.0, false, Modulation::DSB), 16.0, 1.0);
    EXPECT_EQ(meterMs(48000.0, true, Modulation::DSB), reference);
    for (const double rate : {192000.0, 768000.0, 2560000.0, 3072000.0})
        EXPECT_NEAR(meterMs(rate, true, Modulation::DSB), reference, kTwoBlocksMs) << rate;
    for (const double rate : {96000.0, 2560000.0})
        EXPECT_NEAR(meterMs(rate, true, Modulation::WFM), reference, kTwoBlocksMs) << rate;
}

/// Line output of a carrier of half full scale, from the first block on.
std::vector<COMPLEX> halfScale(Receiver &receiver, int milliseconds)
{
    return test::feed(receiver, test::tone(int(ms(milliseconds)), 1000.0 / kInRate, 0.5)).lineout;
}

/// Samples of silence at the beginning.
long silent(const std::vector<COMPLEX> &audio)
{
    return std::find_if(audio.begin(), audio.end(), [](COMPLEX x) { return std::abs(x.re) > 0.01; })
        - audio.begin();
}

double lastLevel(const std::vector<COMPLEX> &audio)
{
    return test::rms(test::last(audio, 4800)) / std::numbers::sqrt2;
}

TEST(ReceiverRepairsTest, AgcSetAheadOfAStartHoldsFromTheFirstBlock)
{
    constexpr double kControlled = 0.707;   // full scale, in rms
    constexpr double kFixed = 2.409;        // half of it, 3.3 dB down in the filters, 20 dB up
    constexpr double kLevel = 0.05;         // the control takes its time
    constexpr long kLongerLookAhead = 1440; // of an attack of 2 ms instead of 1
    for (const bool repaired : {false, true}) {
        const auto tuned = [repaired](auto set) {
            auto receiver = std::make_unique<Receiver>();
            receiver->setRepairs({.agc = repaired});
            receiver->setBandFilterIf(0, 300, 3000);
            test::setMode(*receiver, Modulation::USB);
            receiver->setAgcGain(0, 20);
            set(*receiver);
            receiver->clear(); // the start of a stream
            return receiver;
        };
        const long ownDelay = silent(halfScale(*tuned([](Receiver &) {}), 200));
        const auto slow = tuned([](Receiver &r) { r.setAgcParam(true, 2.0, 400.0, 400.0); });
        EXPECT_EQ(silent(halfScale(*slow, 200)) - ownDelay, repaired ? kLongerLookAhead : 0);

        const auto off = tuned([](Receiver &r) { r.setAgcParam(false, 2.0, 400.0, 400.0); });
        EXPECT_NEAR(lastLevel(halfScale(*off, 2500)), repaired ? kFixed : kControlled, kLevel);

        // Told while something is heard it takes the fade, and if that is cut short, the start.
        off->setAgcParam(true, 1.0, 400.0, 10.0);
        off->clear();
        EXPECT_NEAR(lastLevel(halfScale(*off, 2500)), kControlled, kLevel);
    }
}

TEST(ReceiverRepairsTest, CableGetsWhatTheGainControlGives)
{
    constexpr double kWeak = 1e-3;
    constexpr double kLevel = 0.1; // the control takes its time
    const struct
    {
        Modulation mode;
        double edgeHz;
        double before; // rms of both parts, relative to the line output's
    } rows[] = {{Modulation::USB, 3000.0, kWeak}, {Modulation::LSB, 3000.0, kWeak},
        {Modulation::WFM, 80000.0, 0.0}, {Modulation::NFM, 3000.0, 1.0}};
    for (const auto &row : rows) {
        for (const bool repaired : {false, true}) {
            Receiver receiver;
            receiver.setRepairs({.cable = repaired});
            receiver.setBandFilterIf(0, -row.edgeHz, row.edgeHz);
            receiver.setAgcGain(0, 60);
            receiver.setSqlEnable(0, row.mode == Modulation::LSB); // shut: the cable minds it not
            receiver.setSqlValue(0, -20);
            test::setMode(receiver, row.mode);
            const auto heard =
                test::feed(receiver, test::scaled(test::noise(int(ms(3000)), 1), kWeak));
            ASSERT_EQ(heard.vac.size(), repaired || row.before > 0.0 ? heard.lineout.size() : 0);
            if (heard.vac.empty())
                continue;
            const double cable = test::rms(test::last(heard.vac, 9600));
            if (row.mode == Modulation::LSB) {
                EXPECT_EQ(test::rms(test::last(heard.lineout, 9600)), 0.0);
                EXPECT_EQ(cable > 0.02, repaired) << cable;
            } else {
                const double ratio = cable / test::rms(test::last(heard.lineout, 9600));
                if (repaired) {
                    EXPECT_NEAR(ratio, 1.0, kLevel) << int(row.mode);
                } else {
                    EXPECT_LT(ratio, 2.0 * row.before) << int(row.mode);
                }
            }
        }
    }
}

/// What the first and the second change do to a carrier that is heard at 1 kHz.
struct Changes
{
    double muteMs[2] = {}; ///< below a tenth
    double step = 0.0;     ///< largest difference of two samples, relative to that of the carrier
};

Changes changed(bool repaired, void (*change)(Receiver &, bool second), double attackMs = 1.0)
{
    constexpr double kHz = 1000.0;
    constexpr double kAudioRate = 48000.0;
    constexpr int kPeriod = 48; // samples
    Receiver receiver;
    receiver.setRepairs({.agc = true, .fade = repaired});
    receiver.setAgcParam(true, attackMs, 600.0, 600.0);
    receiver.setBandFilterIf(0, 300, 3000);
    test::holdGain(receiver);
    test::setMode(receiver, Modulation::DSB);
    const auto carrier = [](std::size_t samples) { // at its crest where a change begins
        return test::tone(int(samples), kHz / kInRate, 0.2, 0.5 * std::numbers::pi);
    };
    auto before = test::feed(receiver, carrier(ms(1000))).lineout;
    const double level = test::rms(test::last(before, kPeriod));
    Changes seen;
    for (const bool second : {false, true}) {
        change(receiver, second);
        auto audio = test::last(before, kPeriod);
        before = test::feed(receiver, carrier(ms(1000))).lineout;
        test::append(audio, before);
        for (auto period = audio.begin(); period + kPeriod != audio.end(); ++period) {
            seen.step = std::max(seen.step, std::abs(period[1].re - period[0].re));
            if (test::rms({period, period + kPeriod}) < 0.1 * level)
                seen.muteMs[second] += 1e3 / kAudioRate;
        }
    }
    seen.step /= level * 2.0 * std::numbers::pi * kHz / kAudioRate;
    return seen;
}

TEST(ReceiverRepairsTest, FadeIsShortAndTheFirstOneDoesNotClick)
{
    constexpr double kShortMs = 60.0;
    constexpr double kLongMs = 300.0;
    constexpr double kSmooth = 1.2;
    constexpr double kClick = 3.0;
    constexpr double kSlowestMs = 2.5; // of the device's settings: 75 ms of look-ahead
    const auto agc = [](Receiver &r, bool second) {
        r.setAgcParam(true, second ? kSlowestMs : 1.2, 600.0, 600.0);
    };
    const auto mode = [](Receiver &r, bool second) {
        r.setModulation(second ? Modulation::DSB : Modulation::USB);
    };
    for (const auto change : {+agc, +mode}) {
        const Changes asEver = changed(false, change);
        EXPECT_GT(asEver.muteMs[1], kLongMs);
        EXPECT_GT(asEver.step, kClick) << "a new switcher begins at silence";
        for (const double attackMs : {0.2, 1.0, kSlowestMs}) {
            const Changes now = changed(true, change, attackMs);
            for (const double muteMs : now.muteMs)
                EXPECT_LT(muteMs, kShortMs) << attackMs;
            EXPECT_LT(now.step, kSmooth) << attackMs;
        }
    }
}
} // namespace
