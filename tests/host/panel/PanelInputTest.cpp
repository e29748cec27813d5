// SPDX-License-Identifier: GPL-3.0-or-later
#include "EventPipe.h"

#include "panel/PanelInput.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace
{
using test::EventPipe;

constexpr int kWaitMs = 5000; // a busy machine

class PanelInputTest : public testing::Test
{
protected:
    void SetUp() override
    {
        QObject::connect(&input, &host::PanelInput::keyChanged, &input,
            [this](int code, int state) { heard += QString("k%1=%2 ").arg(code).arg(state); });
        QObject::connect(&input, &host::PanelInput::knobTurned, &input,
            [this](int code, int clicks, qint64 timeUs) {
                heard += QString("r%1=%2@%3 ").arg(code).arg(clicks).arg(timeUs);
            });
        input.setDevice(pipe.path(), false);
        ASSERT_TRUE(QTest::qWaitFor([this] { return pipe.appear(); }, kWaitMs));
    }

    bool hears(const QString &text)
    {
        return QTest::qWaitFor([&] { return heard == text; }, kWaitMs);
    }

    EventPipe pipe;
    host::PanelInput input;
    QString heard;
};

TEST_F(PanelInputTest, TakesEventsHoweverTheyAreCut)
{
    const QByteArray stream = EventPipe::event(EV_KEY, KEY_MUTE, 1)
        + EventPipe::event(EV_SYN, SYN_REPORT, 0) + EventPipe::event(EV_REL, REL_DIAL, -2, 3000004)
        + EventPipe::event(EV_ABS, ABS_X, 7) + EventPipe::event(EV_KEY, KEY_MUTE, 0);
    for (const int size : {1, 23, 25, int(stream.size())}) {
        heard.clear();
        for (int at = 0; at < stream.size(); at += size) {
            ASSERT_TRUE(pipe.write(stream.mid(at, size)));
            QTest::qWait(1);
        }
        EXPECT_TRUE(hears("k113=1 r7=-2@3000004 k113=0 ")) << heard.toStdString() << size;
    }
    // More than a read takes.
    heard.clear();
    ASSERT_TRUE(pipe.write(stream.repeated(100)));
    EXPECT_TRUE(hears(QString("k113=1 r7=-2@3000004 k113=0 ").repeated(100)));
}

TEST_F(PanelInputTest, AfterALossItBeginsWithTheNextReport)
{
    pipe.write(EventPipe::event(EV_SYN, SYN_DROPPED, 0) + EventPipe::event(EV_KEY, KEY_A, 1)
        + EventPipe::event(EV_SYN, SYN_REPORT, 0) + EventPipe::event(EV_KEY, KEY_B, 1));
    EXPECT_TRUE(hears("k48=1 ")) << heard.toStdString();
}

TEST_F(PanelInputTest, ADeviceThatVanishesIsTakenWhenItComesBack)
{
    QSignalSpy presence(&input, &host::PanelInput::presentChanged);
    pipe.write(EventPipe::event(EV_KEY, KEY_A, 1).left(10)); // torn
    pipe.vanish();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !presence.isEmpty(); }, kWaitMs));
    EXPECT_FALSE(presence.first().first().toBool());
    ASSERT_TRUE(QTest::qWaitFor([this] { return pipe.appear(); }, kWaitMs));
    pipe.write(EventPipe::event(EV_KEY, KEY_B, 1));
    EXPECT_TRUE(hears("k48=1 ")) << "the torn one is gone: " << heard.toStdString();
    input.setDevice({}, false);
    EXPECT_FALSE(input.isPresent());
}

TEST(PanelInputProblemTest, OnlyADeviceThatIsThereIsAProblem)
{
    host::PanelInput input;
    QSignalSpy problems(&input, &host::PanelInput::problem);
    input.setDevice("/nowhere/event0", false);
    input.setDevice("no such panel", false);
    EXPECT_TRUE(problems.isEmpty());
    QTemporaryDir folder;
    const QString link = folder.filePath("loop");
    QFile::link(link, link);
    input.setDevice(link, false);
    QTest::qWait(host::PanelInput::kLookMs + 200);
    ASSERT_EQ(problems.size(), 1) << "told once";
    EXPECT_TRUE(problems.first().first().toString().contains(link));
}
} // namespace
