// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowFixture.h"

#include "window/controls/RecordBar.h"
#include "window/controls/SwitchButton.h"
#include "window/controls/VfoPanel.h"
#include "window/frequency/FrequencyDisplay.h"
#include "window/panorama/WaterfallView.h"

#include "recording/RecordingPlayer.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <QDir>
#include <QLineEdit>

namespace
{
using namespace host;
using test::kHeardDb;
using test::kSettleMs;
using test::kSilentDb;
using test::WindowTest;
} // namespace

TEST_F(WindowTest, TunesByEachWay)
{
    FrequencyDisplay &digits = m_window->vfos().displayA();
    struct Way
    {
        const char *name;
        std::function<void()> act;
        double hertz;
        double toleranceHz;
    };
    const auto digit = [&digits](int i) { return digits.rectOf(i).center().toPoint(); };
    const Way ways[] = {
        {"click", [&] { QTest::mouseClick(&panorama(), Qt::LeftButton, {}, at(7.12e6)); }, 7.12e6,
            pixelHz() + 50.0},
        {"wheel", [&] { wheel(panorama(), at(7.1e6), 2, {}); }, 7.1042e6, 0.0},
        {"Shift and wheel", [&] { wheel(panorama(), at(7.1e6), -1, Qt::ShiftModifier); }, 7.103e6,
            0.0},
        {"wheel over the waterfall",
            [&] {
                wheel(m_window->waterfall(), {300, 50}, 1, {});
            },
            7.1041e6, 0.0},
        {"drag of the VFO", [&] { drag(at(7.104e6), at(7.09e6)); }, 7.09e6, pixelHz() + 50.0},
        {"arrow key", [&] { QTest::keyClick(&panorama(), Qt::Key_Right); }, 7.1041e6, 0.0},
        {"wheel on a digit", [&] { wheel(digits, digit(3), 3, {}); }, 7.107e6, 0.0},
        {"click above a digit",
            [&] {
                QTest::mouseClick(&digits, Qt::LeftButton, {}, {digit(4).x(), 8});
            },
            7.114e6, 0.0},
        {"click below a digit",
            [&] {
                QTest::mouseClick(&digits, Qt::LeftButton, {}, {digit(0).x(), digits.height() - 8});
            },
            7.103999e6, 0.0},
        {"digits typed",
            [&] {
                QTest::keyClick(&digits, Qt::Key_Left, {}, 0);
                QTest::keyClick(&digits, Qt::Key_Right, {}, 0);
                QTest::keyClicks(&digits, "987");
            },
            7.109870e6, 0.0},
        {"a whole frequency",
            [&] {
                m_window->vfos().editFrequency();
                auto *field = digits.findChild<QLineEdit *>();
                field->setText("7.0875");
                QTest::keyClick(field, Qt::Key_Return);
                EXPECT_FALSE(field->isVisible());
            },
            7.0875e6, 0.0},
        {"band button", [&] { press("Band 20M"); }, 14.175e6, 0.0},
    };
    for (const Way &way : ways) {
        radio().setFrequency(7.104e6);
        radio().setCenter(7.1e6);
        m_window->band().fit();
        // The digit that the typing begins with.
        QTest::mouseClick(&digits, Qt::LeftButton, {}, {digit(3).x(), 8});
        radio().setFrequency(7.104e6);
        way.act();
        EXPECT_NEAR(radio().frequencyHz(), way.hertz, way.toleranceHz) << way.name;
    }
    radio().setFrequency(7.104e6);
    radio().setLocked(true);
    for (const Way &way : ways) {
        way.act();
        EXPECT_EQ(radio().frequencyHz(), 7.104e6) << way.name << " while locked";
    }
}

