// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "d2xx/ftd2xx.h"
#include "d2xx/usb/ByteRing.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

struct libusb_context;
struct libusb_device_handle;
struct libusb_transfer;

namespace d2xx
{
/// Keeps the bulk-in endpoint of a port busy and holds what came until somebody reads it.
///
///     chip FIFO  ->  16 transfers queued in the kernel  ->  pump thread  ->  ring  ->  read()
///     (1 kB: 55 us at 19 MB/s)                              two status bytes
///                                                           of each packet go
///
/// The chip's FIFO is so short that a transfer must wait in the kernel at every moment: the pump
/// thread gives each back as soon as its bytes are in the ring. While the ring has no room for all
/// that is on its way the transfers are held back, so that a slow reader stops the chip instead of
/// losing bytes here; read() gives them back.
///
/// read() is for one thread at a time; everything else may come from any thread, also during a
/// read(). Nothing waits for a device that has gone: read() fails at once then, after the bytes
/// that were still there.
class StreamPump
{
public:
    static constexpr std::size_t kTransfers = 16;
    static constexpr std::size_t kRingBytes = 4 << 20; ///< 0.2 s of the highest rate

    /// Packet size of the endpoint in bytes: 512 at high speed, 64 at full speed.
    StreamPump(libusb_context *context, libusb_device_handle *handle, std::uint8_t endpoint,
        std::size_t packetBytes);
    ~StreamPump();
    StreamPump(const StreamPump &) = delete;
    StreamPump &operator=(const StreamPump &) = delete;

    /// Starts the thread and the transfers. Once.
    FT_STATUS start();

    /// Ends both and wakes a reader; its read fails. A transfer that the system does not give back
    /// within 2 s is left alone with its memory.
    void stop();

    /// Waits until all bytes are there or the time is over; FT_OK with what there is. A time of 0
    /// ms waits for ever.
    FT_STATUS read(std::uint8_t *data, std::size_t size, unsigned timeoutMs, std::size_t *got);

    /// Bytes of one transfer, rounded up to whole packets. What is on its way is kept.
    FT_STATUS setTransferSize(std::size_t bytes);

    /// Takes all transfers back, does what is asked in between, and drops all bytes that came
    /// before its end.
    FT_STATUS discard(const std::function<FT_STATUS()> &between);

    /// What the pump has seen since its start.
    struct Statistics
    {
        std::uint64_t bytes = 0; ///< without the status bytes
        std::uint64_t transfers = 0;
        std::uint64_t failed = 0;                     ///< transfers that ended with an error
        std::size_t fewestQueued = kTransfers;        ///< since the first byte
        std::chrono::microseconds longestUnqueued{0}; ///< that no transfer waited in the kernel
        std::chrono::microseconds longestGap{0};      ///< between two transfers that brought bytes
    };
    Statistics statistics() const;

private:
    using Clock = std::chrono::steady_clock;

    struct Slot
    {
        StreamPump *pump = nullptr;
        libusb_transfer *transfer = nullptr;
        std::vector<std::uint8_t> buffer;
        bool queued = false;
    };

    static void completed(libusb_transfer *transfer);
    void onCompleted(Slot &slot);
    void keep(const std::uint8_t *data, std::size_t size);
    void noteEmptyQueue();
    void submitAll();
    bool submit(Slot &slot);
    void cancelAll();
    FT_STATUS whilePaused(const std::function<FT_STATUS()> &work, bool discard);
    void run();
    std::size_t payload(std::size_t transferBytes) const;
    std::size_t slotBytes() const { return m_packets * m_packetBytes; }

    libusb_context *const m_context;
    libusb_device_handle *const m_handle;
    const std::uint8_t m_endpoint;
    const std::size_t m_packetBytes;

    std::mutex m_pausing;               // one pause at a time; before m_mutex
    mutable std::mutex m_mutex;         // all below
    std::condition_variable m_readable; // m_wanted bytes are there, or never will be
    std::condition_variable m_allBack;  // m_queued is 0
    std::vector<std::unique_ptr<Slot>> m_slots;
    ByteRing m_ring{kRingBytes};
    std::size_t m_packets; // of one transfer
    std::size_t m_queued = 0;
    std::size_t m_next = 0; // slot to give back first: the order of the bytes is that of the slots
    std::size_t m_wanted = 0;    // bytes that a reader waits for
    std::size_t m_failures = 0;  // in a row
    FT_STATUS m_failure = FT_OK; // FT_OK as long as the device is there
    bool m_paused = true;
    bool m_discarding = false;
    bool m_stalled = false;
    bool m_stopping = false;
    Statistics m_statistics;
    Clock::time_point m_lastBytes;
    Clock::time_point m_emptySince;

    std::thread m_thread;
};
} // namespace d2xx
