// SPDX-License-Identifier: GPL-3.0-or-later
// Lists the receivers on the USB and tells what is in them.
#include "d2xx/usb/DeviceList.h"
#include "d2xx/usb/info/DeviceReport.h"

#include <getopt.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace
{
constexpr const char *kUsage =
    "usage: ftd2xx-info                            list the devices\n"
    "       ftd2xx-info --eeprom N [--backup FILE] show a device's EEPROM, keep a copy of it\n"
    "       ftd2xx-info --rate N [--code 0..8] [--seconds S]\n"
    "                                              measure the stream, at 48 kHz (0) to\n"
    "                                              3.072 MHz (8, as without --code)\n"
    "       ftd2xx-info --help                     show this text\n";

struct Request
{
    int eeprom = -1;
    int rate = -1;
    std::string backup;
    int code = 8;
    double seconds = 5.0;
    bool help = false;
};

/// A whole number from 0 to the highest; false for anything else.
bool readNumber(const std::string &text, int highest, int *value)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), *value);
    return error == std::errc() && end == text.data() + text.size() && *value >= 0
        && *value <= highest;
}

bool readSeconds(const std::string &text, double *value)
{
    char *end = nullptr;
    *value = std::strtod(text.c_str(), &end);
    return !text.empty() && *end == '\0' && *value > 0.0 && *value <= 86400.0;
}

bool readArguments(int argc, char **argv, Request *request)
{
    constexpr int kMostDevices = 1000;
    const option options[] = {
        {"eeprom", required_argument, nullptr, 'e'},
        {"backup", required_argument, nullptr, 'b'},
        {"rate", required_argument, nullptr, 'r'},
        {"code", required_argument, nullptr, 'c'},
        {"seconds", required_argument, nullptr, 's'},
        {"help", no_argument, nullptr, 'h'},
        {},
    };
    bool good = true;
    for (int c; good && (c = getopt_long(argc, argv, "", options, nullptr)) != -1;) {
        switch (c) {
        case 'e':
            good = readNumber(optarg, kMostDevices, &request->eeprom);
            break;
        case 'b':
            request->backup = optarg;
            break;
        case 'r':
            good = readNumber(optarg, kMostDevices, &request->rate);
            break;
        case 'c':
            good = readNumber(optarg, 8, &request->code);
            break;
        case 's':
            good = readSeconds(optarg, &request->seconds);
            break;
        case 'h':
            request->help = true;
            break;
        default:
            good = false;
        }
    }
    return good && optind == argc && (request->backup.empty() || request->eeprom >= 0);
}
} // namespace

int main(int argc, char **argv)
{
    Request request;
    if (!readArguments(argc, argv, &request)) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    if (request.help) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    d2xx::DeviceList list;
    if (const FT_STATUS status = list.scan()) {
        std::fprintf(stderr, "failed to look at the USB: status %u\n", status);
        return 1;
    }
    const d2xx::DeviceReport report(stdout);
    if (request.eeprom < 0 && request.rate < 0) {
        for (std::size_t i = 0; i < list.entries().size(); ++i)
            report.line(i, list.entries()[i]);
        if (list.entries().empty())
            std::puts("no device with a FIFO chip on the USB");
        return 0;
    }
    for (const int index : {request.eeprom, request.rate}) {
        if (index >= int(list.entries().size())) {
            std::fprintf(
                stderr, "there is no device %d, the list has %zu\n", index, list.entries().size());
            return 1;
        }
    }
    bool good = true;
    if (request.eeprom >= 0)
        good = report.eeprom(list.entries()[std::size_t(request.eeprom)], request.backup);
    if (good && request.rate >= 0) {
        good = report.streamRate(
            list.entries()[std::size_t(request.rate)], unsigned(request.code), request.seconds);
    }
    return good ? 0 : 1;
}
