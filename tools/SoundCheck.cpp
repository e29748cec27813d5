// SPDX-License-Identifier: GPL-3.0-or-later
// Listens with the receiver on a sound card and tells how the clocks get on, see
// scripts/check-sound.sh. Takes the options of velmora-host; --seconds is the time from the first
// sound on. Its exit status is 1 if there was a gap.
#include "radio/Radio.h"
#include "settings/CommandLine.h"
#include "sound/SoundDesk.h"

#include <QApplication>
#include <QLoggingCategory>

#include <cstdio>

namespace
{
constexpr int kTellMs = 10000;

void tell(const host::SoundStream::Status &status)
{
    std::printf("delay %.1f ms, correction %+.1f millionths, %llu gaps, %llu skips, %llu lost\n",
        status.delaySeconds * 1e3, status.correction * 1e6, (unsigned long long)(status.gaps),
        (unsigned long long)(status.skips), (unsigned long long)(status.lostFrames));
    std::fflush(stdout);
}
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int taken = 1;
    QApplication application(taken, argv);
    QCoreApplication::setApplicationName("velmora-host");
    QLoggingCategory::setFilterRules("*.debug=false"); // a line for each block of audio
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    const auto command = host::readCommandLine(arguments);
    const auto *settings = std::get_if<host::HostSettings>(&command);
    host::Radio radio;
    if (!settings || !radio.load(*settings)) {
        std::fprintf(stderr, "%s\n", settings ? qPrintable(radio.error()) : "wrong options");
        return 2;
    }
    host::SoundDesk desk(radio);
    host::SoundOutput &output = desk.speaker().output();
    QTimer end, telling;
    QObject::connect(&output, &host::SoundOutput::stateChanged, [&](bool, const QString &text) {
        std::printf("sound: %s\n", qPrintable(text));
        if (output.isPlaying() && !end.isActive())
            end.start(int(settings->seconds * 1000.0));
    });
    QObject::connect(&telling, &QTimer::timeout, [&] { tell(output.stream().status()); });
    QObject::connect(&end, &QTimer::timeout, &application, &QApplication::quit);
    output.setDevice({});
    telling.start(kTellMs);
    radio.setPower(true);
    QApplication::exec();
    const auto status = output.stream().status();
    tell(status);
    return status.gaps + status.skips + status.lostFrames == 0 ? 0 : 1;
}
