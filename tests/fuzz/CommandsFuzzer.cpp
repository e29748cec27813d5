// SPDX-License-Identifier: GPL-3.0-or-later
// Bytes that a program writes to the virtual receiver, cut anywhere, with reads of the stream and
// calls for the EEPROM between them.
#include "FuzzInput.h"
#include "VirtualDevice.h"

#include <vector>

namespace
{
using fuzz::require;

constexpr std::size_t kMostRead = 2048; // bytes: four frames
constexpr ULONG kTimeoutMs = 1;

constexpr unsigned kPerForgetting = 1000; // executions, while the list of calls grows

/// Costs nothing and tells when it is used wrongly.
class PlainScene : public vr::Scene
{
public:
    void start(double rateHz, double) override { m_rateHz = rateHz; }
    void retune(double) override
    {
        require(m_rateHz > 0.0, "a scene is started before it is tuned");
    }
    void render(vr::Sample *out, std::size_t count) override
    {
        require(m_rateHz > 0.0, "a scene is started before it is rendered");
        std::fill_n(out, count, vr::Sample(1.25, -0.5)); // I is clipped
    }

private:
    double m_rateHz = 0.0;
};

/// The packets of a stream of bytes: five marker bytes and a type byte wherever they are, then five
/// bytes of anything.
std::size_t packetsIn(const std::vector<std::uint8_t> &bytes)
{
    constexpr std::uint8_t kHead[] = {0x55, 0x55, 0x55, 0x55, 0x55, 0x01};
    constexpr std::size_t kPacket = 11;
    std::size_t packets = 0;
    for (std::size_t at = 0; at + kPacket <= bytes.size(); ++at) {
        if (std::equal(std::begin(kHead), std::end(kHead), bytes.begin() + long(at))) {
            ++packets;
            at += kPacket - 1;
        }
    }
    return packets;
}

vr::VirtualDevice &preparedDevice()
{
    static vr::VirtualDevice &device = []() -> vr::VirtualDevice & {
        auto &the = vr::VirtualDevice::instance();
        the.setScene(std::make_shared<PlainScene>());
        the.setPace(vr::Pace::Free);
        return the;
    }();
    return device;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static unsigned executions = 0;
    vr::VirtualDevice &device = preparedDevice();
    if (++executions % kPerForgetting == 0)
        device.forgetCalls();
    device.setPlugged(false); // it forgets its registers
    device.setPlugged(true);
    const std::uint64_t commandsBefore = device.status().commands;
    FT_HANDLE handle = nullptr;
    device.open(0, &handle);
    device.setBitMode(handle, 0xff, FT_BITMODE_RESET);
    device.setBitMode(handle, 0xff, FT_BITMODE_SYNC_FIFO);
    device.setTimeouts(handle, kTimeoutMs, kTimeoutMs);

    fuzz::Input input(data, size);
    std::vector<std::uint8_t> written;
    std::uint8_t buffer[kMostRead];
    DWORD count = 0;
    while (!input.isEmpty()) {
        const auto step = input.take<std::uint8_t>();
        if (step < 0xe0) {
            const auto bytes = input.bytes(step & 0x3f);
            written.insert(written.end(), bytes.begin(), bytes.end());
            require(device.write(handle, bytes.data(), DWORD(bytes.size()), &count) == FT_OK
                    && count == bytes.size(),
                "what is written is taken");
        } else if (step < 0xf8) {
            const auto wanted = DWORD(input.below(kMostRead + 1));
            const bool streaming = device.status().streaming;
            if (streaming)
                require(device.read(handle, buffer, wanted, &count) == FT_OK && count == wanted,
                    "a stream as fast as it is read fills every read");
        } else if (step < 0xfc) {
            device.purge(handle, step & 3);
        } else {
            DWORD areaSize = 0;
            device.userAreaSize(handle, &areaSize);
            const auto bytes = input.bytes(input.take<std::uint8_t>());
            const bool taken =
                device.userAreaWrite(handle, bytes.data(), DWORD(bytes.size())) == FT_OK;
            require(taken == (bytes.size() <= areaSize), "the user area keeps its size");
        }
    }
    const vr_status status = device.status();
    require(status.commands - commandsBefore == packetsIn(written),
        "every packet is found, and no other");
    require(status.attenuator <= 63, "the attenuator has 64 positions");
    device.close(handle);
    return 0;
}