TEST_F(WindowTest, WhatTheControlsDoIsHeard)
{
    press("AGC Fast");
    struct Case
    {
        const char *name;
        std::function<void()> act;
        std::function<void()> undo;
        double toneHz;
    };
    const Case cases[] = {
        {"mute", [this] { press("Mute"); }, [this] { press("Mute"); }, 1000.0},
        {"volume", [this] { slide("Volume", -60); }, [this] { slide("Volume", -12); }, 1000.0},
        {"squelch",
            [this] {
                press("SQL");
                slide("Squelch", -30);
            },
            [this] { press("SQL"); }, 1000.0},
        {"lower side band", [this] { press("Mode LSB"); }, [this] { press("Mode USB"); }, 1000.0},
        {"dragged filter edge",
            [this] { drag(at(7.104e6 + radio().filterEdges().highHz), at(7.1045e6)); },
            [this] { press("Filter 2.5K"); }, 1000.0},
    };
    // So near that an edge can be taken hold of.
    while (m_window->band().spanHz() > 12000.0)
        m_window->band().zoom(0.5, 7.1045e6);
    for (const Case &c : cases) {
        EXPECT_TRUE(becomes(true, c.toneHz)) << "before " << c.name;
        c.act();
        EXPECT_TRUE(becomes(false, c.toneHz)) << c.name;
        c.undo();
        EXPECT_TRUE(becomes(true, c.toneHz)) << c.name << " taken back";
    }
}

TEST_F(WindowTest, EachSwitchAndModeReachesTheRadio)
{
    const auto modes = radio().functions().listModes();
    for (const auto &item : modes) {
        press("Mode " + item.name);
        EXPECT_EQ(radio().mode(), item.mode);
        for (const SwitchRow &row : switchTable()) {
            const QString name = nameOf(row.id);
            QList<SwitchButton *> buttons = m_window->findChildren<SwitchButton *>();
            const auto button = std::find_if(buttons.begin(), buttons.end(),
                [&](const SwitchButton *b) { return b->accessibleName() == name; });
            ASSERT_NE(button, buttons.end()) << row.key;
            EXPECT_EQ((*button)->isEnabled(), row.modes.has(item.mode)) << row.key;
            const bool before = radio().isOn(row.id);
            (*button)->click();
            EXPECT_EQ(radio().isOn(row.id), (*button)->isEnabled() ? !before : before) << row.key;
            radio().setOn(row.id, before);
            EXPECT_EQ((*button)->isChecked(), before) << row.key;
        }
    }
    for (int agc = 0; agc < radio().functions().listAgc().size(); ++agc) {
        radio().setMode(Mode::USB);
        press("AGC " + radio().functions().listAgc()[agc]);
        EXPECT_EQ(radio().agcMode(), agc);
    }
}

TEST_F(WindowTest, ThePictureShowsTheCarrierWhereItIs)
{
    EXPECT_NEAR(panorama().levelAt(7.105e6) - panorama().levelAt(7.095e6), 20.0, 3.0);
    EXPECT_LT(panorama().levelAt(7.11e6), panorama().levelAt(7.095e6) - 20.0);
    // The brightest column of the waterfall, but for the marks of the VFOs.
    radio().setFrequency(7.06e6);
    radio().setFrequency(VfoId::B, 7.06e6);
    for (const double zoom : {1.0, 0.25}) {
        m_window->band().zoom(zoom, 7.105e6);
        test::serve(300);
        const QImage image = m_window->waterfall().grab().toImage();
        const QRect plot = m_window->waterfall().plot();
        const int x = int(panorama().xOf(7.105e6));
        int brightest = 0;
        for (int k = x - 2; k <= x + 2; ++k)
            brightest = std::max(brightest, qGray(image.pixel(k, plot.top() + 5)));
        EXPECT_GT(brightest, 150);
        EXPECT_LT(qGray(image.pixel(x + 12, plot.top() + 5)), 90);
    }
}

