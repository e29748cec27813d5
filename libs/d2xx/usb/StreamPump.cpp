// SPDX-License-Identifier: GPL-3.0-or-later
#include "d2xx/usb/StreamPump.h"

#include "d2xx/usb/UsbStatus.h"

#include <libusb-1.0/libusb.h>

#include <sys/time.h>

#include <pthread.h>

#include <algorithm>

namespace d2xx
{
namespace
{
constexpr std::size_t kStatusBytes = 2; // modem and line status, at the head of every packet
constexpr std::size_t kFirstTransferBytes = 4096;
constexpr std::size_t kMostFailures = 4 * StreamPump::kTransfers; // in a row, then it has gone
constexpr auto kLongestTakeBack = std::chrono::seconds(2);
constexpr suseconds_t kEventWaitUs = 100000;
} // namespace

StreamPump::StreamPump(libusb_context *context, libusb_device_handle *handle, std::uint8_t endpoint,
    std::size_t packetBytes)
    : m_context(context), m_handle(handle), m_endpoint(endpoint),
      m_packetBytes(std::max<std::size_t>(packetBytes, kStatusBytes + 1)),
      m_packets((kFirstTransferBytes + m_packetBytes - 1) / m_packetBytes)
{ }

StreamPump::~StreamPump()
{
    stop();
}

FT_STATUS StreamPump::start()
{
    std::unique_lock lock(m_mutex);
    for (std::size_t i = 0; i < kTransfers; ++i) {
        auto slot = std::make_unique<Slot>();
        slot->pump = this;
        slot->buffer.resize(slotBytes());
        slot->transfer = libusb_alloc_transfer(0);
        if (!slot->transfer)
            return FT_INSUFFICIENT_RESOURCES;
        m_slots.push_back(std::move(slot));
    }
    m_paused = false;
    m_emptySince = Clock::now();
    submitAll();
    if (m_queued == 0)
        return m_failure != FT_OK ? m_failure : FT_STATUS(FT_IO_ERROR);
    lock.unlock();
    m_thread = std::thread(&StreamPump::run, this);
    // A refusal costs nothing but a later wake-up under load.
    sched_param priority = {};
    priority.sched_priority = 1;
    pthread_setschedparam(m_thread.native_handle(), SCHED_FIFO, &priority);
    return FT_OK;
}

void StreamPump::stop()
{
    std::unique_lock lock(m_mutex);
    if (m_stopping)
        return;
    m_stopping = true;
    m_paused = true;
    if (m_failure == FT_OK)
        m_failure = FT_INVALID_HANDLE;
    m_readable.notify_all();
    cancelAll();
    lock.unlock();
    if (m_thread.joinable()) {
        m_thread.join(); // ends when all are back, or after kLongestTakeBack
    } else {
        // It never ran: the transfers of a failed start are brought back here.
        const auto end = Clock::now() + kLongestTakeBack;
        while (m_queued > 0 && Clock::now() < end) {
            timeval wait = {0, kEventWaitUs};
            libusb_handle_events_timeout_completed(m_context, &wait, nullptr);
        }
    }
    lock.lock();
    for (std::unique_ptr<Slot> &slot : m_slots) {
        if (slot->queued) {
            // The kernel may still write into it, and its callback finds no pump any more.
            slot->pump = nullptr;
            static auto &abandoned = *new std::vector<std::unique_ptr<Slot>>; // to the end
            static std::mutex mutex;
            const std::lock_guard guard(mutex);
            abandoned.push_back(std::move(slot));
        } else {
            libusb_free_transfer(slot->transfer);
        }
    }
    m_slots.clear();
}

FT_STATUS StreamPump::read(
    std::uint8_t *data, std::size_t size, unsigned timeoutMs, std::size_t *got)
{
    const auto end = Clock::now() + std::chrono::milliseconds(timeoutMs);
    *got = 0;
    std::unique_lock lock(m_mutex);
    for (;;) {
        *got += m_ring.read(data + *got, size - *got);
        submitAll();
        if (*got == size)
            return FT_OK;
        if (m_failure != FT_OK)
            return m_failure;
        // A read of more than the ring holds takes it in pieces.
        m_wanted = std::min(size - *got, kRingBytes / 4);
        const auto ready = [this] { return m_ring.size() >= m_wanted || m_failure != FT_OK; };
        bool inTime = true;
        if (timeoutMs == 0)
            m_readable.wait(lock, ready);
        else
            inTime = m_readable.wait_until(lock, end, ready);
        m_wanted = 0;
        if (!inTime) {
            *got += m_ring.read(data + *got, size - *got);
            submitAll();
            return FT_OK;
        }
    }
}

FT_STATUS StreamPump::setTransferSize(std::size_t bytes)
{
    return whilePaused(
        [this, bytes] {
            m_packets = std::max<std::size_t>((bytes + m_packetBytes - 1) / m_packetBytes, 1);
            for (const std::unique_ptr<Slot> &slot : m_slots)
                slot->buffer.resize(slotBytes());
            return FT_STATUS(FT_OK);
        },
        false);
}

FT_STATUS StreamPump::discard(const std::function<FT_STATUS()> &between)
{
    return whilePaused(between, true);
}

StreamPump::Statistics StreamPump::statistics() const
{
    const std::lock_guard lock(m_mutex);
    return m_statistics;
}

FT_STATUS StreamPump::whilePaused(const std::function<FT_STATUS()> &work, bool discard)
{
    const std::lock_guard pause(m_pausing);
    std::unique_lock lock(m_mutex);
    if (m_failure != FT_OK)
        return m_failure;
    m_paused = true;
    m_discarding = discard;
    cancelAll();
    FT_STATUS status = FT_IO_ERROR;
    if (m_allBack.wait_for(lock, kLongestTakeBack, [this] { return m_queued == 0; })) {
        // No transfer is queued and none will be, so buffers and sizes are the caller's now.
        lock.unlock();
        status = work();
        lock.lock();
    } else {
        m_failure = FT_IO_ERROR;
        m_readable.notify_all();
    }
    if (discard)
        m_ring.clear();
    m_discarding = false;
    m_paused = m_stopping;
    m_next = 0;
    submitAll();
    return status;
}

void StreamPump::cancelAll()
{
    // From the last on: a transfer that is still there takes no byte before one that has gone.
    for (std::size_t i = m_slots.size(); i-- > 0;) {
        Slot &slot = *m_slots[(m_next + i) % m_slots.size()];
        if (slot.queued)
            libusb_cancel_transfer(slot.transfer);
    }
}

void StreamPump::submitAll()
{
    // What is on its way fits into the ring whatever comes.
    while (!m_paused && !m_stalled && m_failure == FT_OK && !m_slots.empty()) {
        Slot &slot = *m_slots[m_next];
        if (slot.queued || m_ring.free() < (m_queued + 1) * payload(slotBytes()))
            return;
        if (!submit(slot))
            return;
        m_next = (m_next + 1) % m_slots.size();
    }
}

bool StreamPump::submit(Slot &slot)
{
    libusb_fill_bulk_transfer(slot.transfer, m_handle, m_endpoint, slot.buffer.data(),
        int(slot.buffer.size()), &StreamPump::completed, &slot, 0);
    const int error = libusb_submit_transfer(slot.transfer);
    if (error == LIBUSB_SUCCESS) {
        slot.queued = true;
        if (m_queued++ == 0)
            noteEmptyQueue();
        return true;
    }
    // Short of memory it goes on with those that are queued; without any it is at its end.
    if (error == LIBUSB_ERROR_NO_DEVICE || m_queued == 0) {
        m_failure = statusOf(error);
        m_readable.notify_all();
    }
    return false;
}

void StreamPump::noteEmptyQueue()
{
    if (m_statistics.bytes == 0)
        return;
    const auto empty =
        std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - m_emptySince);
    m_statistics.longestUnqueued = std::max(m_statistics.longestUnqueued, empty);
}

