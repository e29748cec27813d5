// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/TestRadio.h"

#include "rig/RadioRig.h"
#include "rig/RigSession.h"

#include <gtest/gtest.h>

namespace
{
constexpr char kBand[] = "band centre=7.1M noise=-140\n"
                         "station frequency=7.105M level=-40 mode=carrier\n"
                         "station frequency=14.0752M level=-50 mode=carrier\n";
constexpr double kHeardDb = -40.0; // what is in tune is above, whatever the gain control does
constexpr int kSettleMs = 1500;    // the gain control, the next reading of the meters

// On the radio as it is: every wire from the protocol to what is heard and shown.
class RadioRigTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(bench.start({"--tune", "7104000", "--center", "7100000", "--mode", "USB"}))
            << bench.radio().error().toStdString();
    }

    void expect(const std::vector<std::pair<QByteArray, QByteArray>> &talk)
    {
        host::RadioRig rig(bench.radio());
        host::RigSession session(rig);
        for (const auto &[line, answer] : talk)
            EXPECT_EQ(session.answer(line), answer) << line.toStdString();
    }

    test::TestRadio bench{kBand};
};

// The order in which programs for data signals set a receiver up.
TEST_F(RadioRigTest, ADataProgramHearsItsBandWhereItLooksForIt)
{
    expect({
        {"F 14074000", "RPRT 0\n"},
        {"M PKTUSB -1", "RPRT 0\n"},
        {"f", "14074000\n"},
        {"F 14073900", "RPRT 0\n"},
        {"f m", "14073900\nPKTUSB\n2930\n"},
    });
    EXPECT_GT(bench.toneDb(1300.0, kSettleMs), kHeardDb);
    expect({{"M USB 2400", "RPRT 0\n"}, {"f m", "14073900\nUSB\n2400\n"}});
    EXPECT_GT(bench.toneDb(1300.0), kHeardDb);
    expect({{"M PKTLSB -1", "RPRT 0\n"}, {"F 14076400", "RPRT 0\n"}, {"f", "14076400\n"}});
    EXPECT_GT(bench.toneDb(1200.0), kHeardDb);
}

TEST_F(RadioRigTest, TheRadioFollows)
{
    host::Radio &radio = bench.radio();
    expect({
        {"M AM 6000", "RPRT 0\n"},
        {"m", "AM\n6000\n"},
        {"M LSB 2000", "RPRT 0\n"},
        {"m", "LSB\n2000\n"},
        {"M LSB 0", "RPRT 0\n"},
        {"m", "LSB\n2400\n"},
        {"V VFOB", "RPRT 0\n"},
        {"F 7050000", "RPRT 0\n"},
        {"S 1 VFOA", "RPRT 0\n"},
        {"s", "1\nVFOA\n"},
        {"L AF 0.5", "RPRT 0\n"},
        {"L AGC 2", "RPRT 0\n"},
        {"L ATT 20", "RPRT 0\n"},
        {"U NR 1", "RPRT 0\n"},
        {"J -300", "RPRT 0\n"},
        {"N 1000", "RPRT 0\n"},
        {"N 1001", "RPRT -1\n"},
        {"G UP", "RPRT 0\n"},
        {"f", "7051000\n"},
        {"U LOCK 1", "RPRT 0\n"},
        {"F 7060000", "RPRT -9\n"},
        {"G XCHG", "RPRT -9\n"},
        {"M PKTUSB 0", "RPRT -9\n"},
        {"\\get_powerstat", "1\n"},
        {"\\set_powerstat 0", "RPRT 0\n"},
    });
    EXPECT_EQ(radio.active(), host::VfoId::B);
    EXPECT_EQ(radio.frequencyHz(), 7.051e6);
    EXPECT_TRUE(radio.isSplit());
    EXPECT_EQ(radio.value(host::Dial::Volume), -30.0);
    EXPECT_EQ(radio.functions().listAgc()[radio.agcMode()], "Fast");
    EXPECT_EQ(radio.value(host::Dial::Preamp), -20.0);
    EXPECT_TRUE(radio.isOn(host::Switch::Nr));
    EXPECT_EQ(radio.receivedHz(), 7.0507e6);
    EXPECT_EQ(radio.state(), host::Radio::State::Off);
}

TEST_F(RadioRigTest, StrengthIsThatOfTheMeter)
{
    test::serve(kSettleMs);
    const int s9 = int(std::lround(bench.radio().readings().signalDbm)) + 73;
    host::RadioRig rig(bench.radio());
    const int told = host::RigSession(rig).answer("l STRENGTH").trimmed().toInt();
    EXPECT_NEAR(told, s9, 1);
    expect({{"F 7090000", "RPRT 0\n"}});
    test::serve(kSettleMs);
    EXPECT_LT(host::RigSession(rig).answer("l STRENGTH").trimmed().toInt(), told - 40);
}
} // namespace
