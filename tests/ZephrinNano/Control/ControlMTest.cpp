// SPDX-License-Identifier: GPL-3.0-or-later
#include "Control/ControlM.h"
#include "Control/CalibrationControl.h"
#include "Control/DiscoverZephrinNANO.h"
#include "Control/driver/crc32.h"
#include "Control/qWait.h"
#include "ZephrinNano/BrokenLibrary.h"
#include "ZephrinNano/Control/driver/DriverTest.h"

#include <QCoreApplication>
#include <cstring>

namespace
{
enum Code { Frequency = 1, State = 2, AdcRegister = 3, Attenuator = 4 };
constexpr std::uint32_t kStreamOn = 0x00080000;
constexpr std::uint32_t kAdcWrite = 0x40000000;
constexpr int kSetupCommands = 30; // of the ADC, at each open

using Page = HardwareZephrinNANO::Calibrations;
using Bytes = std::vector<std::uint8_t>;
using Finder = DiscoverZephrinNANO;

Bytes bytesOf(Page page)
{
    page.checksum = crc32(reinterpret_cast<unsigned char *>(&page), 32);
    Bytes bytes(sizeof page);
    std::memcpy(bytes.data(), &page, sizeof page);
    return bytes;
}

class ControlMTest : public DriverTest
{
protected:
    using Sents = std::vector<Sent>;

    ControlMTest()
    {
        using Calibration = CalibrationControl;
        const auto levels = control.calibration();
        record(levels.get(), &Calibration::userPreampCoeffChanged, "user level %1");
        record(levels.get(), &Calibration::userFreqChanged, "user factor %1");
        record(levels.get(), &Calibration::adminPreampCoeffChanged, "admin level %1");
        record(levels.get(), &Calibration::adminFreqChanged, "admin factor %1");
        record(levels.get(), &Calibration::streamPreampCoeffChanged, "stream %1");
        record(&control, &ControlM::connectStatus, "status %1");
        record(&control, &ControlM::statusChanged, "%1");
        record(&control, &ControlM::openChanged, "open %1");
        QObject::connect(&control, &ControlM::streamStopped, &control, [this] { ++streamEnds; });
    }

    ~ControlMTest() override { Finder::instance()->devices(); }

    template <typename Object, typename Argument>
    void record(Object *object, void (Object::*signal)(Argument), const char *text)
    {
        QObject::connect(object, signal, &control,
            [this, text](Argument argument) { events << QString(text).arg(argument); });
    }

    /// Signals since the last call.
    QStringList took() { return std::exchange(events, {}); }

    void poll() { QMetaObject::invokeMethod(&control, "onScannDevices", Qt::DirectConnection); }

    /// Open, after the first scan and the set-up.
    void openControl()
    {
        Finder::instance()->devices();
        QCoreApplication::processEvents();
        ASSERT_TRUE(control.open(0));
        sent(), calls(), took();
    }