void StreamPump::completed(libusb_transfer *transfer)
{
    Slot &slot = *static_cast<Slot *>(transfer->user_data);
    if (slot.pump)
        slot.pump->onCompleted(slot);
}

void StreamPump::onCompleted(Slot &slot)
{
    const std::lock_guard lock(m_mutex);
    slot.queued = false;
    if (--m_queued == 0) {
        m_emptySince = Clock::now();
        m_allBack.notify_all();
    }
    ++m_statistics.transfers;
    if (!m_discarding)
        keep(slot.buffer.data(), std::size_t(std::max(slot.transfer->actual_length, 0)));

    switch (slot.transfer->status) {
    case LIBUSB_TRANSFER_COMPLETED:
    case LIBUSB_TRANSFER_TIMED_OUT:
        m_failures = 0;
        break;
    case LIBUSB_TRANSFER_CANCELLED:
        break;
    case LIBUSB_TRANSFER_NO_DEVICE:
        m_failure = FT_IO_ERROR;
        break;
    case LIBUSB_TRANSFER_STALL:
        m_stalled = true; // the pump thread clears it: no request may be waited for in here
        cancelAll();
        [[fallthrough]];
    default:
        ++m_statistics.failed;
        if (++m_failures >= kMostFailures)
            m_failure = FT_IO_ERROR;
    }
    if (m_statistics.bytes > 0 && !m_paused)
        m_statistics.fewestQueued = std::min(m_statistics.fewestQueued, m_queued);
    submitAll();
    if (m_failure != FT_OK || (m_wanted > 0 && m_ring.size() >= m_wanted))
        m_readable.notify_one();
}

