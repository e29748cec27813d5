// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FakeUsb.h"
#include "ProgrammedEeprom.h"

#include "d2xx/ftd2xx.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <vector>

/// One receiver on a fake bus, opened on demand, and a folder of its own for copies of EEPROMs.
class UsbTest : public testing::Test
{
protected:
    UsbTest()
    {
        std::filesystem::create_directories(m_folder);
        setenv("XDG_DATA_HOME", m_folder.c_str(), 1);
        usb().reset();
        usb().plug({});
        usb().eeprom = programmedEeprom();
    }

    ~UsbTest() override
    {
        if (handle)
            FT_Close(handle);
        EXPECT_EQ(usb().openHandles(), 0);
        EXPECT_FALSE(usb().driverAway());
        std::filesystem::remove_all(m_folder);
    }

    static FakeUsb &usb() { return FakeUsb::instance(); }

    FT_STATUS open(unsigned readTimeoutMs = 2000)
    {
        DWORD count = 0;
        FT_ListDevices(&count, nullptr, FT_LIST_NUMBER_ONLY);
        const FT_STATUS status = FT_Open(0, &handle);
        if (status == FT_OK)
            FT_SetTimeouts(handle, readTimeoutMs, readTimeoutMs);
        return status;
    }

    std::vector<std::uint8_t> read(std::size_t size, FT_STATUS *status = nullptr)
    {
        std::vector<std::uint8_t> bytes(size);
        DWORD got = 0;
        const FT_STATUS result = FT_Read(handle, bytes.data(), DWORD(size), &got);
        if (status)
            *status = result;
        else
            EXPECT_EQ(result, FT_OK);
        bytes.resize(got);
        return bytes;
    }

    /// Bytes that no shift by a packet or a transfer maps onto themselves.
    static std::vector<std::uint8_t> pattern(std::size_t size, std::uint32_t start = 0)
    {
        std::vector<std::uint8_t> bytes(size);
        for (std::size_t i = 0; i < size; ++i)
            bytes[i] = std::uint8_t((std::uint32_t(i) + start) * 2654435761u >> 24);
        return bytes;
    }

    std::filesystem::path backups() const { return m_folder / "zephrin-nano" / "eeprom"; }

    FT_HANDLE handle = nullptr;

private:
    std::filesystem::path m_folder =
        std::filesystem::temp_directory_path() / ("usb-test-" + std::to_string(getpid()));
};
