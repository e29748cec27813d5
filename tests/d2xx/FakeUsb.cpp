// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeUsb.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <iterator>

struct libusb_context
{ };
struct libusb_device
{
    std::size_t index;
};
struct libusb_device_handle
{
    libusb_device device;
};

FakeUsb &FakeUsb::instance()
{
    // For good: what is not closed still waits on it when the program ends.
    static FakeUsb &usb = *new FakeUsb;
    return usb;
}

void FakeUsb::reset()
{
    const std::lock_guard lock(mutex);
    m_devices.clear();
    m_bytes.clear();
    m_endings.clear();
    m_raw.clear();
    m_queue.clear();
    m_cancelled.clear();
    m_calls.clear();
    m_failures.clear();
    m_written.clear();
    eeprom.assign(128, 0);
    wordsWritten = 0;
    brokenWord = -1;
    m_gone = m_nothing = m_loseCancelled = m_driverAway = false;
}

void FakeUsb::plug(const Device &device)
{
    const std::lock_guard lock(mutex);
    m_devices.push_back(device);
}

void FakeUsb::setAddress(std::size_t device, std::uint8_t address)
{
    const std::lock_guard lock(mutex);
    m_devices[device].address = address;
}

void FakeUsb::unplug()
{
    const std::lock_guard lock(mutex);
    m_gone = true;
    m_changed.notify_all();
}

void FakeUsb::mend()
{
    const std::lock_guard lock(mutex);
    m_failures.clear();
    m_endings.clear();
    m_gone = false;
}

void FakeUsb::send(std::vector<std::uint8_t> bytes)
{
    const std::lock_guard lock(mutex);
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    m_changed.notify_all();
}

void FakeUsb::sendNothing()
{
    const std::lock_guard lock(mutex);
    m_nothing = true;
    m_changed.notify_all();
}

void FakeUsb::sendRaw(std::vector<RawTransfer> transfers)
{
    const std::lock_guard lock(mutex);
    std::ranges::move(transfers, std::back_inserter(m_raw));
    m_changed.notify_all();
}

std::size_t FakeUsb::rawLeft() const
{
    const std::lock_guard lock(mutex);
    return m_raw.size();
}

void FakeUsb::endTransfers(libusb_transfer_status status, int count)
{
    const std::lock_guard lock(mutex);
    m_endings.insert(m_endings.end(), std::size_t(count), status);
    m_changed.notify_all();
}

void FakeUsb::fail(const std::string &function, int error, int nth, bool repeat)
{
    const std::lock_guard lock(mutex);
    m_failures[function] = {error, nth, repeat};
}

void FakeUsb::loseCancelled()
{
    const std::lock_guard lock(mutex);
    m_loseCancelled = true;
}

int FakeUsb::calls(const std::string &function) const
{
    const std::lock_guard lock(mutex);
    const auto found = m_calls.find(function);
    return found == m_calls.end() ? 0 : found->second;
}

std::vector<std::uint8_t> FakeUsb::written() const
{
    const std::lock_guard lock(mutex);
    return m_written;
}

std::size_t FakeUsb::queued() const
{
    const std::lock_guard lock(mutex);
    return m_queue.size();
}

std::size_t FakeUsb::pending() const
{
    const std::lock_guard lock(mutex);
    return m_bytes.size();
}

bool FakeUsb::driverAway() const
{
    const std::lock_guard lock(mutex);
    return m_driverAway;
}

int FakeUsb::openHandles() const
{
    const std::lock_guard lock(mutex);
    return m_handles;
}

int FakeUsb::enter(const char *function)
{
    const std::lock_guard lock(mutex);
    ++m_calls[function];
    const auto found = m_failures.find(function);
    if (found == m_failures.end() || (--found->second.nth > 0))
        return LIBUSB_SUCCESS;
    const int error = found->second.error;
    if (!found->second.repeat)
        m_failures.erase(found);
    return error;
}

void FakeUsb::submit(libusb_transfer *transfer)
{
    const std::lock_guard lock(mutex);
    transfer->actual_length = 0;
    m_queue.push_back(transfer);
    m_changed.notify_all();
}

void FakeUsb::cancel(libusb_transfer *transfer)
{
    const std::lock_guard lock(mutex);
    const auto found = std::ranges::find(m_queue, transfer);
    if (found == m_queue.end() || m_loseCancelled)
        return;
    m_queue.erase(found);
    m_cancelled.push_back(transfer);
    m_changed.notify_all();
}