TEST_F(WindowTest, ARightClickSetsANotchAndTakesItOut)
{
    while (m_window->band().spanHz() > 12000.0) // a pixel is narrower than a notch
        m_window->band().zoom(0.5, 7.105e6);
    test::serve(300);
    const double before = panorama().levelAt(7.105e6);
    QTest::mouseClick(&panorama(), Qt::RightButton, {}, at(7.105e6));
    EXPECT_TRUE(radio().notches().filter(radio().notchBand(), 0).enable);
    test::serve(1000);
    EXPECT_LT(panorama().levelAt(7.105e6), before - 10.0);
    ASSERT_TRUE(radio().setCenter(7.12e6)); // it stays on the carrier
    test::serve(1000);
    EXPECT_LT(panorama().levelAt(7.105e6), before - 10.0);
    ASSERT_TRUE(radio().setCenter(7.1e6));
    test::serve(300);
    QTest::mouseClick(&panorama(), Qt::RightButton, {}, at(7.105e6));
    EXPECT_FALSE(radio().notches().filter(radio().notchBand(), 0).enable);
    test::serve(1000);
    EXPECT_NEAR(panorama().levelAt(7.105e6), before, 3.0);
}

TEST_F(WindowTest, WhatWasSetIsThereAgain)
{
    radio().setFrequency(7.0912e6);
    radio().setMode(Mode::CW);
    radio().setFilterEdges({-150.0, 150.0});
    radio().setValue(Dial::Volume, -20.0);
    radio().setOn(Switch::Nr, true);
    m_window->lines().setPerSecond(40);
    m_window->panorama().setRange({-110.0, -50.0});
    m_window.reset();
    ASSERT_TRUE(m_bench.restart({})) << radio().error().toStdString();
    m_window = std::make_unique<MainWindow>(radio(), m_bench.path("bookmarks.csv"));
    EXPECT_EQ(radio().frequencyHz(), 7.0912e6);
    EXPECT_EQ(radio().mode(), Mode::CW);
    EXPECT_EQ(radio().filterEdges(), (FilterMemory::Edges{-150.0, 150.0}));
    EXPECT_EQ(radio().value(Dial::Volume), -20.0);
    EXPECT_TRUE(radio().isOn(Switch::Nr));
    EXPECT_EQ(m_window->lines().perSecond(), 40);
    EXPECT_EQ(panorama().range().lowDb, -110.0);
    EXPECT_FALSE(panorama().isAutomatic());
}

/// What is recorded by the buttons is heard again when it is opened, at the place that is chosen.
TEST_F(WindowTest, RecordsAndPlaysBack)
{
    constexpr int kRecordedMs = 2500;
    constexpr double kSteadyDb = 1.0; // the carrier lies between two bins, and the noise moves it
    const double onAir = panorama().levelAt(7.105e6);
    m_window->recordBar().setFolder(m_bench.path("recordings"));
    press("Record what is heard");
    press("Record the whole received band");
    test::serve(kRecordedMs);
    press("Record what is heard");
    press("Record the whole received band");
    const QDir folder(m_bench.path("recordings"));
    const QStringList files = folder.entryList(QDir::Files);
    ASSERT_EQ(files.size(), 2) << files.join(' ').toStdString();

    radio().setFrequency(VfoId::A, 7.11e6);
    EXPECT_LT(m_bench.toneDb(1000.0, kSettleMs), kSilentDb);
    using Kind = RecordingPlayer::Kind;
    for (const Kind kind : {Kind::Audio, Kind::Iq}) {
        const auto isKind = [&](const QString &file) {
            return RecordingPlayer::kindOf(folder.filePath(file)) == kind;
        };
        const auto file = std::find_if(files.begin(), files.end(), isKind);
        ASSERT_NE(file, files.end());
        if (kind == Kind::Iq)
            radio().setFrequency(VfoId::A, 7.104e6);
        m_window->openScene(folder.filePath(*file));
        ASSERT_EQ(m_window->player().kind(), kind) << m_window->player().error().toStdString();
        press("Loop");
        EXPECT_GT(m_window->player().length(), kRecordedMs / 2000.0);
        slide("Position in the recording", 5);
        EXPECT_NEAR(m_window->player().position(), 0.5, 0.2);
        EXPECT_GT(m_bench.toneDb(1000.0, kSettleMs), kHeardDb) << int(kind);
        const double level = panorama().levelAt(7.105e6);
        EXPECT_TRUE(kind == Kind::Audio || std::abs(level - onAir) < kSteadyDb) << level;
        press("Close");
        EXPECT_FALSE(m_window->player().isOpen());
        press("Loop");
    }
}
