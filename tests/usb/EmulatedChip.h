// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ByteSource.h"
#include "UsbipSocket.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <optional>
#include <string>
#include <thread>
#include <vector>

/// An FT232H at the end of a USB/IP socket: its descriptors, vendor requests, EEPROM and the
/// packets of its bulk endpoints, each with two status bytes at its head. Made after the published
/// descriptions of the chip, not after the provider that is tested with it.
class EmulatedChip
{
public:
    EmulatedChip(UsbipSocket &socket, ByteSource &source, const std::string &serial);
    ~EmulatedChip();

    /// Serves requests until the controller has gone.
    void run();

private:
    void control(const UsbipSocket::Request &request);
    std::optional<std::vector<std::uint8_t>> descriptor(std::uint8_t kind, std::uint8_t index);
    void vendor(std::uint8_t request, std::uint16_t value);
    void unlink(const UsbipSocket::Request &request);
    void sendPackets();

    UsbipSocket &m_socket;
    ByteSource &m_source;
    const std::string m_serial;
    std::vector<std::uint16_t> m_eeprom;
    std::atomic<unsigned> m_latencyMs = 16;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<UsbipSocket::Request> m_waiting; // transfers on the bulk-in endpoint
    std::optional<std::uint32_t> m_serving;     // number of the one being filled
    bool m_withdrawn = false;                   // it was taken back meanwhile
    bool m_ended = false;
    std::vector<std::uint8_t> m_payload; // read, not yet sent; the sender's while it serves
    std::thread m_sender;
};
