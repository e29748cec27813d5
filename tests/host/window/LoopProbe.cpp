// SPDX-License-Identifier: GPL-3.0-or-later
// How long the window's event loop stands still while it is used at random, and what the window
// takes of the processor.
//
// usage: test_loop_probe SECONDS [still] [RATE] [LINES]
// still: nobody touches it, panorama and waterfall are 1600 x 600 together. RATE: samples a second.
// LINES: of the spectrum a second. QT_QPA_PLATFORM chooses the display, else none is needed.
//
// A timer ticks every 5 ms; the later it comes, the longer the loop stood still. What of that the
// thread spent waiting for a processor is the machine's; the rest is its own: work, and waits for
// disks and locks. Exit status 1 if the window worked for more than 50 ms at once, but for what the
// device itself takes to start, to stop and to change its rate.
#include "window/controls/ChoiceGrid.h"
#include "window/controls/SwitchButton.h"
#include "window/frame/MainWindow.h"
#include "window/panorama/PanoramaView.h"
#include "window/panorama/WaterfallView.h"

#include "radio/TestRadio.h"
#include "support/applicationOffscreen.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <QAbstractButton>
#include <QAction>
#include <QDialog>
#include <QFile>
#include <QMetaEnum>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <random>
#include <vector>

namespace
{
using namespace host;

constexpr int kTickMs = 5;
constexpr int kUseMs = 30;
constexpr double kLongestMs = 50.0;
constexpr std::array kBinsMs = {2.0, 5.0, 10.0, 20.0, 50.0, 100.0, 200.0, 500.0, 1e9};
constexpr QSize kViews{1600, 600};

constexpr char kBand[] = "band centre=7.1M noise=-120\n"
                         "station frequency=7.105M level=-40 mode=carrier\n"
                         "station frequency=7.095M level=-60 mode=carrier\n";

double cpuMs(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) * 1e-6;
}

/// What this thread has waited for a processor, by the kernel's account; 0 where that has none.
double queuedMs()
{
    QFile file("/proc/thread-self/schedstat");
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toDouble() * 1e-6
                                          : 0.0;
}

struct Span
{
    double wallMs = 0.0;
    double cpuMs = 0.0;
    const char *receiver = "";
    int event = 0;
};

/// Knows the event that took longest since it was asked, without those that were handled within.
class Probe : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        if (QThread::currentThread() != thread()) // the sound's
            return QApplication::notify(receiver, event);
        const char *const name = receiver->metaObject()->className(); // either may be gone after it
        const int type = event->type();
        m_within.push_back({});
        const double wall = cpuMs(CLOCK_MONOTONIC);
        const double cpu = cpuMs(CLOCK_THREAD_CPUTIME_ID);
        const bool result = QApplication::notify(receiver, event);
        const Span all{
            cpuMs(CLOCK_MONOTONIC) - wall, cpuMs(CLOCK_THREAD_CPUTIME_ID) - cpu, name, type};
        const Span own{
            all.wallMs - m_within.back().wallMs, all.cpuMs - m_within.back().cpuMs, name, type};
        m_within.pop_back();
        if (!m_within.empty()) {
            m_within.back().wallMs += all.wallMs;
            m_within.back().cpuMs += all.cpuMs;
        }
        if (own.wallMs > m_longest.wallMs)
            m_longest = own;
        return result;
    }

    Span takeLongest() { return std::exchange(m_longest, {}); }

private:
    std::vector<Span> m_within;
    Span m_longest;
};

struct Use
{
    const char *name;
    bool isDevices; ///< the device's own wait
    int weight;
    std::function<void()> act;
};

