// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/SenderKeyToSystemLinux.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>
#include <QThread>

#include <gtest/gtest.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace
{
constexpr int kWaitMs = 10000; // a busy machine

/// A desktop of its own with one window, which has the focus.
class Desktop
{
public:
    Desktop()
    {
        // The server chooses a free number and writes it down.
        m_server.setReadChannel(QProcess::StandardOutput);
        m_server.start(
            "Xvfb", {"-displayfd", "1", "-screen", "0", "100x100x24", "-nolisten", "tcp"});
        while (!m_server.canReadLine() && m_server.waitForReadyRead(kWaitMs)) { }
        m_before = qgetenv("DISPLAY");
        qputenv("DISPLAY", ':' + m_server.readLine().trimmed());
        m_display = XOpenDisplay(nullptr);
        if (!m_display)
            return;
        const Window window =
            XCreateSimpleWindow(m_display, DefaultRootWindow(m_display), 0, 0, 50, 50, 0, 0, 0);
        XSelectInput(m_display, window, KeyPressMask | KeyReleaseMask | ExposureMask);
        XMapWindow(m_display, window);
        XEvent event;
        do
            XNextEvent(m_display, &event);
        while (event.type != Expose);
        XSetInputFocus(m_display, window, RevertToParent, CurrentTime);
        XSync(m_display, False);
    }

    ~Desktop()
    {
        if (m_display)
            XCloseDisplay(m_display);
        qputenv("DISPLAY", m_before);
        m_server.terminate();
        m_server.waitForFinished(kWaitMs);
    }

    bool isThere() const { return m_display; }

    /// "+a -a" and so on, of so many events.
    QStringList typed(int events)
    {
        QStringList list;
        QElapsedTimer clock;
        for (clock.start(); list.size() < events && !clock.hasExpired(kWaitMs); QThread::msleep(5))
            while (XPending(m_display) > 0) {
                XEvent event;
                XNextEvent(m_display, &event);
                if (event.type == KeyPress || event.type == KeyRelease)
                    list += (event.type == KeyPress ? '+' : '-')
                        + QString(XKeysymToString(XLookupKeysym(&event.xkey, 0)));
            }
        return list;
    }

private:
    QProcess m_server;
    QByteArray m_before;
    Display *m_display = nullptr;
};

TEST(SenderKeyToSystemTest, TheProgramWithTheFocusGetsTheKeys)
{
    if (QStandardPaths::findExecutable("Xvfb").isEmpty())
        GTEST_SKIP() << "Xvfb is not installed (Debian package xvfb)";
    Desktop desktop;
    ASSERT_TRUE(desktop.isThere());
    const std::pair<const char *, const char *> cases[] = {
        {"a", "+a -a"},
        {"Ctrl+Shift+F5", "+Control_L +Shift_L +F5 -F5 -Shift_L -Control_L"},
        {"Alt_L + Return", "+Alt_L +Return -Return -Alt_L"},
        {"A", "+Shift_L +a -a -Shift_L"},
        {"question", "+Shift_L +slash -slash -Shift_L"},
    };
    host::SenderKeyToSystemLinux sender;
    for (const auto &[keys, events] : cases) {
        EXPECT_TRUE(sender.send(keys)) << sender.error().toStdString();
        EXPECT_EQ(desktop.typed(QString(events).count(' ') + 1).join(' ').toStdString(), events);
    }
    for (const char *bad : {"", "Ctrl+Nosuchkey", "+", "Hangul_Kiyeog"})
        EXPECT_FALSE(sender.send(bad)) << bad;
    EXPECT_TRUE(sender.send("b"));
    EXPECT_EQ(desktop.typed(2).join(' '), "+b -b") << "of a bad one nothing was sent";
}

TEST(SenderKeyToSystemTest, TellsThatThereIsNoDesktop)
{
    const QByteArray before = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":9999");
    host::SenderKeyToSystemLinux sender;
    EXPECT_FALSE(sender.send("a"));
    EXPECT_TRUE(sender.error().contains("X server"));
    qputenv("DISPLAY", before);
}
} // namespace
