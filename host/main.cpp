// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/HostLog.h"
#include "program/Listener.h"
#include "program/WindowRun.h"
#include "settings/CommandLine.h"

#include <QApplication>
#include <QIcon>
#include <QLocale>

#include <csignal>
#include <cstdio>

namespace
{
void print(std::FILE *where, const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), where);
}

/// The desktop knows program and icon by the name of its desktop file. An installation that the
/// desktop does not know has its icons beside the program.
void showIcon()
{
    const QString name = QStringLiteral("org.velmora.Host");
    QIcon::setThemeSearchPaths(
        QIcon::themeSearchPaths() << QCoreApplication::applicationDirPath() + "/../share/icons");
    QIcon::setFallbackThemeName("hicolor");
    QGuiApplication::setDesktopFileName(name);
    QApplication::setWindowIcon(QIcon::fromTheme(name));
}

QStringList argumentsOf(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    return arguments;
}
} // namespace

int main(int argc, char **argv)
{
    // Qt would take some of the program's options for its own.
    // A disk that is full and a pipe that nobody reads are told by the write that they refuse.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    const QStringList arguments = argumentsOf(argc, argv);
    int taken = 1;
    // Without a window the device still has an options page, which nobody sees.
    const bool isHeadless = arguments.contains("--headless");
    const bool hasScreen = host::WindowRun::isPossible();
    if (!isHeadless)
        host::WindowRun::prepareScale(arguments);
    if ((isHeadless || !hasScreen) && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    host::HostLog log;
    QApplication application(taken, argv);
    QCoreApplication::setApplicationName("velmora-host");
    QCoreApplication::setApplicationVersion(HOST_VERSION);
    showIcon();
    // The last window is a message box that nobody answered.
    QApplication::setQuitOnLastWindowClosed(false);

    const auto command = host::readCommandLine(arguments);
    if (const auto *information = std::get_if<host::Information>(&command)) {
        print(stdout, information->text);
        return 0;
    }
    if (const auto *error = std::get_if<host::UsageError>(&command)) {
        print(stderr, "velmora-host: " + error->text + '\n');
        return host::kUsageError;
    }
    const auto &settings = std::get<host::HostSettings>(command);
    log.setVerbose(settings.verbose);
    if (isHeadless) {
        QLocale::setDefault(QLocale::c()); // its report is the same everywhere
        return host::Listener(settings).run();
    }
    if (!hasScreen) {
        print(stderr, "velmora-host: there is no screen for the window; add --headless\n");
        return host::kUsageError;
    }
    return host::WindowRun::run(settings);
}
