// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "window/frame/MainWindow.h"
#include "window/frame/SoundChoice.h"
#include "window/panorama/PanoramaView.h"

#include "radio/TestRadio.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QApplication>
#include <QTest>
#include <QWheelEvent>

#include <cmath>
#include <gtest/gtest.h>
#include <mutex>

namespace test
{
inline constexpr char kTwoCarriers[] = "band centre=7.1M noise=-140\n"
                                       "station frequency=7.105M level=-40 mode=carrier\n"
                                       "station frequency=7.095M level=-60 mode=carrier\n";
inline constexpr double kHeardDb = -35.0;  // what is in tune is above
inline constexpr double kSilentDb = -50.0; // what is not is below, with the gain control highest
inline constexpr int kTries = 12;
inline constexpr int kSettleMs = 1200; // the gain control after the first sample

/// Listens beside the sound card.
class Ear : public host::FrameSink, public host::FrameSource
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

/// The real window on the real plugin and the virtual receiver, tuned 1 kHz below a carrier.
class WindowTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_bench.start({"--tune", "7104000", "--center", "7100000", "--mode", "USB"}))
            << m_bench.radio().error().toStdString();
        m_window =
            std::make_unique<host::MainWindow>(m_bench.radio(), m_bench.path("bookmarks.csv"));
        m_window->sound().pump().add(m_ear);
        m_bench.setSource(&m_ear);
        m_window->resize(1100, 760);
        m_window->show();
        serve(kSettleMs);
    }

    host::Radio &radio() { return m_bench.radio(); }
    host::PanoramaView &panorama() { return m_window->panorama(); }

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

    /// Whether a tone is heard within a few seconds, which the gain control takes to get over a
    /// change; or is not any more.
    bool becomes(bool isHeard, double hertz)
    {
        for (int i = 0; i < kTries; ++i) {
            const double level = m_bench.toneDb(hertz, 200);
            if (isHeard ? level > kHeardDb : level < kSilentDb)
                return true;
        }
        return false;
    }

    void press(const QString &name) { named<QAbstractButton>(name)->click(); }

    void slide(const QString &name, int place) { named<QAbstractSlider>(name)->setValue(place); }

    double pixelHz() { return m_window->band().spanHz() / panorama().plot().width(); }

    Ear m_ear;
    TestRadio m_bench{kTwoCarriers};
    std::unique_ptr<host::MainWindow> m_window; // ends first
};
} // namespace test
