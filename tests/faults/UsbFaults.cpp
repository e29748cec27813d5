// SPDX-License-Identifier: GPL-3.0-or-later
// The provider on libusb, with a libusb under it that fails as asked and a receiver that streams
// silence. A fault is "FUNCTION=ERROR@N", N being the call that fails; a "+" at the end: and all
// after it.
#include "FaultyDevice.h"

#include "d2xx/FakeUsb.h"
#include "d2xx/ProgrammedEeprom.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

namespace
{
using namespace std::chrono_literals;

std::string g_function;

FakeUsb &usb()
{
    return FakeUsb::instance();
}

/// Sends frames while transfers wait for them, somewhat faster than the lower rates are.
class Stream
{
public:
    ~Stream() { m_thread.request_stop(); }

private:
    static constexpr std::size_t kFrame = 512;
    static constexpr int kFrames = 12;
    static constexpr auto kEvery = 5ms;

    static void run(const std::stop_token &stop)
    {
        std::vector<std::uint8_t> frames(kFrames * kFrame);
        for (std::size_t at = 0; at < frames.size(); at += kFrame) {
            std::fill_n(frames.begin() + std::ptrdiff_t(at), 4, std::uint8_t(0x55));
            frames[at + 4] = 1;
        }
        for (; !stop.stop_requested(); std::this_thread::sleep_for(kEvery))
            if (usb().queued() > 0 && usb().pending() == 0)
                usb().send(frames);
    }

    std::jthread m_thread{run};
};

/// For copies of the EEPROM.
class Folder
{
public:
    Folder()
    {
        std::filesystem::create_directories(m_path);
        setenv("XDG_DATA_HOME", m_path.c_str(), 1);
    }
    ~Folder() { std::filesystem::remove_all(m_path); }

private:
    std::filesystem::path m_path =
        std::filesystem::temp_directory_path() / ("usb-fault-" + std::to_string(getpid()));
};

const Folder g_folder;
const Stream g_stream; // from the beginning, so that it is none of the threads that are left over
} // namespace

namespace faulty
{
bool arm(const std::string &text)
{
    const std::size_t error = text.find('='), place = text.find('@');
    if (error == std::string::npos || place == std::string::npos)
        return false;
    g_function = text.substr(0, error);
    usb().reset();
    usb().plug({});
    usb().eeprom = programmedEeprom();
    usb().fail(g_function, std::stoi(text.substr(error + 1)), std::stoi(text.substr(place + 1)),
        text.back() == '+');
    return true;
}

void mend()
{
    usb().mend();
}

void replug()
{
    usb().unplug();
    std::this_thread::sleep_for(100ms); // what is on its way comes back
    usb().driver(false);                // whoever had it had the one before
    usb().mend();
}

int threads()
{
    return usb().openHandles();
}

unsigned calls()
{
    return unsigned(usb().calls(g_function));
}
} // namespace faulty
