// SPDX-License-Identifier: GPL-3.0-or-later
// What the devices of a bus tell of themselves, and refuse to tell, as the list of receivers shows
// it.
#include "FuzzInput.h"
#include "d2xx/FakeUsb.h"
#include "d2xx/ftd2xx.h"
#include "d2xx/usb/OpenDevices.h"

#include <array>

namespace
{
using fuzz::require;

constexpr std::size_t kMostDevices = 6;
constexpr std::size_t kTextBytes = 64; // of a string that the list gives, with its end

FakeUsb::Device device(fuzz::Input &input)
{
    constexpr std::array<std::uint16_t, 4> kProducts = {0x6014, 0x6010, 0x6001, 0};
    const auto text = [&] {
        const auto bytes = input.bytes(input.take<std::uint8_t>());
        return std::string(bytes.begin(), bytes.end());
    };
    FakeUsb::Device made;
    made.product = kProducts[input.below(kProducts.size())];
    made.vendor = input.take<std::uint8_t>() % 8 ? made.vendor : input.take<std::uint16_t>();
    made.bus = input.take<std::uint8_t>() % 4;
    const auto ports = input.bytes(input.take<std::uint8_t>() % 9);
    made.hubPorts.assign(ports.begin(), ports.end());
    made.address = input.take<std::uint8_t>();
    made.serial = text();
    made.description = text();
    return made;
}

void refuse(fuzz::Input &input)
{
    constexpr std::array kFunctions = {"libusb_get_device_list", "libusb_get_device_descriptor",
        "libusb_get_string_descriptor_ascii", "libusb_open"};
    constexpr std::array kErrors = {LIBUSB_ERROR_ACCESS, LIBUSB_ERROR_NO_DEVICE, LIBUSB_ERROR_IO,
        LIBUSB_ERROR_NO_MEM, LIBUSB_ERROR_OVERFLOW};
    FakeUsb::instance().fail(kFunctions[input.below(kFunctions.size())],
        kErrors[input.below(kErrors.size())], int(input.below(8)) + 1, input.flag());
}

std::array<char, kTextBytes> string(DWORD index, DWORD which, FT_STATUS *status)
{
    std::array<char, kTextBytes> text;
    text.fill('x');
    *status = FT_ListDevices(
        reinterpret_cast<PVOID>(std::uintptr_t(index)), text.data(), FT_LIST_BY_INDEX | which);
    return text;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FakeUsb &usb = FakeUsb::instance();
    fuzz::Input input(data, size);
    usb.reset();
    const std::size_t devices = input.below(kMostDevices + 1);
    for (std::size_t i = 0; i < devices; ++i)
        usb.plug(device(input));
    for (int scan = 0; scan < 2; ++scan) { // the second one finds what it knows already
        if (input.flag())
            refuse(input);
        DWORD count = 0;
        if (FT_ListDevices(&count, nullptr, FT_LIST_NUMBER_ONLY) != FT_OK)
            continue;
        require(count <= 2 * devices, "a device has two ports at most");
        for (DWORD i = 0; i <= count; ++i) {
            for (const DWORD which : {FT_OPEN_BY_SERIAL_NUMBER, FT_OPEN_BY_DESCRIPTION}) {
                FT_STATUS status = FT_OK;
                const auto text = string(i, which, &status);
                require((status == FT_OK) == (i < count), "there is a string for each in the list");
                require(
                    status != FT_OK || std::ranges::count(text, '\0') > 0, "a string has an end");
            }
        }
        if (devices > 0)
            usb.setAddress(0, input.take<std::uint8_t>());
    }
    require(usb.openHandles() == 0, "a scan leaves no device open");
    return 0;
}
