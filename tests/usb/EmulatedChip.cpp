// SPDX-License-Identifier: GPL-3.0-or-later
#include "EmulatedChip.h"

#include <algorithm>
#include <bit>
#include <cerrno>

namespace
{
constexpr std::size_t kPacket = 512;
constexpr std::size_t kStatus = 2;
constexpr std::size_t kWords = 128;
constexpr char kProduct[] = "ZephrinNano";

constexpr std::array<std::uint8_t, 18> kDevice = {
    18, 1, 0x00, 0x02, 0, 0, 0, 64,     // USB 2.0, 64 bytes at endpoint 0
    0x03, 0x04, 0x14, 0x60, 0x00, 0x09, // vendor, product, release of an FT232H
    1, 2, 3, 1,                         // strings, one configuration
};
constexpr std::array<std::uint8_t, 32> kConfiguration = {
    9, 2, 32, 0, 1, 1, 0, 0x80, 250,    // one interface, powered by the bus, 500 mA
    9, 4, 0, 0, 2, 0xff, 0xff, 0xff, 2, // vendor's class
    7, 5, 0x81, 2, 0x00, 0x02, 0,       // bulk in, 512 bytes
    7, 5, 0x02, 2, 0x00, 0x02, 0,       // bulk out
};

/// The strings at the end of what the chip uses, so that a user area follows the serial number.
std::vector<std::uint16_t> eepromWith(const std::string &serial)
{
    constexpr std::size_t kSerialAt = 0xa0;
    std::vector<std::uint16_t> words(kWords, 0);
    words[1] = 0x0403;
    words[2] = 0x6014;
    words[15] = 0x0056;
    const auto length = std::uint16_t(2 + 2 * serial.size());
    words[9] = std::uint16_t(length << 8 | kSerialAt);
    words[kSerialAt / 2] = std::uint16_t(3 << 8 | length);
    for (std::size_t i = 0; i < serial.size(); ++i)
        words[kSerialAt / 2 + 1 + i] = std::uint8_t(serial[i]);
    std::uint16_t sum = 0xaaaa;
    for (std::size_t i = 0; i + 1 < kWords; ++i)
        sum = std::rotl(std::uint16_t(sum ^ words[i]), 1);
    words[kWords - 1] = sum;
    return words;
}

std::vector<std::uint8_t> stringDescriptor(const std::string &text)
{
    std::vector<std::uint8_t> bytes = {std::uint8_t(2 + 2 * text.size()), 3};
    for (const char c : text) {
        bytes.push_back(std::uint8_t(c));
        bytes.push_back(0);
    }
    return bytes;
}
} // namespace

EmulatedChip::EmulatedChip(UsbipSocket &socket, ByteSource &source, const std::string &serial)
    : m_socket(socket), m_source(source), m_serial(serial), m_eeprom(eepromWith(serial)),
      m_sender(&EmulatedChip::sendPackets, this)
{ }

EmulatedChip::~EmulatedChip()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ended = true;
        m_changed.notify_all();
    }
    m_sender.join();
}

void EmulatedChip::run()
{
    UsbipSocket::Request request;
    while (m_socket.receive(request)) {
        if (request.command == UsbipSocket::Unlink) {
            unlink(request);
        } else if (request.endpoint == 0) {
            control(request);
        } else if (request.in) {
            const std::lock_guard lock(m_mutex);
            m_waiting.push_back(request);
            m_changed.notify_all();
        } else {
            std::vector<std::uint8_t> data(request.length);
            if (!m_socket.receiveData(data))
                return;
            m_source.write(data);
            m_socket.answer(request, 0, request.length);
        }
    }
}

