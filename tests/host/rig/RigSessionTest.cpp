// SPDX-License-Identifier: GPL-3.0-or-later
#include "rig/FakeRig.h"

#include "rig/RigDescription.h"
#include "rig/RigMode.h"
#include "rig/RigSession.h"

#include <gtest/gtest.h>

namespace
{
using Talk = std::vector<std::pair<QByteArray, QByteArray>>;

void expect(test::FakeRig &rig, const Talk &talk)
{
    host::RigSession session(rig);
    for (const auto &[line, answer] : talk)
        EXPECT_EQ(session.answer(line), answer) << line.toStdString();
}

// The answers are those of rigctld 4.5 to the same lines.
TEST(RigSessionTest, AnswersAsClientsKnowIt)
{
    test::FakeRig rig;
    expect(rig,
        {
            {"f", "7105000\n"},
            {"F 14074000.000000", "RPRT 0\n"},
            {"\\get_freq", "14074000\n"},
            {"+f", "get_freq:\nFrequency: 14074000\nRPRT 0\n"},
            {"+\\set_freq 7100000", "set_freq: 7100000\nRPRT 0\n"},
            {"M PKTUSB 3000", "RPRT 0\n"},
            {"m\r", "PKTUSB\n3000\n"},
            {";m", "get_mode:;Mode: PKTUSB;Passband: 3000;RPRT 0\n"},
            {"|f", "get_freq:|Frequency: 7100000|RPRT 0\n"},
            {"M USB -1", "RPRT 0\n"},
            {"M CW 0", "RPRT 0\n"},
            {"m", "CW\n2400\n"},
            {"fm", "7100000\nCW\n2400\n"},
            {"F 7101000 f", "RPRT 0\n7101000\n"},
            {"v", "VFOA\n"},
            {"V VFOB", "RPRT 0\n"},
            {"v f", "VFOB\n7096000\n"},
            {"V ?", "VFOA VFOB currVFO\nRPRT 0\n"},
            {"s", "0\nVFOB\n"},
            {"S 1 VFOA", "RPRT 0\n"},
            {"+s", "get_split_vfo:\nSplit: 1\nTX VFO: VFOA\nRPRT 0\n"},
            {"I 7102000", "RPRT 0\n"},
            {"i", "7102000\n"},
            {"x", "CW\n2400\n"},
            {"\\get_vfo_info VFOA", "7102000\nCW\n2400\n1\n0\n"},
            {"G XCHG", "RPRT 0\n"},
            {"f", "7102000\n"},
            {"G UP", "RPRT 0\n"},
            {"f", "7102100\n"},
            {"t", "0\n"},
            {"T 0", "RPRT 0\n"},
            {"T 1", "RPRT -11\n"},
            {"\\get_powerstat", "1\n"},
            {"\\set_powerstat 0", "RPRT 0\n"},
            {"+\\get_powerstat", "get_powerstat:\nPower Status: 0\nRPRT 0\n"},
            {"\\chk_vfo", "0\n"},
            {"J -250", "RPRT 0\n"},
            {"j u RIT", "-250\n1\n"},
            {"J 0", "RPRT 0\n"},
            {"u RIT", "0\n"},
            {"_", "Fake\n"},
            {"", ""},
            {"# remark", ""},
        });
}

TEST(RigSessionTest, RefusesWhatItCannotDo)
{
    test::FakeRig rig;
    Talk talk;
    for (const char *line : {"%", "\\nosuch", "\\", "\\ f", "F", "F abc", "F nan", "F 1e12", "F -1",
             "M ABC 0", "M USB", "M USB x", "M USB -2", "V VFOX", "S 2 VFOA", "S 1", "J 10000",
             "l NOSUCH", "L AF 1.5", "L ATT 60", "L AGC 1", "U NR 2", "G NOSUCH", "\xff\xfe\x80",
             "\\set_powerstat x", "% F 7000000", "N 1e300"})
        talk.emplace_back(line, "RPRT -1\n");
    talk.emplace_back("n", "RPRT -11\n");
    talk.emplace_back("L STRENGTH 3", "RPRT -11\n");
    rig.locked = true;
    talk.emplace_back("F 7000000", "RPRT -9\n");
    talk.emplace_back("+F 7000000", "set_freq: 7000000\nRPRT -9\n");
    talk.emplace_back("f", "7105000\n");
    expect(rig, talk);
}

TEST(RigSessionTest, LevelsAndFunctionsAreThoseOfTheReceiver)
{
    test::FakeRig rig;
    rig.dbm = -79.0;
    rig.dials[std::size_t(host::Dial::Volume)] = -15.0;
    expect(rig,
        {
            {"l STRENGTH", "-6\n"},
            {"F 145000000 l STRENGTH", "RPRT 0\n14\n"},
            {"+l STRENGTH", "get_level: STRENGTH\n14\nRPRT 0\n"},
            {"l AF", "0.750000\n"},
            {"L AF 0.5", "RPRT 0\n"},
            {"L ATT 20", "RPRT 0\n"},
            {"l ATT l PREAMP", "20\n0\n"},
            {"L PREAMP 0", "RPRT 0\n"},
            {"l ATT", "20\n"},
            {"L PREAMP 6", "RPRT 0\n"},
            {"l ATT l PREAMP", "0\n6\n"},
            {"L AGC 2", "RPRT 0\n"},
            {"l AGC", "2\n"},
            {"U NR 1", "RPRT 0\n"},
            {"u NR", "1\n"},
            {"u ?", "NB TSQL ANF NR APF LOCK MUTE SQL RIT NB2 DUAL_WATCH\n"},
        });
    EXPECT_DOUBLE_EQ(rig.dials[std::size_t(host::Dial::Volume)], -30.0);
    EXPECT_EQ(rig.agc, 4) << "fast";
    EXPECT_TRUE(rig.switches[std::size_t(host::Switch::Nr)]);
}

TEST(RigSessionTest, AVfoMayBeNamed)
{
    test::FakeRig rig;
    expect(rig,
        {
            {"F VFOB 7090000", "RPRT 0\n"},
            {"f currVFO", "7105000\n"},
            {"f Sub f", "7090000\n7105000\n"},
            {"M VFOB CW 500", "RPRT 0\n"},
            {"m VFOB", "CW\n500\n"},
            {"m", "USB\n2400\n"},
            {"F VFOX 7090000", "RPRT -1\n"},
        });
}

TEST(RigSessionTest, EveryModeFindsItsWayBack)
{
    for (const QString &name : host::modeNames()) {
        const host::Mode mode = host::findMode(name)->mode;
        EXPECT_EQ(host::rigmode::find(host::rigmode::nameOf(mode)), mode) << name.toStdString();
    }
}

TEST(RigSessionTest, LeavesAtQuit)
{
    test::FakeRig rig;
    host::RigSession session(rig);
    EXPECT_EQ(session.answer("q f"), "RPRT 0\n");
    EXPECT_TRUE(session.isOver());
}
} // namespace
