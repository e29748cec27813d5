// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QtGlobal>

namespace fuzz
{
/// The Qt program around a fuzzer that needs one: Application is QCoreApplication, or QApplication
/// where there are widgets, which then need no screen. What is logged is dropped: it would be the
/// most expensive part of an execution.
template <typename Application>
void beQtProgram()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](auto, auto &, auto &) {});
    static int count = 1;
    static char name[] = "fuzz";
    static char *arguments[] = {name, nullptr};
    new Application(count, arguments); // to the end of the process
}
} // namespace fuzz