int FakeUsb::fill(libusb_transfer *transfer)
{
    const auto room = std::size_t(transfer->length);
    std::size_t at = 0;
    while (at + kPacket <= room && (at == 0 || !m_bytes.empty())) {
        const std::size_t payload = std::min(kPacket - 2, m_bytes.size());
        transfer->buffer[at] = 0x31; // modem and line status
        transfer->buffer[at + 1] = 0x60;
        std::copy_n(m_bytes.begin(), payload, transfer->buffer + at + 2);
        m_bytes.erase(m_bytes.begin(), m_bytes.begin() + std::ptrdiff_t(payload));
        at += payload + 2;
        if (payload < kPacket - 2)
            break;
    }
    return int(at);
}

bool FakeUsb::completeOne(int waitMs)
{
    std::unique_lock lock(mutex);
    const auto ready = [this] {
        return !m_cancelled.empty()
            || (!m_queue.empty()
                && (m_gone || m_nothing || !m_bytes.empty() || !m_endings.empty()
                    || !m_raw.empty()));
    };
    if (!m_changed.wait_for(lock, std::chrono::milliseconds(waitMs), ready))
        return false;
    libusb_transfer *transfer = nullptr;
    if (!m_cancelled.empty()) {
        transfer = m_cancelled.front();
        m_cancelled.pop_front();
        transfer->status = LIBUSB_TRANSFER_CANCELLED;
    } else {
        transfer = m_queue.front();
        m_queue.pop_front();
        if (m_gone) {
            transfer->status = LIBUSB_TRANSFER_NO_DEVICE;
        } else if (!m_endings.empty()) {
            transfer->status = m_endings.front();
            m_endings.pop_front();
        } else if (!m_raw.empty()) {
            const RawTransfer &raw = m_raw.front();
            transfer->status = raw.status;
            transfer->actual_length = std::min(int(raw.bytes.size()), transfer->length);
            std::copy_n(raw.bytes.begin(), transfer->actual_length, transfer->buffer);
            m_raw.pop_front();
        } else {
            m_nothing = false;
            transfer->status = LIBUSB_TRANSFER_COMPLETED;
            transfer->actual_length = fill(transfer);
        }
    }
    lock.unlock();
    transfer->callback(transfer);
    return true;
}

int FakeUsb::control(std::uint8_t type, std::uint8_t request, std::uint16_t value,
    std::uint16_t index, std::uint8_t *data)
{
    const std::lock_guard lock(mutex);
    if (m_gone)
        return LIBUSB_ERROR_NO_DEVICE;
    if (type == 0xc0 && request == 0x90) {
        if (index >= eeprom.size())
            return LIBUSB_ERROR_PIPE;
        std::memcpy(data, &eeprom[index], 2);
        return 2;
    }
    if (request == 0x91) {
        ++wordsWritten;
        eeprom[index] = index == brokenWord ? std::uint16_t(value & ~1) : value;
    }
    return 0;
}

void FakeUsb::write(const std::uint8_t *data, int size)
{
    const std::lock_guard lock(mutex);
    m_written.insert(m_written.end(), data, data + size);
}

void FakeUsb::handles(int difference)
{
    const std::lock_guard lock(mutex);
    m_handles += difference;
}

void FakeUsb::driver(bool away)
{
    const std::lock_guard lock(mutex);
    m_driverAway = away;
}

namespace
{
FakeUsb &usb()
{
    return FakeUsb::instance();
}

const FakeUsb::Device &of(libusb_device *device)
{
    return usb().devices()[device->index];
}
} // namespace

int libusb_init(libusb_context **context)
{
    const int error = usb().enter("libusb_init");
    *context = error ? nullptr : new libusb_context;
    return error;
}

void libusb_exit(libusb_context *context)
{
    delete context;
}

ssize_t libusb_get_device_list(libusb_context *, libusb_device ***list)
{
    if (const int error = usb().enter("libusb_get_device_list"))
        return error;
    const std::size_t count = usb().devices().size();
    *list = new libusb_device *[count + 1]();
    for (std::size_t i = 0; i < count; ++i)
        (*list)[i] = new libusb_device{i};
    return ssize_t(count);
}