    QStringList events;
    int streamEnds = 0;
    ControlM control{engine};
};

TEST_F(ControlMTest, ReceiversAreFoundByTheirProductWithTheirPlaceInTheList)
{
    const struct
    {
        unsigned foreign;
        bool plugged;
        const char *fault;
        int seen;
        std::list<Finder::DevId> found;
    } rows[] = {
        {0, true, "none", 1, {{0, "ZN000001"}}}, {3, true, "none", 4, {{3, "ZN000001"}}},
        {2, false, "none", 2, {}}, {1, true, "fail:FT_ListDevices@5", 2, {}}, // the product
    };
    auto *finder = Finder::instance();
    finder->devices();
    for (const auto &row : rows) {
        vr_set_foreign_devices(row.foreign);
        vr_set_plugged(row.plugged);
        vr_fault(row.fault);
        EXPECT_EQ(finder->discover(), row.seen) << row.foreign << row.fault;
        vr_fault("none"), vr_fault(row.fault); // counted anew
        finder->scan();
        EXPECT_EQ(finder->devices(), row.found) << row.foreign << row.fault;
        EXPECT_EQ(control.avalibleDevices(), !row.found.empty());
        vr_fault("none");
    }
    test::BrokenLibrary library;
    for (const auto &[told, seen] : {std::pair{127u, 127}, {128u, 0}}) { // as many as a bus holds
        library.devices = told;
        EXPECT_EQ(finder->discover(), seen);
    }
}

TEST_F(ControlMTest, DevicesArePolledUntilOneIsOpenWhichThenCountsAsConnected)
{
    const QStringList connected{"status 2", "connected"}, gone{"status 0", "disconnected"};
    const auto reported = [this](int ms) { return wait(ms, [&] { return events.size() == 2; }); };
    EXPECT_TRUE(reported(500));
    EXPECT_EQ(took(), connected);
    vr_set_plugged(0);
    EXPECT_TRUE(reported(2500)); // by the timer
    EXPECT_EQ(took(), gone);

    vr_set_plugged(1);
    vr_set_foreign_devices(1);
    EXPECT_FALSE(control.open(-1) || control.open(0)); // another's chip
    EXPECT_TRUE(control.open(1) && control.isOpen());
    EXPECT_EQ(took(), QStringList{"open 1"});
    calls();
    vr_set_plugged(0);
    poll();
    EXPECT_EQ(took(), connected);
    EXPECT_TRUE(calls().isEmpty());
    control.close();
    EXPECT_EQ(took(), QStringList{"open 0"});
    poll();
    EXPECT_TRUE(reported(500));
    EXPECT_EQ(took(), gone);
}

// Words in units of 122.88 MHz / 2^32: 3.84 MHz is 2^27.
TEST_F(ControlMTest, FrequencyIsKeptAndSentCorrected)
{
    control.setFreq(3840000.0);
    EXPECT_TRUE(sent().empty());
    Page page{1.5, 0.5, -2.0, 4.0, 0};
    ASSERT_EQ(vr_put_eeprom(bytesOf(page).data(), 36), 0);
    Finder::instance()->devices();
    QCoreApplication::processEvents();
    took();

    ASSERT_TRUE(control.open(0));
    EXPECT_EQ(took(),
        (QStringList{"admin factor 4", "stream 0", "admin level -2", "stream -2", "user factor 0.5",
            "stream -2", "user level 1.5", "stream -0.5", "open 1"}));
    Sents commands = sent();
    commands.erase(commands.begin(), commands.begin() + kSetupCommands);
    const Sent twice{Frequency, 1u << 28};
    EXPECT_EQ(commands, (Sents{{Frequency, 1u << 29}, twice, twice, twice}));

    EXPECT_TRUE(control.open(0) && control.open(-1)); // is open
    control.setFreq(3840000.0 * (1 + 5e-13));
    EXPECT_TRUE(sent().empty() && took().isEmpty());
    control.setFreq(7680000.0);
    EXPECT_EQ(sent(), (Sents{{Frequency, 1u << 29}}));
    control.setUserFreqCoeff(0.25);
    EXPECT_EQ(sent(), (Sents{{Frequency, 1u << 28}}));
    EXPECT_EQ(control.freq(), 7680000.0);
}

TEST_F(ControlMTest, PageIsTakenWholeOrNotAtAll)
{
    openControl();
    const Bytes good = bytesOf({3.0, 1.00001, -1.0, 0.99999, 0});
    const auto refused = [&](const Bytes &area) {
        log.clear();
        EXPECT_EQ(vr_put_eeprom(area.data(), area.size()), 0);
        control.setReadCalibrations();
        return took().isEmpty()
            && log.warnings().last() == "void ControlM::setReadCalibrations() : Incorrect CRC";
    };
    for (const int byte : {0, 31, 35}) { // of the values, and of the checksum
        Bytes page = good;
        page[byte] ^= 1;
        EXPECT_TRUE(refused(page)) << byte;
    }
    EXPECT_TRUE(refused(Bytes(64, 0xff)) && refused(Bytes(64, 0)));

    // A page that the control writes is whole.
    control.setUserPreampCoeff(0.1);
    control.setUserFreqCoeff(1.0000012);
    control.setAdminPreampCoeff(-0.7);
    control.setAdminFreqCoeff(0.9999987);
    control.setWriteCalibrations();
    Bytes area(36);
    vr_get_eeprom(area.data(), area.size());
    EXPECT_EQ(area, bytesOf({0.1, 1.0000012, -0.7, 0.9999987, 0}));
    control.setAdminFreqCoeff(1.0);
    took();
    control.setReadCalibrations();
    EXPECT_EQ(took(), (QStringList{"admin factor 0.999999", "stream -0.6"}));
}

TEST_F(ControlMTest, StreamStartsWithTheStoredRateAndTwiceWithTheGain)
{
    openControl();
    control.setPreamp(-4.0f);
    control.setPreamp(-4.0f);
    EXPECT_EQ(sent().size(), 2 * 5u); // sent always, signalled once
    EXPECT_EQ(took(), QStringList{"stream 4"});
    for (const auto &[rate, code] : {std::pair{3072000, 8u}, {12345, 0u}}) {
        control.setSampleRate(rate);
        EXPECT_TRUE(sent().empty()) << rate; // no stream: kept only
        control.calibration()->setPreamp(7); // the next start puts this right
        took();
        EXPECT_TRUE(control.start() && control.isStart());
        const std::uint32_t state = kStreamOn | code;
        Sents expected{{State, state}, {State, state}, {Attenuator, 8}, {State, state | kAdcWrite},
            {AdcRegister, 0x2500}, {State, state}};
        EXPECT_EQ(sent(), expected) << rate;
        EXPECT_TRUE(wait(500, [&] { return !events.isEmpty(); }));
        EXPECT_EQ(took(), QStringList{"stream 4"});
        expected.erase(expected.begin());
        EXPECT_EQ(sent(), expected) << rate;
        control.stop();
        EXPECT_EQ(sent(), (Sents{{State, code}}));
    }
}

TEST_F(ControlMTest, RunningStreamRestartsWithTheNewRateAfterAPauseThatServesEvents)
{
    openControl();
    control.start();
    sent();
    bool paused = false;
    QTimer::singleShot(50, &control, [&] { paused = !control.isStart() && !device().streaming; });
    QElapsedTimer clock;
    clock.start();
    control.setSampleRate(192000);
    EXPECT_GE(clock.elapsed(), 100);
    EXPECT_TRUE(paused && control.isStart());
    EXPECT_EQ(device().sample_rate_hz, 192000.0);
    EXPECT_EQ(streamEnds, 1);
    // Stopped meanwhile: it stays so.
    QTimer::singleShot(50, &control, [&] { control.stop(); });
    control.setSampleRate(96000);
    EXPECT_FALSE(control.isStart());
    EXPECT_EQ(streamEnds, 2);
}

// The engine hears the antenna level, corrected by the calibration, whatever the attenuator does.
TEST_F(ControlMTest, StreamLevelFollowsTheCalibrationAndNotTheAttenuator)
{
    constexpr double kStep = 1e-6; // 24-bit samples, the lowest of them 10 dB up
    constexpr double kLevel = 0.1;
    constexpr double kGain = 1.4125375446227544; // 10^0.15
    const double pair[2] = {kLevel, 0.0};
    ASSERT_EQ(vr_scene_samples(pair, 1, 48000, 0, 1), 0) << vr_last_error();
    vr_set_pace(VR_PACE_CREDIT);
    openControl();
    control.setUserPreampCoeff(3.0);
    for (const float preamp : {0.0f, -10.0f, 6.0f}) {
        control.setPreamp(preamp);
        control.start();
        vr_add_credit(84 * 32);
        ASSERT_TRUE(wait(2000, [&] { return engine->iqBuffer()->count() >= 1536; }));
        std::vector<COMPLEX> samples(1536);
        ASSERT_TRUE(engine->iqBuffer()->read(samples.data(), 1536));
        EXPECT_NEAR(samples.back().re, kLevel * kGain, kStep) << preamp;
        control.stop();
    }
}
} // namespace
