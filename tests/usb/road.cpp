// SPDX-License-Identifier: GPL-3.0-or-later
// What a program does with a receiver, through the FT_ functions, against an emulated one.
// usage: usb-road stream INDEX SECONDS   check each byte of a counting stream
//        usb-road pulled INDEX           stream until the device goes; it has to fail at once
//        usb-road eeprom INDEX           write a page to the user area and read it back
//        usb-road part HEADER PART WHOLE  what follows the header of a file is a piece of the other
#include "counting.h"

#include "d2xx/ftd2xx.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <vector>

namespace
{
using Clock = std::chrono::steady_clock;

constexpr ULONG kWindow = 32768; // the plugin's at 3.072 MHz
constexpr ULONG kTimeoutMs = 200;

int failed(const char *step, FT_STATUS status)
{
    std::printf("%s failed: status %u\n", step, status);
    return 1;
}

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// The plugin's order of calls.
FT_STATUS openReceiver(int index, FT_HANDLE *handle)
{
    DWORD count = 0;
    FT_STATUS status = FT_ListDevices(&count, nullptr, FT_LIST_NUMBER_ONLY);
    const auto step = [&status](auto &&call) {
        if (status == FT_OK)
            status = call();
    };
    step([&] { return FT_Open(index, handle); });
    step([&] { return FT_ResetDevice(*handle); });
    step([&] { return FT_SetBitMode(*handle, 0xff, FT_BITMODE_RESET); });
    step([&] { return FT_SetBitMode(*handle, 0xff, FT_BITMODE_SYNC_FIFO); });
    step([&] { return FT_SetLatencyTimer(*handle, 36); });
    step([&] { return FT_SetUSBParameters(*handle, kWindow, kWindow); });
    step([&] { return FT_SetFlowControl(*handle, FT_FLOW_RTS_CTS, 0, 0); });
    step([&] { return FT_SetTimeouts(*handle, kTimeoutMs, kTimeoutMs); });
    step([&] { return FT_Purge(*handle, FT_PURGE_RX | FT_PURGE_TX); });
    return status;
}

FT_STATUS setStreaming(FT_HANDLE handle, bool on)
{
    std::array<std::uint8_t, 11> packet = {
        0x55, 0x55, 0x55, 0x55, 0x55, 1, 2, 8, 0, std::uint8_t(on ? 8 : 0), 0};
    DWORD taken = 0;
    return FT_Write(handle, packet.data(), DWORD(packet.size()), &taken);
}

/// Bytes that are not those of the counting stream from a position on.
std::uint64_t wrongBytes(std::span<const std::uint8_t> data, std::uint64_t position)
{
    static std::vector<std::uint8_t> expected(kWindow);
    countFrom(position, std::span(expected).first(data.size()));
    if (std::memcmp(data.data(), expected.data(), data.size()) == 0)
        return 0;
    std::uint64_t wrong = 0;
    for (std::size_t i = 0; i < data.size(); ++i)
        wrong += data[i] != expected[i];
    return wrong;
}

int stream(int index, double seconds, bool untilPulled)
{
    FT_HANDLE handle = nullptr;
    if (const FT_STATUS status = openReceiver(index, &handle))
        return failed("opening", status);
    if (const FT_STATUS status = setStreaming(handle, true))
        return failed("starting", status);
    std::puts("streaming");
    std::fflush(stdout);
    std::vector<std::uint8_t> data(kWindow);
    std::uint64_t bytes = 0;
    std::uint64_t wrong = 0;
    unsigned timeouts = 0;
    double longest = 0.0;
    const auto start = Clock::now();
    FT_STATUS status = FT_OK;
    while (status == FT_OK && secondsSince(start) < seconds) {
        const auto call = Clock::now();
        DWORD got = 0;
        status = FT_Read(handle, data.data(), kWindow, &got);
        longest = std::max(longest, secondsSince(call));
        wrong += wrongBytes(std::span(data).first(got), bytes);
        bytes += got;
        timeouts += got < kWindow;
    }
    const double time = secondsSince(start);
    const auto closing = Clock::now();
    if (!untilPulled)
        setStreaming(handle, false);
    const FT_STATUS closed = FT_Close(handle);
    std::printf("%llu bytes, %.2f MB/s, %llu wrong, %u reads short, longest read %.0f ms, "
                "status %u, closed in %.0f ms\n",
        static_cast<unsigned long long>(bytes), double(bytes) / time * 1e-6,
        static_cast<unsigned long long>(wrong), timeouts, longest * 1e3, status,
        secondsSince(closing) * 1e3);
    const bool ended = untilPulled ? status == FT_IO_ERROR && time < seconds : status == FT_OK;
    return ended && wrong == 0 && bytes > 0 && closed == FT_OK ? 0 : 1;
}

int eeprom(int index)
{
    FT_HANDLE handle = nullptr;
    if (const FT_STATUS status = openReceiver(index, &handle))
        return failed("opening", status);
    DWORD size = 0;
    if (const FT_STATUS status = FT_EE_UASize(handle, &size))
        return failed("FT_EE_UASize", status);
    std::vector<std::uint8_t> page(size);
    for (DWORD i = 0; i < size; ++i)
        page[i] = std::uint8_t(i * 37 + 5);
    if (const FT_STATUS status = FT_EE_UAWrite(handle, page.data(), size))
        return failed("FT_EE_UAWrite", status);
    std::vector<std::uint8_t> found(size);
    DWORD got = 0;
    if (const FT_STATUS status = FT_EE_UARead(handle, found.data(), size, &got))
        return failed("FT_EE_UARead", status);
    std::printf("user area of %u bytes, %s\n", size,
        got == size && found == page ? "read back as written" : "read back OTHERWISE");
    FT_Close(handle);
    return got == size && found == page ? 0 : 1;
}
std::vector<char> contentAfter(std::size_t header, const char *file)
{
    std::ifstream stream(file, std::ios::binary);
    stream.seekg(std::streamoff(header));
    return {std::istreambuf_iterator<char>(stream), {}};
}

int part(std::size_t header, const char *partFile, const char *wholeFile)
{
    const auto piece = contentAfter(header, partFile);
    const auto whole = contentAfter(header, wholeFile);
    // A program begins to record some blocks after the stream begins.
    constexpr std::size_t kKeyBytes = 600;
    const auto key = std::span(piece).first(std::min(piece.size(), kKeyBytes));
    const auto found = std::ranges::search(whole, key);
    const auto [end, other] =
        std::ranges::mismatch(piece, std::ranges::subrange(found.begin(), whole.end()));
    std::printf("%zu bytes, the same as from byte %td on for %td bytes\n", piece.size(),
        found.begin() - whole.begin(), end - piece.begin());
    return !piece.empty() && end == piece.end() ? 0 : 1;
}
} // namespace

int main(int argc, char **argv)
{
    const std::string what = argc > 2 ? argv[1] : "";
    const int index = argc > 2 ? std::atoi(argv[2]) : 0;
    if (what == "stream" && argc == 4)
        return stream(index, std::atof(argv[3]), false);
    if (what == "pulled" && argc == 3)
        return stream(index, 60.0, true);
    if (what == "eeprom" && argc == 3)
        return eeprom(index);
    if (what == "part" && argc == 5)
        return part(std::size_t(index), argv[3], argv[4]);
    std::fprintf(stderr,
        "usage: %s stream INDEX SECONDS | pulled INDEX | eeprom INDEX | part HEADER PART WHOLE\n",
        argv[0]);
    return 2;
}