void libusb_free_device_list(libusb_device **list, int)
{
    for (libusb_device **device = list; *device; ++device)
        delete *device;
    delete[] list;
}

uint8_t libusb_get_bus_number(libusb_device *device)
{
    return of(device).bus;
}

uint8_t libusb_get_device_address(libusb_device *device)
{
    return of(device).address;
}

int libusb_get_port_numbers(libusb_device *device, uint8_t *ports, int length)
{
    if (of(device).hubPorts.size() > std::size_t(length))
        return LIBUSB_ERROR_OVERFLOW;
    std::ranges::copy(of(device).hubPorts, ports);
    return int(of(device).hubPorts.size());
}

int libusb_get_device_descriptor(libusb_device *device, libusb_device_descriptor *descriptor)
{
    *descriptor = {};
    descriptor->idVendor = of(device).vendor;
    descriptor->idProduct = of(device).product;
    descriptor->iProduct = 2;
    descriptor->iSerialNumber = 3;
    return usb().enter("libusb_get_device_descriptor");
}

int libusb_get_string_descriptor_ascii(
    libusb_device_handle *handle, uint8_t index, unsigned char *data, int length)
{
    if (const int error = usb().enter("libusb_get_string_descriptor_ascii"))
        return error;
    const FakeUsb::Device &device = of(&handle->device);
    const std::string &text = index == 2 ? device.description : device.serial;
    const std::size_t size = std::min(text.size(), std::size_t(length));
    std::copy_n(text.begin(), size, data);
    return int(size);
}

int libusb_open(libusb_device *device, libusb_device_handle **handle)
{
    if (const int error = usb().enter("libusb_open"))
        return error;
    *handle = new libusb_device_handle{*device};
    usb().handles(1);
    return 0;
}

void libusb_close(libusb_device_handle *handle)
{
    usb().handles(-1);
    delete handle;
}

libusb_device *libusb_get_device(libusb_device_handle *handle)
{
    return &handle->device;
}

int libusb_set_auto_detach_kernel_driver(libusb_device_handle *, int)
{
    return usb().enter("libusb_set_auto_detach_kernel_driver");
}

int libusb_claim_interface(libusb_device_handle *, int)
{
    int error = usb().enter("libusb_claim_interface");
    if (!error && usb().driverAway())
        error = LIBUSB_ERROR_BUSY;
    if (!error)
        usb().driver(true);
    return error;
}

int libusb_release_interface(libusb_device_handle *, int)
{
    usb().driver(false);
    return usb().enter("libusb_release_interface");
}

int libusb_get_max_packet_size(libusb_device *, unsigned char)
{
    const int error = usb().enter("libusb_get_max_packet_size");
    return error ? error : int(FakeUsb::kPacket);
}

int libusb_clear_halt(libusb_device_handle *, unsigned char)
{
    return usb().enter("libusb_clear_halt");
}

int libusb_control_transfer(libusb_device_handle *, uint8_t type, uint8_t request, uint16_t value,
    uint16_t index, unsigned char *data, uint16_t, unsigned)
{
    const int error = usb().enter("libusb_control_transfer");
    return error ? error : usb().control(type, request, value, index, data);
}

int libusb_bulk_transfer(
    libusb_device_handle *, unsigned char, unsigned char *data, int size, int *done, unsigned)
{
    *done = 0;
    if (const int error = usb().enter("libusb_bulk_transfer"))
        return error;
    usb().write(data, size);
    *done = size;
    return 0;
}

libusb_transfer *libusb_alloc_transfer(int)
{
    return usb().enter("libusb_alloc_transfer") ? nullptr : new libusb_transfer{};
}

void libusb_free_transfer(libusb_transfer *transfer)
{
    delete transfer;
}

int libusb_submit_transfer(libusb_transfer *transfer)
{
    if (const int error = usb().enter("libusb_submit_transfer"))
        return error;
    usb().submit(transfer);
    return 0;
}

int libusb_cancel_transfer(libusb_transfer *transfer)
{
    usb().cancel(transfer);
    return usb().enter("libusb_cancel_transfer");
}

int libusb_handle_events_timeout_completed(libusb_context *, timeval *wait, int *)
{
    if (const int error = usb().enter("libusb_handle_events_timeout_completed"))
        return error;
    usb().completeOne(int(wait->tv_sec * 1000 + wait->tv_usec / 1000));
    return 0;
}
