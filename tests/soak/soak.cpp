// SPDX-License-Identifier: GPL-3.0-or-later
// Long runs of the loaded plugin on a virtual receiver that sends as fast as it is read: see
// docs/soak.md.
#include "SoakRun.h"
#include "support/applicationOffscreen.h"

#include <QCommandLineParser>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <malloc.h>
#include <thread>

namespace
{
constexpr double kSecondsPerHour = 3600.0;
constexpr int kKeptFree = 128 * 1024;          // bytes
constexpr double kShareAtHighest = 1.0 / 12.0; // of the stream's hours

double number(const QCommandLineParser &parser, const char *option)
{
    return parser.value(option).toDouble();
}
} // namespace

int main(int argc, char **argv)
{
    // What is free at the end of a thread's heap goes back as soon as it is so much. The allocator
    // would by itself raise that to tens of MiB, and malloc_trim() does not look there.
    mallopt(M_TRIM_THRESHOLD, kKeptFree);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const auto application = test::applicationOffscreen(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{"hours", "Hours of stream at 192 kHz; a twelfth of it at 3.072 MHz.", "H"},
        {"minutes", "Minutes of stream between two checks, each with its line.", "M", "10"},
        {"rate", "Only this rate, in hertz.", "HZ", "0"},
        {"seed", "Of all that is random.", "N", "1"}});
    parser.addHelpOption();
    parser.process(*application);
    const double hours = number(parser, "hours");
    if (!(hours > 0.0) || !(number(parser, "minutes") > 0.0)) {
        std::fprintf(stderr, "soak: --hours and --minutes must be above 0\n");
        return 2;
    }

    // With the first thread the thread sanitizer makes one of its own, which stays. It is there
    // before threads are counted.
    std::thread([] {}).join();

    const auto began = std::chrono::steady_clock::now();
    std::vector<std::string> faults;
    soak::SoakPlan plan;
    plan.checkSeconds = 60.0 * number(parser, "minutes");
    plan.seed = parser.value("seed").toUInt();
    for (const auto &[rateHz, share] :
        {std::pair(192e3, 1.0), std::pair(3.072e6, kShareAtHighest)}) {
        if (number(parser, "rate") != 0.0 && number(parser, "rate") != rateHz)
            continue;
        plan.rateHz = rateHz;
        plan.seconds = share * hours * kSecondsPerHour;
        const auto found = soak::runSoak(plan);
        faults.insert(faults.end(), found.begin(), found.end());
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - began;
    for (const std::string &fault : faults)
        std::printf("FAULT %s\n", fault.c_str());
    std::printf(
        "%s: %g hours in %.0f s\n", faults.empty() ? "well" : "failed", hours, took.count());
    return faults.empty() ? 0 : 1;
}
