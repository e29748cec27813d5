// SPDX-License-Identifier: GPL-3.0-or-later
#include "d2xx/usb/info/DeviceReport.h"

#include "d2xx/usb/Chip.h"
#include "d2xx/usb/UsbDevice.h"

#include <algorithm>
#include <array>

namespace d2xx
{
namespace
{
constexpr std::size_t kLineBytes = 16;
constexpr std::uint32_t kStreamOn = 1u
    << 19; // of the receiver's state word; the rate's code in 0..3
constexpr ULONG kTimeoutMs = 200;
constexpr ULONG kTransferBytes = 32768;
constexpr UCHAR kLatencyMs = 36;

std::shared_ptr<UsbDevice> openDevice(const DeviceEntry &entry, std::FILE *to)
{
    FT_STATUS status = FT_OK;
    auto device = UsbDevice::open(entry, &status);
    if (!device)
        std::fprintf(to, "failed to open %s: status %u\n", entry.serial.c_str(), status);
    return device;
}

/// The receiver's command 2, state: five marker bytes, 1, the command, the word from its low byte
/// on.
FT_STATUS sendState(UsbDevice &device, std::uint32_t word)
{
    std::array<std::uint8_t, 11> packet = {0x55, 0x55, 0x55, 0x55, 0x55, 0x01, 0x02};
    for (std::size_t i = 0; i < 4; ++i)
        packet[7 + i] = std::uint8_t(word >> 8 * i);
    DWORD taken = 0;
    return device.write(packet.data(), DWORD(packet.size()), &taken);
}

/// The steps after which the port is a synchronous FIFO, the first that fails ends them.
FT_STATUS prepareStream(UsbDevice &device)
{
    FT_STATUS status = device.resetDevice();
    const auto step = [&](auto &&call) {
        if (status == FT_OK)
            status = call();
    };
    step([&] { return device.setBitMode(0xff, FT_BITMODE_RESET); });
    step([&] { return device.setBitMode(0xff, FT_BITMODE_SYNC_FIFO); });
    step([&] { return device.setLatencyTimer(kLatencyMs); });
    step([&] { return device.setTransferSizes(kTransferBytes, kTransferBytes); });
    step([&] { return device.setFlowControl(FT_FLOW_RTS_CTS, 0, 0); });
    step([&] { return device.setTimeouts(kTimeoutMs, kTimeoutMs); });
    step([&] { return device.purge(FT_PURGE_RX | FT_PURGE_TX); });
    return status;
}
} // namespace

void DeviceReport::line(std::size_t index, const DeviceEntry &entry) const
{
    std::string way;
    for (const std::uint8_t port : entry.place.hubPorts) {
        if (port && !way.empty())
            way += '.';
        if (port)
            way += std::to_string(port);
    }
    std::fprintf(m_to, "%zu  %-7s  bus %d port %-8s  serial \"%s\"  \"%s\"\n", index,
        entry.chip->name, entry.place.bus, way.c_str(), entry.serial.c_str(),
        entry.description.c_str());
}

bool DeviceReport::eeprom(const DeviceEntry &entry, const std::string &backupFile) const
{
    const auto device = openDevice(entry, m_to);
    if (!device)
        return false;
    EepromImage image;
    if (const FT_STATUS status = device->readEeprom(&image)) {
        std::fprintf(m_to, "failed to read the EEPROM: status %u%s\n", status,
            status == FT_EEPROM_NOT_PROGRAMMED ? ", it is blank or of an unknown kind" : "");
        return false;
    }
    const std::size_t size = 2 * image.words().size();
    const auto bytes = image.bytes(0, size);
    for (std::size_t at = 0; at < size; at += kLineBytes) {
        std::string hex;
        std::string letters;
        for (std::size_t i = at; i < at + kLineBytes; ++i) {
            std::array<char, 4> text;
            std::snprintf(text.data(), text.size(), "%02x ", bytes[i]);
            hex += text.data();
            letters += bytes[i] >= ' ' && bytes[i] < 0x7f ? char(bytes[i]) : '.';
        }
        std::fprintf(m_to, "%02zx  %s %s\n", at, hex.c_str(), letters.c_str());
    }
    std::fprintf(m_to, "checksum %04x, %s\n", image.words().back(),
        image.checksumHolds() ? "right" : "WRONG");
    const auto area = image.userArea();
    if (area)
        std::fprintf(m_to, "user area %zu bytes from byte %zu on\n", area->size, area->start);
    else
        std::fprintf(m_to, "no user area\n");
    bool found = false;
    for (auto page = image.findCalibration(); page; page = image.findCalibration(*page + 1)) {
        found = true;
        std::fprintf(m_to, "calibration page with its right CRC at byte %zu%s\n", *page,
            area && *page == area->start ? "" : ", NOT where the user area starts");
    }
    if (!found)
        std::fprintf(m_to, "no calibration page with a right CRC\n");
    if (backupFile.empty())
        return true;
    if (!Eeprom::backUp(image, backupFile))
        return false;
    std::fprintf(m_to, "copy in %s\n", backupFile.c_str());
    return true;
}

bool DeviceReport::streamRate(const DeviceEntry &entry, unsigned rateCode, double seconds) const
{
    const auto device = openDevice(entry, m_to);
    if (!device)
        return false;
    FT_STATUS status = prepareStream(*device);
    if (status == FT_OK)
        status = sendState(*device, kStreamOn | rateCode);
    using Clock = std::chrono::steady_clock;
    std::vector<std::uint8_t> block(kTransferBytes);
    std::uint64_t bytes = 0;
    const auto start = Clock::now();
    auto now = start;
    while (status == FT_OK && now - start < std::chrono::duration<double>(seconds)) {
        DWORD got = 0;
        status = device->read(block.data(), DWORD(block.size()), &got);
        bytes += got;
        now = Clock::now();
    }
    if (status == FT_OK)
        status = sendState(*device, 0);
    if (status != FT_OK) {
        std::fprintf(m_to, "failed to stream: status %u\n", status);
        return false;
    }
    const double time = std::chrono::duration<double>(now - start).count();
    const StreamPump::Statistics seen = device->statistics();
    std::fprintf(m_to,
        "%.3f MB/s over %.1f s in %llu transfers, %llu failed; fewest waiting %zu of %zu, "
        "longest time without one waiting %lld us, longest gap between two %lld us\n",
        double(bytes) / time * 1e-6, time, static_cast<unsigned long long>(seen.transfers),
        static_cast<unsigned long long>(seen.failed), seen.fewestQueued, StreamPump::kTransfers,
        static_cast<long long>(seen.longestUnqueued.count()),
        static_cast<long long>(seen.longestGap.count()));
    return true;
}
} // namespace d2xx
