// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <libusb-1.0/libusb.h>

#include <array>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <vector>

/// A libusb without a bus: the functions that the provider calls, on devices made of vectors.
///
/// Any thread. Transfers complete in libusb_handle_events..., as they do with the real one, in the
/// order in which they were submitted.
class FakeUsb
{
public:
    static constexpr std::size_t kPacket = 512;

    struct Device
    {
        std::uint16_t product = 0x6014;
        std::uint8_t bus = 1;
        std::vector<std::uint8_t> hubPorts = {1};
        std::uint8_t address = 2;
        std::string serial = "ZN0001";
        std::string description = "ZephrinNano";
        std::uint16_t vendor = 0x0403;
    };

    static FakeUsb &instance();

    /// No devices, no faults, nothing counted.
    void reset();
    void plug(const Device &device);
    void setAddress(std::size_t device, std::uint8_t address);

    /// All calls and transfers fail with "no device" from now on.
    void unplug();

    /// The device is there, and all calls do what they should.
    void mend();

    /// Bytes that the device sends after what it has sent so far.
    void send(std::vector<std::uint8_t> bytes);

    /// A packet of the status bytes alone ends the transfer in progress, as the latency timer does.
    void sendNothing();

    /// A transfer of these bytes as they are, status bytes of the packets included, and how it
    /// ends; what is longer than the transfer is cut.
    struct RawTransfer
    {
        libusb_transfer_status status = LIBUSB_TRANSFER_COMPLETED;
        std::vector<std::uint8_t> bytes;
    };
    void sendRaw(std::vector<RawTransfer> transfers);

    /// Raw transfers that no transfer has taken yet.
    std::size_t rawLeft() const;

    /// The next transfers end with this status, one after the other, without bytes.
    void endTransfers(libusb_transfer_status status, int count = 1);

    /// The call number `nth` from now on of a function, and with repeat all after it, returns
    /// error.
    void fail(const std::string &function, int error, int nth = 1, bool repeat = false);

    /// Cancelled transfers are never given back.
    void loseCancelled();

    int calls(const std::string &function) const;
    std::vector<std::uint8_t> written() const;
    std::size_t queued() const;  ///< transfers
    std::size_t pending() const; ///< bytes sent and not yet taken
    bool driverAway() const;
    int openHandles() const;

    std::vector<std::uint16_t> eeprom; ///< under mutex while a device is open
    int wordsWritten = 0;
    int brokenWord = -1; ///< keeps one bit at 0 whatever is written
    mutable std::mutex mutex;

    // What the functions of libusb work on.
    int enter(const char *function);
    void submit(libusb_transfer *transfer);
    void cancel(libusb_transfer *transfer);
    bool completeOne(int waitMs);
    int control(std::uint8_t type, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint8_t *data);
    void write(const std::uint8_t *data, int size);
    void handles(int difference);
    void driver(bool away);
    const std::vector<Device> &devices() const { return m_devices; }

private:
    struct Failure
    {
        int error;
        int nth;
        bool repeat;
    };

    int fill(libusb_transfer *transfer);

    std::condition_variable m_changed;
    std::vector<Device> m_devices;
    std::deque<std::uint8_t> m_bytes;
    std::deque<libusb_transfer_status> m_endings;
    std::deque<RawTransfer> m_raw;
    std::deque<libusb_transfer *> m_queue;
    std::deque<libusb_transfer *> m_cancelled;
    std::map<std::string, int> m_calls;
    std::map<std::string, Failure> m_failures;
    std::vector<std::uint8_t> m_written;
    bool m_gone = false;
    bool m_nothing = false;
    bool m_loseCancelled = false;
    bool m_driverAway = false;
    int m_handles = 0;
};
