// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of the options page, one a tab, and of the device menu, without a display.
// usage: options_screenshots FOLDER
#include "Control/DiscoverZephrinNANO.h"
#include "Options/ZephrinMOptions.h"

#include <QApplication>
#include <QMenu>
#include <QPixmap>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <cstdio>

namespace
{
bool save(QWidget &widget, const QString &path)
{
    const bool saved = widget.grab().save(path);
    std::fprintf(stderr, "%s %s\n", saved ? "wrote" : "cannot write", qPrintable(path));
    return saved;
}

// "CW, digital, FM" becomes "cw-digital-fm".
QString fileName(const QString &caption)
{
    QString name = caption.toLower();
    name.remove(',').remove('&').replace(' ', '-');
    return "options-" + name + ".png";
}
} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setStyle("Fusion");
    const QString folder = QString::fromLocal8Bit(argv[1]) + "/";

    DiscoverZephrinNANO::instance()->scan();
    ZephrinMOptions page;
    while (DiscoverZephrinNANO::instance()->isScanning())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QApplication::processEvents(); // what the scan found reaches the page
    const QTemporaryDir none;
    QSettings settings(none.filePath("none.ini"), QSettings::IniFormat);
    page.readSettings(&settings); // the values of a first start
    page.setStatus("connected");
    page.setPreampValue(-10.0f);
    page.show();

    bool saved = true;
    auto *tabs = page.findChild<QTabWidget *>("tbwOptions");
    for (int i = 0; i < tabs->count(); ++i) {
        tabs->setCurrentIndex(i);
        saved &= save(page, folder + fileName(tabs->tabText(i)));
    }
    page.deviceMenu()->popup({});
    saved &= save(*page.deviceMenu(), folder + "device-menu.png");
    return saved ? 0 : 1;
}
