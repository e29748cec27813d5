// SPDX-License-Identifier: GPL-3.0-or-later
// Transfers as a chip may end them, whole, cut, empty or failed, through the pump to a reader.
#include "FuzzInput.h"
#include "d2xx/FakeUsb.h"
#include "d2xx/ftd2xx.h"

#include <array>
#include <cstdlib>
#include <thread>

namespace
{
using fuzz::require;

constexpr std::size_t kMostTransfers = 40; // fewer in a row than take the device for gone
constexpr std::size_t kStatusBytes = 2;
constexpr std::size_t kTransferBytes = 4096; // before any other size is asked for
constexpr unsigned kTimeoutMs = 5000;

FT_HANDLE port();

/// The port is opened once and stays open: what opening costs is no matter of packets.
FT_HANDLE port()
{
    static const FT_HANDLE the = [] {
        FakeUsb::instance().reset();
        FakeUsb::instance().plug({});
        DWORD count = 0;
        FT_HANDLE handle = nullptr;
        FT_ListDevices(&count, nullptr, FT_LIST_NUMBER_ONLY);
        require(FT_Open(0, &handle) == FT_OK, "the device opens");
        FT_SetTimeouts(handle, kTimeoutMs, kTimeoutMs);
        std::atexit([] { FT_Close(port()); }); // its thread must end before the bus does
        return handle;
    }();
    return the;
}

/// Without the status bytes, which stand in front of each packet.
void appendPayload(const std::vector<std::uint8_t> &transfer, std::vector<std::uint8_t> &payload)
{
    for (std::size_t at = 0; at + kStatusBytes < transfer.size(); at += FakeUsb::kPacket) {
        const std::size_t end = std::min(at + FakeUsb::kPacket, transfer.size());
        payload.insert(payload.end(), transfer.begin() + std::ptrdiff_t(at + kStatusBytes),
            transfer.begin() + std::ptrdiff_t(end));
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // A stall is left out: it takes back what is on its way, and where that happens is chance.
    constexpr std::array kEndings = {LIBUSB_TRANSFER_COMPLETED, LIBUSB_TRANSFER_COMPLETED,
        LIBUSB_TRANSFER_COMPLETED, LIBUSB_TRANSFER_TIMED_OUT, LIBUSB_TRANSFER_ERROR,
        LIBUSB_TRANSFER_OVERFLOW};
    const FT_HANDLE handle = port();
    FakeUsb &usb = FakeUsb::instance();
    fuzz::Input input(data, size);
    std::vector<FakeUsb::RawTransfer> transfers;
    std::vector<std::uint8_t> expected;
    while (!input.isEmpty() && transfers.size() < kMostTransfers) {
        FakeUsb::RawTransfer transfer{kEndings[input.below(kEndings.size())], {}};
        const auto bytes = input.bytes(input.take<std::uint8_t>());
        transfer.bytes.assign(bytes.begin(), bytes.end());
        transfer.bytes.resize(std::min(input.below(kTransferBytes + 1), kTransferBytes),
            std::uint8_t(transfers.size()));
        appendPayload(transfer.bytes, expected);
        transfers.push_back(std::move(transfer));
    }
    transfers.push_back({}); // one that ended well: failures in a row begin anew
    usb.sendRaw(std::move(transfers));
    for (std::size_t done = 0; done < expected.size();) {
        std::array<std::uint8_t, 3000> piece;
        const auto wanted = DWORD(std::min(piece.size(), expected.size() - done));
        DWORD got = 0;
        require(FT_Read(handle, piece.data(), wanted, &got) == FT_OK, "the device is there");
        require(got == wanted, "all that was sent arrives");
        require(std::equal(piece.begin(), piece.begin() + got, expected.begin() + long(done)),
            "what was sent arrives in its order");
        done += got;
    }
    while (usb.rawLeft() > 0)
        std::this_thread::yield();
    return 0;
}
