// SPDX-License-Identifier: GPL-3.0-or-later
// A picture of the receiver's window on the built-in band, without a display, see
// scripts/screenshots.sh.
// usage: window_screenshots FILE WIDTH HEIGHT dark|light SECONDS [WHAT]
// SECONDS are those that the waterfall shows. WHAT: "first" for the first start, or the dialog
// bookmarks, panel, equalizer, notches, options. The scale is that of QT_SCALE_FACTOR.
#include "window/frame/MainWindow.h"
#include "window/frame/Theme.h"

#include "program/WindowRun.h"
#include "radio/Radio.h"
#include "settings/CommandLine.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLoggingCategory>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace
{
constexpr char kPanel[] = "device PowerMate\n"
                          "knob REL_DIAL tune\n"
                          "key BTN_0 step next\n"
                          "shortcut Ctrl+Shift+M mute\n"
                          "turn Alt+Up Alt+Down volume fixed 2\n"
                          "key KEY_F5 send Ctrl+L\n";

/// What a person has set up after some days.
void setUp(host::Radio &radio)
{
    radio.setFrequency(host::VfoId::B, 7.0855e6);
    radio.addNotch(7.091e6, 200.0);
}

/// The dialog that an action of the menu opens; the window itself if there is none.
QWidget *opened(host::MainWindow &window, const QString &what)
{
    const QMap<QString, QString> keys = {{"bookmarks", "Ctrl+B"}, {"panel", "Ctrl+K"},
        {"equalizer", "Ctrl+E"}, {"notches", "Ctrl+N"}, {"options", "Ctrl+,"}};
    for (QAction *action : window.findChildren<QAction *>())
        if (keys.contains(what) && action->shortcut() == QKeySequence(keys[what]))
            action->trigger();
    for (QDialog *dialog : window.findChildren<QDialog *>())
        if (dialog->isVisible())
            return dialog;
    return &window;
}
} // namespace

int main(int argc, char **argv)
{
    if (argc < 6) {
        std::fprintf(stderr, "usage: %s FILE WIDTH HEIGHT dark|light SECONDS [WHAT]\n", argv[0]);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    host::WindowRun::prepareScale({});
    int taken = 1;
    QApplication application(taken, argv);
    QCoreApplication::setApplicationName("velmora-host");
    QLoggingCategory::setFilterRules("*.debug=false");
    const QString file = QString::fromLocal8Bit(argv[1]);
    const QSize size(atoi(argv[2]), atoi(argv[3]));
    const auto theme =
        QByteArray(argv[4]) == "dark" ? host::Theme::Choice::Dark : host::Theme::Choice::Light;
    const QString what = argc > 6 ? argv[6] : QString();

    const QTemporaryDir folder;
    {
        QSettings settings(folder.filePath("settings.ini"), QSettings::IniFormat);
        settings.setValue("Window/theme", int(theme));
        if (what != "first")
            settings.setValue("Window/welcomed", true);
        QFile panel(folder.filePath("panel.conf"));
        if (panel.open(QIODevice::WriteOnly))
            panel.write(kPanel);
    }
    const auto command = host::readCommandLine({"velmora-host", "--headless", "--plugin",
        PLUGIN_FILE, "--d2xx", VIRTUAL_D2XX, "--settings", folder.filePath("settings.ini")});
    host::Radio radio;
    if (!radio.load(std::get<host::HostSettings>(command))) {
        std::fprintf(stderr, "%s\n", qPrintable(radio.error()));
        return 1;
    }
    host::MainWindow window(radio, folder.filePath("bookmarks.csv"));
    window.loadPanel(folder.filePath("panel.conf"));
    window.resize(size);
    window.show();
    if (what != "first")
        setUp(radio);
    radio.setPower(true);
    bool isSaved = false;
    QTimer::singleShot(int(atof(argv[5]) * 1000.0), [&] {
        QWidget *widget = opened(window, what);
        QTimer::singleShot(300, [&, widget] {
            isSaved = widget->grab().save(file);
            QApplication::quit();
        });
    });
    QApplication::exec();
    std::fprintf(stderr, "%s %s\n", isSaved ? "wrote" : "cannot write", qPrintable(file));
    return isSaved ? 0 : 1;
}