class RandomUse
{
public:
    RandomUse(Radio &radio, MainWindow &window) : m_radio(radio), m_window(window)
    {
        const auto add = [this](const char *name, int weight, std::function<void()> act) {
            m_uses.push_back({name, false, weight, std::move(act)});
        };
        add("tune", 20, [&] { m_radio.tune(int(any(41)) - 20); });
        add("wheel", 20, [&] { wheel(m_window.panorama(), {}); });
        add("wheel over the waterfall", 10, [&] { wheel(m_window.waterfall(), {}); });
        add("zoom", 20, [&] { wheel(m_window.panorama(), Qt::ControlModifier); });
        add("click", 10, [&] {
            QTest::mouseClick(&m_window.panorama(), Qt::LeftButton, {}, place(m_window.panorama()));
        });
        add("notch", 3, [&] {
            QTest::mouseClick(
                &m_window.panorama(), Qt::RightButton, {}, place(m_window.panorama()));
        });
        add("key", 10, [&] {
            constexpr std::array kKeys = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Plus, Qt::Key_Home};
            QTest::keyClick(&m_window.panorama(), kKeys[any(kKeys.size())]);
        });
        add("pan", 10, [&] { m_window.band().pan(double(any(20000)) - 10000.0); });
        add("button", 40, [&] { button(); });
        add("volume", 5, [&] { m_radio.setValue(Dial::Volume, -double(any(60))); });
        add("split", 3, [&] { m_radio.setSplit(any(2)); });
        add("swap", 3, [&] { m_radio.swapVfos(); });
        add("palette", 2, [&] {
            m_window.waterfall().setPalette(ColourMap::Palette(any(ColourMap::kPalettes)));
        });
        add("size", 2, [&] { m_window.resize(1024 + int(any(900)), 700 + int(any(400))); });
        add("dialog", 3, [&] { dialog(); });
        add("save", 2, [&] { m_radio.saveLater(); });
        add("scene", 1, [&] { m_window.openScene({}); });
        m_uses.push_back({"on and off", true, 1, [&] { m_radio.setPower(!m_radio.isPowered()); }});
        m_uses.push_back({"rate", true, 1, [&] {
                              constexpr std::array kRates = {48000, 192000, 768000, 192000};
                              m_radio.setRate(kRates[any(kRates.size())]);
                          }});
        m_uses.push_back({"options of the device", true, 1, [&] { trigger("Ctrl+,"); }});
    }

    void act()
    {
        if (m_isActing) // within the loop that a change of rate serves
            return;
        m_isActing = true;
        int weights = 0;
        for (const Use &use : m_uses)
            weights += use.weight;
        int left = int(any(std::size_t(weights)));
        m_now = &*std::find_if(m_uses.begin(), m_uses.end(),
            [&left](const Use &use) { return (left -= use.weight) < 0; });
        m_now->act();
        m_isActing = false;
        if (!m_radio.isPowered())
            QTimer::singleShot(1000, &m_window, [this, off = m_now] {
                m_now = off;
                m_radio.setPower(true);
            });
    }

    /// The last one; null before the first.
    const Use *now() const { return m_now; }

private:
    std::size_t any(std::size_t count) { return m_random() % count; }

    QPoint place(const QWidget &widget)
    {
        return {60 + int(any(std::size_t(widget.width() - 60))),
            int(any(std::size_t(std::max(1, widget.height() - 40))))};
    }

    void wheel(QWidget &widget, Qt::KeyboardModifiers keys)
    {
        const QPoint at = place(widget);
        QWheelEvent event(at, widget.mapToGlobal(at), {}, {0, any(2) ? 120 : -120}, Qt::NoButton,
            keys, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&widget, &event);
    }

    /// Modes, filters, gain control, bands, switches; as many as the window has.
    void button()
    {
        QList<QAbstractButton *> buttons;
        for (auto *button : m_window.findChildren<QAbstractButton *>())
            if (qobject_cast<SwitchButton *>(button)
                || qobject_cast<ChoiceGrid *>(button->parentWidget()))
                buttons += button;
        buttons[int(any(std::size_t(buttons.size())))]->click();
    }

    void dialog()
    {
        for (QDialog *dialog : m_window.findChildren<QDialog *>())
            if (dialog->isVisible()) {
                dialog->close();
                return;
            }
        constexpr std::array kKeys = {"Ctrl+B", "Ctrl+E", "Ctrl+N", "Ctrl+K"};
        trigger(kKeys[any(kKeys.size())]);
    }

    void trigger(const QString &keys)
    {
        for (QAction *action : m_window.findChildren<QAction *>())
            if (action->shortcut() == QKeySequence(keys))
                action->trigger();
    }

    Radio &m_radio;
    MainWindow &m_window;
    std::vector<Use> m_uses;
    std::mt19937 m_random{1};
    const Use *m_now = nullptr;
    bool m_isActing = false;
};

/// How late the ticks come.
class Ticks
{
public:
    explicit Ticks(Probe &probe) : m_probe(probe)
    {
        m_wallMs = cpuMs(CLOCK_MONOTONIC);
        m_cpuMs = cpuMs(CLOCK_THREAD_CPUTIME_ID);
        m_queuedMs = queuedMs();
    }

