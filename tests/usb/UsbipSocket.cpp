// SPDX-License-Identifier: GPL-3.0-or-later
#include "UsbipSocket.h"

#include <sys/socket.h>

#include <arpa/inet.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <vector>

namespace
{
constexpr const char *kAttach = "/sys/devices/platform/vhci_hcd.0/attach";
constexpr unsigned kHighSpeed = 3;

std::uint32_t word(const std::uint8_t *bytes)
{
    std::uint32_t value = 0;
    std::memcpy(&value, bytes, sizeof value);
    return ntohl(value);
}

void putWord(std::uint8_t *bytes, std::uint32_t value)
{
    value = htonl(value);
    std::memcpy(bytes, &value, sizeof value);
}
} // namespace

UsbipSocket::~UsbipSocket()
{
    if (m_socket >= 0)
        close(m_socket);
}

bool UsbipSocket::attach(unsigned port, std::string &error)
{
    std::array<int, 2> ends = {};
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0) {
        error = std::strerror(errno);
        return false;
    }
    m_socket = ends[0];
    std::ofstream file(kAttach);
    // Port, socket, number of the device for its far end, speed.
    file << port << ' ' << ends[1] << ' ' << (1u << 16 | (port + 2)) << ' ' << kHighSpeed << '\n';
    file.flush();
    if (!file)
        error = std::string(kAttach) + ": " + std::strerror(errno);
    close(ends[1]);
    return bool(file);
}

bool UsbipSocket::receiveData(std::span<std::uint8_t> data)
{
    for (std::size_t done = 0; done < data.size();) {
        const ssize_t n = recv(m_socket, data.data() + done, data.size() - done, MSG_WAITALL);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += std::size_t(n);
    }
    return true;
}

bool UsbipSocket::receive(Request &request)
{
    std::array<std::uint8_t, kHeaderBytes> header;
    if (!receiveData(header))
        return false;
    request.command = word(&header[0]);
    request.number = word(&header[4]);
    request.in = word(&header[12]) != 0;
    request.endpoint = word(&header[16]);
    request.length = word(&header[request.command == Unlink ? 20 : 24]);
    std::copy_n(&header[40], request.setup.size(), request.setup.begin());
    return true;
}

void UsbipSocket::answer(
    const Request &request, int status, std::uint32_t length, std::span<const std::uint8_t> data)
{
    std::vector<std::uint8_t> bytes(kHeaderBytes);
    putWord(&bytes[0], SubmitAnswer);
    putWord(&bytes[4], request.number);
    putWord(&bytes[20], std::uint32_t(status));
    putWord(&bytes[24], length);
    bytes.insert(bytes.end(), data.begin(), data.end());
    send(bytes);
}

void UsbipSocket::answerUnlink(const Request &request, int status)
{
    std::array<std::uint8_t, kHeaderBytes> bytes = {};
    putWord(&bytes[0], UnlinkAnswer);
    putWord(&bytes[4], request.number);
    putWord(&bytes[20], std::uint32_t(status));
    send(bytes);
}

void UsbipSocket::send(std::span<const std::uint8_t> bytes)
{
    const std::lock_guard lock(m_sending);
    while (!bytes.empty()) {
        const ssize_t n = ::send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return; // the receiving thread sees it, too
        bytes = bytes.subspan(std::size_t(n));
    }
}