void EmulatedChip::control(const UsbipSocket::Request &request)
{
    const std::uint8_t type = request.setup[0];
    const std::uint8_t code = request.setup[1];
    const auto value = std::uint16_t(request.setup[2] | request.setup[3] << 8);
    const auto index = std::uint16_t(request.setup[4] | request.setup[5] << 8);
    const bool isVendor = (type & 0x60) == 0x40;
    if (!request.in) {
        std::vector<std::uint8_t> data(request.length);
        m_socket.receiveData(data);
        if (isVendor && code == 0x91 && index < kWords)
            m_eeprom[index] = value;
        else if (isVendor)
            vendor(code, value);
        m_socket.answer(request, 0, request.length);
        return;
    }
    std::optional<std::vector<std::uint8_t>> data;
    if (!isVendor && code == 6)
        data = descriptor(std::uint8_t(value >> 8), std::uint8_t(value));
    else if (!isVendor && code == 0)
        data = {0, 0}; // status: no remote wake-up, not halted
    else if (isVendor && code == 0x90 && index < kWords)
        data = {std::uint8_t(m_eeprom[index]), std::uint8_t(m_eeprom[index] >> 8)};
    else if (isVendor && code == 0x0a)
        data = {std::uint8_t(m_latencyMs)};
    else if (isVendor && code == 0x05)
        data = {0x31, 0x60}; // modem status
    if (!data) {
        m_socket.answer(request, -EPIPE, 0);
        return;
    }
    data->resize(std::min<std::size_t>(data->size(), request.length));
    m_socket.answer(request, 0, std::uint32_t(data->size()), *data);
}

std::optional<std::vector<std::uint8_t>> EmulatedChip::descriptor(
    std::uint8_t kind, std::uint8_t index)
{
    if (kind == 1)
        return std::vector<std::uint8_t>(kDevice.begin(), kDevice.end());
    if (kind == 2)
        return std::vector<std::uint8_t>(kConfiguration.begin(), kConfiguration.end());
    if (kind != 3)
        return std::nullopt;
    switch (index) {
    case 0:
        return std::vector<std::uint8_t>{4, 3, 0x09, 0x04}; // English
    case 1:
        return stringDescriptor("Zephrin");
    case 2:
        return stringDescriptor(kProduct);
    default:
        return stringDescriptor(m_serial);
    }
}

void EmulatedChip::vendor(std::uint8_t request, std::uint16_t value)
{
    switch (request) {
    case 0x00: // reset, or one of the two queues
        m_source.purge(value == 2, value == 1);
        if (value == 2) {
            // What a transfer that was taken back had read belongs to the queue, too.
            std::unique_lock lock(m_mutex);
            m_changed.wait(lock, [this] { return !m_serving; });
            m_payload.clear();
        }
        break;
    case 0x09:
        m_latencyMs = std::max<unsigned>(value & 0xff, 1);
        break;
    case 0x0b:
        m_source.setBitMode(std::uint8_t(value), std::uint8_t(value >> 8));
        break;
    default: // line settings, flow control
        break;
    }
}

void EmulatedChip::unlink(const UsbipSocket::Request &request)
{
    const std::lock_guard lock(m_mutex);
    const auto found = std::ranges::find(m_waiting, request.length, &UsbipSocket::Request::number);
    int status = 0; // it has been answered already
    if (found != m_waiting.end()) {
        m_waiting.erase(found);
        status = -ECONNRESET;
    } else if (m_serving == request.length) {
        m_withdrawn = true;
        status = -ECONNRESET;
    }
    m_socket.answerUnlink(request, status);
}

void EmulatedChip::sendPackets()
{
    std::vector<std::uint8_t> packets;
    for (;;) {
        UsbipSocket::Request request;
        {
            std::unique_lock lock(m_mutex);
            m_changed.wait(lock, [this] { return m_ended || !m_waiting.empty(); });
            if (m_ended)
                return;
            request = m_waiting.front();
            m_waiting.pop_front();
            m_serving = request.number;
            m_withdrawn = false;
        }
        const std::size_t wanted = request.length / kPacket * (kPacket - kStatus);
        const std::size_t before = m_payload.size();
        if (before < wanted) {
            m_payload.resize(wanted);
            m_payload.resize(
                before + m_source.read(std::span(m_payload).subspan(before), m_latencyMs));
        }
        const std::lock_guard lock(m_mutex);
        m_serving.reset();
        m_changed.notify_all();
        if (m_withdrawn)
            continue;
        const std::size_t size = std::min(m_payload.size(), wanted);
        packets.clear();
        std::size_t at = 0;
        do {
            const std::size_t part = std::min(kPacket - kStatus, size - at);
            packets.insert(packets.end(), {0x31, 0x60});
            packets.insert(packets.end(), m_payload.begin() + std::ptrdiff_t(at),
                m_payload.begin() + std::ptrdiff_t(at + part));
            at += part;
        } while (at < size);
        m_payload.erase(m_payload.begin(), m_payload.begin() + std::ptrdiff_t(size));
        m_socket.answer(request, 0, std::uint32_t(packets.size()), packets);
    }
}