    void tick(const Use *use)
    {
        const double wall = cpuMs(CLOCK_MONOTONIC);
        const double cpu = cpuMs(CLOCK_THREAD_CPUTIME_ID);
        const double late = std::max(0.0, wall - m_wallMs - kTickMs);
        const double worked = cpu - m_cpuMs;
        const double queued = queuedMs();
        const double own = std::max(0.0, late - (queued - m_queuedMs));
        m_queuedMs = queued;
        m_wallMs = wall;
        m_cpuMs = cpu;
        ++m_late[binOf(late)];
        ++m_own[binOf(own)];
        ++m_worked[binOf(worked)];
        const Span longest = m_probe.takeLongest();
        const bool isDevices = use && use->isDevices;
        m_isBad |= worked > kLongestMs && !isDevices;
        if (own <= kLongestMs && worked <= kLongestMs)
            return;
        std::printf("  stood still of its own %.0f ms, worked %.0f ms, after \"%s\"%s; longest "
                    "event %s %d: %.0f "
                    "ms, %.0f worked\n",
            own, worked, use ? use->name : "-", isDevices ? " (the device's own)" : "",
            longest.receiver, longest.event, longest.wallMs, longest.cpuMs);
        std::fflush(stdout);
    }

    bool tell() const
    {
        std::printf("%12s %12s %12s %12s\n", "ms", "stood still", "of its own", "worked");
        for (std::size_t i = 0; i < kBinsMs.size(); ++i)
            std::printf("%8s %3.0f %12d %12d %12d\n", i + 1 < kBinsMs.size() ? "up to" : "over",
                kBinsMs[std::min(i, kBinsMs.size() - 2)], m_late[i], m_own[i], m_worked[i]);
        return !m_isBad;
    }

private:
    static std::size_t binOf(double ms)
    {
        return std::size_t(std::lower_bound(kBinsMs.begin(), kBinsMs.end(), ms) - kBinsMs.begin());
    }

    Probe &m_probe;
    double m_wallMs;
    double m_cpuMs;
    double m_queuedMs;
    std::array<int, kBinsMs.size()> m_late{};
    std::array<int, kBinsMs.size()> m_own{};
    std::array<int, kBinsMs.size()> m_worked{};
    bool m_isBad = false;
};

/// Makes the plots of both views so large together.
void sizeViews(MainWindow &window)
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        const QSize now(window.panorama().plot().width(),
            window.panorama().plot().height() + window.waterfall().plot().height());
        window.resize(window.size() + kViews - now);
    }
}
} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const auto application = test::applicationOffscreen<Probe>(argc, argv);
    Probe &probe = *application;
    QStringList arguments = probe.arguments();
    const double seconds = arguments.value(1).toDouble();
    const bool isStill = arguments.removeAll("still") > 0;
    test::TestRadio bench(kBand);
    if (seconds <= 0.0 || !bench.start({"--rate", arguments.value(2, "192000")})) {
        std::fprintf(stderr, "usage: %s SECONDS [still] [RATE] [LINES]\n", argv[0]);
        return 2;
    }
    MainWindow window(bench.radio(), bench.path("bookmarks.csv"));
    window.lines().setPerSecond(arguments.value(3, "25").toInt());
    window.loadPanel(bench.path("panel.conf"));
    window.show();
    if (isStill)
        sizeViews(window);
    test::serve(2000);

    RandomUse use(bench.radio(), window);
    Ticks ticks(probe);
    QTimer using_, ticking;
    ticking.setTimerType(Qt::PreciseTimer);
    QObject::connect(&ticking, &QTimer::timeout, [&] { ticks.tick(use.now()); });
    QObject::connect(&using_, &QTimer::timeout, [&] { use.act(); });
    const double wall = cpuMs(CLOCK_MONOTONIC);
    const double thread = cpuMs(CLOCK_THREAD_CPUTIME_ID);
    const double process = cpuMs(CLOCK_PROCESS_CPUTIME_ID);
    // What ticks 200 times a second is work, too.
    if (!isStill) {
        ticking.start(kTickMs);
        using_.start(kUseMs);
    }
    test::serve(int(seconds * 1000.0));
    ticking.stop();
    using_.stop();
    const double took = cpuMs(CLOCK_MONOTONIC) - wall;
    std::printf("%.0f s: the window's thread %.1f %% of a core, the whole program %.1f %%\n",
        took / 1e3, (cpuMs(CLOCK_THREAD_CPUTIME_ID) - thread) / took * 100.0,
        (cpuMs(CLOCK_PROCESS_CPUTIME_ID) - process) / took * 100.0);
    if (isStill) {
        std::printf("views %d x %d, %d lines a second wanted\n", window.panorama().plot().width(),
            window.panorama().plot().height() + window.waterfall().plot().height(),
            window.lines().perSecond());
        return 0;
    }
    return ticks.tell() ? 0 : 1;
}
