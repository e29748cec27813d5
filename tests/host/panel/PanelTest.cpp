// SPDX-License-Identifier: GPL-3.0-or-later
#include "EventPipe.h"

#include "panel/KnobAdaptiveValue.h"
#include "panel/KnobFixedValue.h"
#include "panel/Panel.h"

#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

namespace
{
using test::EventPipe;

constexpr int kWaitMs = 5000; // a busy machine

/// Writes down what it is told.
class Notes : public host::PanelTarget
{
public:
    void tune(int steps) override { note("tune %1", steps); }
    void turn(host::Dial dial, int steps) override
    {
        note(QString(host::rowOf(dial).key) + " %1", steps);
    }
    void toggle(host::Switch id) override { note("%1", QString(host::rowOf(id).key)); }
    void setMode(host::Mode mode) override { note("mode %1", host::findMode(mode)->name); }
    void stepMode(int steps) override { note("mode %1", steps); }
    void chooseFilter(int filter) override { note("filter number %1", filter); }
    void stepFilter(int steps) override { note("filter %1", steps); }
    void goToBand(const QString &name) override { note("band %1", name); }
    void stepBand(int steps) override { note("band %1", steps); }
    void stepStep(int steps) override { note("step %1", steps); }
    void toggleVfo() override { note("%1", "vfo"); }
    void swapVfos() override { note("%1", "swap"); }
    void toggleSplit() override { note("%1", "split"); }
    void toggleLock() override { note("%1", "lock"); }
    void togglePower() override { note("%1", "power"); }
    void send(const QString &keys) override { note("send %1", keys); }

    QStringList list;

private:
    template <typename Value>
    void note(const QString &text, Value value)
    {
        list += text.arg(value);
    }
};

TEST(KnobValueTest, AdaptsToTheSpeed)
{
    struct Case
    {
        int clicks;
        int intervalMs;
        double stepsPerClick;
    };
    // (clicks / second / 8)^2 when the mean has settled, 1 to 20.
    const Case cases[] = {{1, 1000, 1.0}, {1, 200, 1.0}, {1, 50, 6.25}, {-1, 50, 6.25},
        {2, 100, 6.25}, {1, 10, 20.0}, {1, 0, 20.0}};
    constexpr double kRounding = 0.3; // to whole steps
    for (const auto &[clicks, intervalMs, stepsPerClick] : cases) {
        host::KnobAdaptiveValue knob;
        int steps = 0;
        for (int i = 1; i <= 50; ++i)
            steps = knob.steps(clicks, 1000000 + qint64(i) * intervalMs * 1000);
        EXPECT_NEAR(double(steps) / clicks, stepsPerClick, kRounding) << intervalMs << " ms";
    }
}

TEST(KnobValueTest, TurningBackIsSlow)
{
    host::KnobAdaptiveValue knob(10);
    qint64 timeUs = 0;
    for (int i = 0; i < 50; ++i)
        knob.steps(1, timeUs += 10000);
    EXPECT_EQ(knob.steps(1, timeUs += 10000), 10);
    EXPECT_EQ(knob.steps(-1, timeUs += 20000), -1);
    EXPECT_EQ(knob.steps(1, timeUs += 2000000), 1) << "after a rest";
    EXPECT_EQ(host::KnobFixedValue(-3).steps(2, 0), -6);
}

TEST(PanelMapTest, NamesTheLinesThatAreWrong)
{
    const std::pair<const char *, const char *> cases[] = {
        {"key KEY_NOSUCH mute", "KEY_NOSUCH"},
        {"key REL_DIAL mute", "REL_DIAL"},
        {"knob KEY_A tune", "KEY_A"},
        {"key", "missing"},
        {"key KEY_A", "missing"},
        {"key KEY_A dance", "dance"},
        {"key KEY_A mute 3", "nothing"},
        {"key KEY_A tune x", "STEPS"},
        {"key KEY_A tune 0", "STEPS"},
        {"key KEY_A mode XYZ", "XYZ"},
        {"key KEY_A send", "KEYS"},
        {"key KEY_F1 mute", "already"},
        {"knob REL_DIAL mute", "nothing for a knob"},
        {"knob REL_DIAL tune slowly", "slowly"},
        {"knob REL_DIAL tune fixed 0", "fixed"},
        {"knob REL_DIAL tune fixed 99999", "99999"},
        {"knob REL_DIAL tune adaptive -1", "adaptive"},
        {"knob REL_DIAL tune adaptive 2 3", "too much"},
        {"shortcut Nokey+X mute", "Nokey"},
        {"turn Ctrl+Up", "missing"},
        {"grab it", "too much"},
        {"bang", "bang"},
    };
    for (const auto &[line, reason] : cases) {
        const host::PanelMap map(QString("# remark\nkey KEY_F1 mute # remark\n\n%1\n").arg(line));
        ASSERT_EQ(map.problems().size(), 1) << line;
        EXPECT_TRUE(map.problems().first().startsWith("line 4: ")) << line;
        EXPECT_TRUE(map.problems().first().contains(reason))
            << map.problems().first().toStdString();
        EXPECT_TRUE(map.key(KEY_F1)) << "the good line counts";
    }
    EXPECT_TRUE(host::PanelMap(host::PanelMap::explanation()).problems().isEmpty());
}

class PanelTest : public testing::Test
{
protected:
    void load(const QByteArray &mapping, QWidget *window = nullptr)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("device " + pipe.path().toUtf8() + '\n' + mapping);
        file.close();
        panel.load(path, window);
        EXPECT_TRUE(panel.problems().isEmpty()) << panel.problems().join('\n').toStdString();
    }