void StreamPump::keep(const std::uint8_t *data, std::size_t size)
{
    std::size_t kept = 0;
    for (std::size_t at = 0; at < size; at += m_packetBytes) {
        const std::size_t packet = std::min(m_packetBytes, size - at);
        if (packet > kStatusBytes)
            kept += m_ring.write(data + at + kStatusBytes, packet - kStatusBytes);
    }
    if (kept == 0)
        return;
    const auto now = Clock::now();
    if (m_statistics.bytes > 0) {
        const auto gap = std::chrono::duration_cast<std::chrono::microseconds>(now - m_lastBytes);
        m_statistics.longestGap = std::max(m_statistics.longestGap, gap);
    }
    m_lastBytes = now;
    m_statistics.bytes += kept;
}

std::size_t StreamPump::payload(std::size_t transferBytes) const
{
    return transferBytes / m_packetBytes * (m_packetBytes - kStatusBytes);
}

void StreamPump::run()
{
    auto end = Clock::time_point::max();
    for (;;) {
        timeval wait = {0, kEventWaitUs};
        const int error = libusb_handle_events_timeout_completed(m_context, &wait, nullptr);
        std::unique_lock lock(m_mutex);
        if (m_stopping) {
            if (m_queued == 0)
                return;
            if (end == Clock::time_point::max())
                end = Clock::now() + kLongestTakeBack;
            if (Clock::now() >= end) {
                complain("the system did not give %zu transfers back", m_queued);
                return;
            }
        }
        if (error < 0 && error != LIBUSB_ERROR_INTERRUPTED && m_failure == FT_OK) {
            m_failure = statusOf(error);
            m_readable.notify_all();
        }
        if (error < 0 && error != LIBUSB_ERROR_INTERRUPTED) {
            lock.unlock(); // no busy loop on a session that is broken
            std::this_thread::sleep_for(std::chrono::microseconds(kEventWaitUs));
        } else if (m_stalled && m_queued == 0) {
            lock.unlock();
            const int cleared = libusb_clear_halt(m_handle, m_endpoint);
            lock.lock();
            m_stalled = false;
            if (cleared == LIBUSB_ERROR_NO_DEVICE)
                m_failure = FT_IO_ERROR;
            m_next = 0;
            submitAll();
            if (m_failure != FT_OK)
                m_readable.notify_all();
        }
    }
}
} // namespace d2xx
