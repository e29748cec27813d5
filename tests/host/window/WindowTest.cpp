// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/ChoiceGrid.h"
#include "window/controls/RecordBar.h"
#include "window/controls/SwitchButton.h"
#include "window/controls/VfoPanel.h"
#include "window/frame/MainWindow.h"
#include "window/frame/SoundChoice.h"
#include "window/frequency/FrequencyDisplay.h"
#include "window/panorama/PanoramaView.h"
#include "window/panorama/WaterfallView.h"

#include "recording/RecordingPlayer.h"

#include "radio/TestRadio.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <QAbstractSlider>
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QTest>
#include <QWheelEvent>

#include <cmath>
#include <ctime>
#include <gtest/gtest.h>
#include <mutex>
#include <random>

namespace
{
using namespace host;

constexpr char kBand[] = "band centre=7.1M noise=-140\n"
                         "station frequency=7.105M level=-40 mode=carrier\n"
                         "station frequency=7.095M level=-60 mode=carrier\n";
constexpr double kHeardDb = -35.0;  // what is in tune is above
constexpr double kSilentDb = -50.0; // what is not is below, with the gain control at its highest
constexpr int kTries = 12;
constexpr int kSettleMs = 1200; // the gain control after the first sample

/// Listens beside the sound card.
class Ear : public FrameSink, public FrameSource
{
public:
    void push(const float *interleaved, std::size_t frames) override
    {
        const std::lock_guard guard(m_mutex);
        m_heard.insert(m_heard.end(), interleaved, interleaved + frames * kChannels);
    }

    std::size_t pull(float *interleaved, std::size_t frames) override
    {
        const std::lock_guard guard(m_mutex);
        frames = std::min(frames, m_heard.size() / kChannels);
        std::copy_n(m_heard.begin(), frames * kChannels, interleaved);
        m_heard.erase(m_heard.begin(), m_heard.begin() + std::ptrdiff_t(frames * kChannels));
        return frames;
    }

private:
    std::mutex m_mutex;
    std::vector<float> m_heard;
};

class WindowTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_bench.start({"--tune", "7104000", "--center", "7100000", "--mode", "USB"}))
            << m_bench.radio().error().toStdString();
        m_window = std::make_unique<MainWindow>(m_bench.radio(), m_bench.path("bookmarks.csv"));
        m_window->sound().pump().add(m_ear);
        m_bench.setSource(&m_ear);
        m_window->resize(1100, 760);
        m_window->show();
        test::serve(kSettleMs);
    }

    Radio &radio() { return m_bench.radio(); }
    PanoramaView &panorama() { return m_window->panorama(); }
    FrequencyDisplay &digits() { return m_window->vfos().displayA(); }

    QPoint at(double hertz)
    {
        return {int(std::lround(panorama().xOf(hertz))), panorama().plot().center().y()};
    }

    static void wheel(QWidget &widget, const QPoint &place, int notches, Qt::KeyboardModifiers keys)
    {
        QWheelEvent event(place, widget.mapToGlobal(place), {}, {0, 120 * notches}, Qt::NoButton,
            keys, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&widget, &event);
    }

    void drag(const QPoint &from, const QPoint &to)
    {
        QTest::mousePress(&panorama(), Qt::LeftButton, {}, from);
        for (int i = 1; i <= 4; ++i) {
            QMouseEvent move(
                QEvent::MouseMove, from + (to - from) * i / 4, Qt::NoButton, Qt::LeftButton, {});
            QApplication::sendEvent(&panorama(), &move);
        }
        QTest::mouseRelease(&panorama(), Qt::LeftButton, {}, to);
    }

    template <typename Widget>
    Widget *named(const QString &name)
    {
        for (Widget *widget : m_window->findChildren<Widget *>())
            if (widget->accessibleName() == name)
                return widget;
        ADD_FAILURE() << "no control " << name.toStdString();
        return nullptr;
    }

    void press(const QString &name) { named<QAbstractButton>(name)->click(); }

    void slide(const QString &name, int place) { named<QAbstractSlider>(name)->setValue(place); }

    double pixelHz() { return m_window->band().spanHz() / panorama().plot().width(); }

    Ear m_ear;
    test::TestRadio m_bench{kBand};
    std::unique_ptr<MainWindow> m_window; // ends first
};
} // namespace

