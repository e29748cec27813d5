// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <mutex>
#include <span>
#include <string>

/// One end of the USB/IP protocol, with the kernel's virtual host controller at the other: requests
/// to a device come in, answers go out (kernel documentation, usbip_protocol). One thread receives,
/// any thread answers.
class UsbipSocket
{
public:
    enum Command : std::uint32_t { Submit = 1, Unlink = 2, SubmitAnswer = 3, UnlinkAnswer = 4 };

    struct Request
    {
        std::uint32_t command = 0;
        std::uint32_t number = 0;
        bool in = false; ///< from the device to the host
        std::uint32_t endpoint = 0;
        std::uint32_t length = 0; ///< of the data; of an Unlink the number of its request
        std::array<std::uint8_t, 8> setup = {};
    };

    ~UsbipSocket();

    /// Plugs a high-speed device into a port of the controller. False with a reason in error.
    bool attach(unsigned port, std::string &error);

    /// Waits for a request. False once the controller has gone.
    bool receive(Request &request);
    bool receiveData(std::span<std::uint8_t> data);

    /// status: 0 or a negative errno. length: what was done, for a direction without data.
    void answer(const Request &request, int status, std::uint32_t length,
        std::span<const std::uint8_t> data = {});
    void answerUnlink(const Request &request, int status);

private:
    static constexpr std::size_t kHeaderBytes = 48;

    void send(std::span<const std::uint8_t> bytes);

    int m_socket = -1;
    std::mutex m_sending;
};
