// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/WindowRun.h"

#include "memory/RadioMemory.h"
#include "panel/Panel.h"
#include "program/StopSignal.h"
#include "radio/Radio.h"
#include "settings/Language.h"
#include "settings/SettingsStore.h"
#include "window/frame/MainWindow.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QSettings>

#include <cstdio>

namespace host
{
namespace
{
constexpr int kSuccess = 0;
constexpr int kBadInput = 2;

// What a window takes of the command line; the rest is for a run that ends by itself.
const QStringList kTaken = {"plugin", "device", "d2xx", "settings", "scene", "scene-format",
    "scene-rate", "scene-frequency", "rate", "center", "tune", "mode", "filter", "preamp",
    "auto-preamp", "rig-port", "eeprom", "fault", "verbose"};

QVariant stored(const QString &settingsFile, const char *key)
{
    const QString file = settingsFile.isEmpty() ? SettingsStore::defaultPath() : settingsFile;
    return QSettings(file, QSettings::IniFormat).value(key);
}

void print(const QString &text)
{
    std::fputs(("velmora-host: " + text + '\n').toLocal8Bit().constData(), stderr);
}
} // namespace

bool WindowRun::isPossible()
{
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY")
        || qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

void WindowRun::prepareScale(const QStringList &arguments)
{
    QGuiApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QGuiApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    if (qEnvironmentVariableIsSet("QT_SCALE_FACTOR"))
        return;
    const int given = arguments.indexOf("--settings");
    const QString file = given >= 0 ? arguments.value(given + 1) : QString();
    const int percent = stored(file, "Window/scale").toInt();
    if (percent >= 100 && percent <= 200)
        qputenv("QT_SCALE_FACTOR", QByteArray::number(percent / 100.0));
}

int WindowRun::run(const HostSettings &settings)
{
    Language &language = Language::instance();
    language.choose(stored(settings.settingsFile, "Window/language").toString());
    for (const QString &option : settings.given.keys())
        if (!kTaken.contains(option))
            print(
                QCoreApplication::translate("WindowRun", "--%1 has an effect with --headless only")
                    .arg(option));
    Radio radio;
    if (!radio.load(settings)) {
        print(radio.error());
        return kBadInput;
    }
    language.renew(); // the plugin has words of its own
    StopSignal stop;
    // Beside settings of one's own lie bookmarks and a control panel of one's own.
    const auto beside = [&settings](const QString &usual) {
        return settings.settingsFile.isEmpty()
            ? usual
            : QFileInfo(settings.settingsFile).dir().filePath(QFileInfo(usual).fileName());
    };
    MainWindow window(radio, beside(RadioMemory::defaultPath()));
    window.loadPanel(beside(Panel::defaultPath()));
    QObject::connect(&stop, &StopSignal::raised, &window, &QWidget::close);
    QApplication::setQuitOnLastWindowClosed(true);
    if (settings.rigPort)
        window.openRemote(*settings.rigPort);
    window.show();
    radio.setPower(true);
    QApplication::exec();
    return kSuccess;
}
} // namespace host