    QTemporaryDir folder;
    QString path = folder.filePath("new/panel.conf");
    EventPipe pipe;
    Notes notes;
    host::Panel panel{notes};
};

TEST_F(PanelTest, BeginsWithAFileThatExplainsItself)
{
    panel.load(path, nullptr);
    EXPECT_TRUE(panel.problems().isEmpty());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = file.readAll();
    for (const auto &action : host::PanelAction::table())
        EXPECT_TRUE(text.contains(" " + action.name + " ")) << action.name.toStdString();
    panel.load(folder.path(), nullptr);
    EXPECT_EQ(panel.problems().size(), 1) << "a folder is no file";
}

TEST_F(PanelTest, DoesWhatTheMappingSays)
{
    QDir().mkpath(folder.filePath("new"));
    load("knob REL_DIAL tune fixed 5\n"
         "knob REL_WHEEL volume fixed -1\n"
         "knob REL_HWHEEL mode fixed 1\n"
         "key KEY_A mode cw\n"
         "key KEY_B mode previous\n"
         "key KEY_C filter 2\n"
         "key KEY_D band 20M\n"
         "key KEY_E step next\n"
         "key KEY_F mute\n"
         "key KEY_G volume -3\n"
         "key KEY_H send Ctrl+L\n"
         "key KEY_I lock\n");
    ASSERT_TRUE(QTest::qWaitFor([this] { return pipe.appear(); }, kWaitMs));
    QByteArray stream;
    for (const int code : {KEY_A, KEY_B, KEY_C, KEY_D, KEY_E, KEY_F, KEY_G, KEY_H, KEY_I, KEY_Z})
        for (const int state : {1, 2, 0}) // pressed, held, released
            stream += EventPipe::event(EV_KEY, code, state);
    stream += EventPipe::event(EV_REL, REL_DIAL, -2) + EventPipe::event(EV_REL, REL_WHEEL, 1)
        + EventPipe::event(EV_REL, REL_HWHEEL, 1) + EventPipe::event(EV_REL, REL_X, 1);
    ASSERT_TRUE(pipe.write(stream));
    const QString expected = "mode CW,mode -1,filter number 1,band 20M,step 1,mute,"
                             "volume -3,volume -3,send Ctrl+L,lock,tune -10,volume -1,mode 1";
    EXPECT_TRUE(QTest::qWaitFor([&] { return notes.list.size() >= 13; }, kWaitMs));
    EXPECT_EQ(notes.list.join(',').toStdString(), expected.toStdString());
}

TEST_F(PanelTest, ShortcutsOfTheWindowAreKeysAndKnobs)
{
    QDir().mkpath(folder.filePath("new"));
    QWidget window;
    window.show();
    QApplication::setActiveWindow(&window);
    load("shortcut Ctrl+M mute\nturn Ctrl+Up Ctrl+Down tune fixed 10\n", &window);
    QTest::keyClick(&window, Qt::Key_M, Qt::ControlModifier);
    QTest::keyClick(&window, Qt::Key_Up, Qt::ControlModifier);
    QTest::keyClick(&window, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(notes.list.join(','), "mute,tune 10,tune -10");
    load("", &window);
    QTest::keyClick(&window, Qt::Key_M, Qt::ControlModifier);
    EXPECT_EQ(notes.list.size(), 3) << "a new mapping takes the place of the old one";
}
} // namespace
