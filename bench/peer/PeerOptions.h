// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <QString>
#include <QStringList>

namespace bench
{
/// What is measured, from the command line and the environment.
struct PeerOptions
{
    /// A mode as other receivers know it, and what it is here.
    struct Mode
    {
        const char *name;
        DspCore::Modulation modulation;
        double lowHz; // band filter, relative to the tuned frequency
        double highHz;
        bool stereo;    // one station in both ears; else channel A left, channel B right
        double floorDb; // least SINAD where it is not sigtool's to judge, else 0
    };

    const Mode *mode = nullptr;
    int rateHz = 0;
    int taps = 1570;
    double linesPerSecond = 0.0;
    bool tools = false;
    double seconds = 0.0; // of IQ in one run
    QString sigtool;

    int runs = 7; // BENCH_RUNS
    int cpu = 1;  // BENCH_CPU, -1: any

    /// Ends the program with a message and status 2 if the options are not to be used, and with
    /// status 0 after --help.
    static PeerOptions parse(const QStringList &arguments);
};
} // namespace bench