TEST_F(WindowTest, TunesByEachWay)
{
    struct Way
    {
        const char *name;
        std::function<void()> act;
        double hertz;
        double toleranceHz;
    };
    const auto digit = [this](int i) { return digits().rectOf(i).center().toPoint(); };
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
        {"wheel on a digit", [&] { wheel(digits(), digit(3), 3, {}); }, 7.107e6, 0.0},
        {"click above a digit",
            [&] {
                QTest::mouseClick(&digits(), Qt::LeftButton, {}, {digit(4).x(), 8});
            },
            7.114e6, 0.0},
        {"click below a digit",
            [&] {
                QTest::mouseClick(
                    &digits(), Qt::LeftButton, {}, {digit(0).x(), digits().height() - 8});
            },
            7.103999e6, 0.0},
        {"digits typed",
            [&] {
                QTest::keyClick(&digits(), Qt::Key_Left, {}, 0);
                QTest::keyClick(&digits(), Qt::Key_Right, {}, 0);
                QTest::keyClicks(&digits(), "987");
            },
            7.109870e6, 0.0},
        {"a whole frequency",
            [&] {
                m_window->vfos().editFrequency();
                auto *field = digits().findChild<QLineEdit *>();
                field->setText("7.0875");
                QTest::keyClick(field, Qt::Key_Return);
            },
            7.0875e6, 0.0},
        {"band button", [&] { press("Band 20M"); }, 14.175e6, 0.0},
    };
    for (const Way &way : ways) {
        radio().setFrequency(7.104e6);
        radio().setCenter(7.1e6);
        m_window->band().fit();
        // The digit that the typing begins with.
        QTest::mouseClick(&digits(), Qt::LeftButton, {}, {digit(3).x(), 8});
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
    // Within a few seconds, which the gain control takes to get over a change.
    const auto becomes = [this](bool isHeard, double hertz) {
        for (int i = 0; i < kTries; ++i) {
            const double level = m_bench.toneDb(hertz, 200);
            if (isHeard ? level > kHeardDb : level < kSilentDb)
                return true;
        }
        return false;
    };
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
        press("Close");
        EXPECT_FALSE(m_window->player().isOpen());
        press("Loop");
    }
}

/// Random use with the hands on everything that is quick; what a start or a change of rate takes is
/// the device's own. The processor time of the thread counts, which no busy machine disturbs.
TEST_F(WindowTest, NothingHoldsTheWindowUp)
{
    constexpr double kLongestMs = 50.0;
    const auto threadMs = [] {
        timespec now{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
        return double(now.tv_sec) * 1e3 + double(now.tv_nsec) * 1e-6;
    };
    std::mt19937 random(1);
    const auto modes = radio().functions().listModes();
    const auto filterButtons = [this] {
        return int(radio().filters().filters(radio().mode()).size());
    };
    const QVector<QPair<const char *, std::function<void()>>> uses = {
        {"tune", [&] { radio().tune(int(random() % 41) - 20); }},
        {"mode", [&] { radio().setMode(modes[int(random() % unsigned(modes.size()))].mode); }},
        {"filter", [&] { radio().chooseFilter(int(random() % unsigned(filterButtons()))); }},
        {"zoom", [&] { m_window->band().zoom(random() % 2 ? 0.5 : 2.0, radio().frequencyHz()); }},
        {"pan", [&] { m_window->band().pan(double(random() % 20000) - 10000.0); }},
        {"notch", [&] { radio().addNotch(7.1e6 + double(random() % 50000), 200.0); }},
        {"switch",
            [&] {
                const auto id = Switch(random() % kSwitches);
                if (id != Switch::AutoPreamp)
                    radio().toggle(id);
            }},
        {"volume", [&] { radio().setValue(Dial::Volume, -double(random() % 60)); }},
        {"split", [&] { radio().setSplit(random() % 2); }},
        {"swap", [&] { radio().swapVfos(); }},
        {"palette", [&] { m_window->waterfall().setPalette(ColourMap::Palette(random() % 3)); }},
        {"size", [&] { m_window->resize(1000 + int(random() % 400), 700 + int(random() % 200)); }},
        {"save", [&] { radio().save(); }},
    };
    double longest = 0.0;
    for (int i = 0; i < 300; ++i) {
        const auto &use = uses[int(random() % unsigned(uses.size()))];
        const double before = threadMs();
        use.second();
        QApplication::processEvents();
        const double took = threadMs() - before;
        EXPECT_LT(took, kLongestMs) << use.first;
        longest = std::max(longest, took);
        test::serve(10);
    }
    RecordProperty("longest_ms", std::to_string(longest));
    std::printf("longest: %.1f ms\n", longest);
}
