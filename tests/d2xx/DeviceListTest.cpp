// SPDX-License-Identifier: GPL-3.0-or-later
#include "UsbTest.h"

#include <array>

namespace
{
class DeviceListTest : public UsbTest
{
protected:
    static DWORD count()
    {
        DWORD number = 99;
        EXPECT_EQ(FT_ListDevices(&number, nullptr, FT_LIST_NUMBER_ONLY), FT_OK);
        return number;
    }

    static std::string text(std::uintptr_t index, DWORD which)
    {
        std::array<char, 64> bytes;
        const FT_STATUS status =
            FT_ListDevices(reinterpret_cast<void *>(index), bytes.data(), FT_LIST_BY_INDEX | which);
        return status == FT_OK ? bytes.data() : "status " + std::to_string(status);
    }
    static std::string serial(std::uintptr_t index)
    {
        return text(index, FT_OPEN_BY_SERIAL_NUMBER);
    }
};
} // namespace

TEST_F(DeviceListTest, IsInTheOrderOfTheWayThroughTheHubsWhateverCameFirst)
{
    usb().reset();
    usb().plug({0x6014, 2, {1}, 9, "C", "ZephrinNano"});
    usb().plug({0x6014, 1, {3, 1}, 7, "B", "ZephrinNano"});
    usb().plug({0x6014, 1, {1}, 12, "A", "Serial cable"});
    usb().plug({0x6001, 1, {2}, 3, "x", "a chip without a synchronous FIFO"});
    usb().plug({0x6014, 1, {4}, 4, "y", "another maker", 0x1234});
    ASSERT_EQ(count(), 3u);
    EXPECT_EQ(serial(0) + serial(1) + serial(2), "ABC");
    EXPECT_EQ(text(0, FT_OPEN_BY_DESCRIPTION), "Serial cable");
    EXPECT_EQ(serial(3), "status " + std::to_string(FT_DEVICE_NOT_FOUND));

    // Pulled and put back: another address, the same place.
    usb().setAddress(2, 40);
    ASSERT_EQ(count(), 3u);
    EXPECT_EQ(serial(0) + serial(1) + serial(2), "ABC");
}

TEST_F(DeviceListTest, AChipWithTwoPortsIsTwoDevices)
{
    usb().reset();
    usb().plug({0x6010, 1, {1}, 2, "ZN7", "ZephrinNano"});
    for (int scan = 0; scan < 2; ++scan) {
        ASSERT_EQ(count(), 2u);
        EXPECT_EQ(serial(0), "ZN7A");
        EXPECT_EQ(text(1, FT_OPEN_BY_DESCRIPTION), "ZephrinNano B");
    }
    EXPECT_EQ(usb().calls("libusb_open"), 1) << "a device that is known is left in peace";
}

TEST_F(DeviceListTest, ADeviceThatMayNotBeOpenedStaysAndIsToldOnceWithTheRemedy)
{
    usb().setAddress(0, 77); // not seen by another case
    usb().fail("libusb_open", LIBUSB_ERROR_ACCESS, 1, true);
    testing::internal::CaptureStderr();
    EXPECT_EQ(count() + count(), 2u);
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_EQ(serial(0), "");
    EXPECT_NE(told.find("72-zephrin-nano.rules"), std::string::npos) << told;
    EXPECT_EQ(told.find("72-zephrin"), told.rfind("72-zephrin")) << told;
    EXPECT_EQ(open(), FT_DEVICE_NOT_OPENED);
}

TEST_F(DeviceListTest, RefusesWhatMakesNoSense)
{
    std::array<char, 64> bytes;
    EXPECT_EQ(FT_ListDevices(nullptr, nullptr, FT_LIST_NUMBER_ONLY), FT_INVALID_PARAMETER);
    EXPECT_EQ(FT_ListDevices(nullptr, nullptr, FT_LIST_BY_INDEX | 1), FT_INVALID_PARAMETER);
    EXPECT_EQ(FT_ListDevices(nullptr, bytes.data(), 0), FT_NOT_SUPPORTED);
    EXPECT_EQ(FT_Open(0, nullptr), FT_INVALID_PARAMETER);
    EXPECT_EQ(FT_Open(-1, &handle), FT_DEVICE_NOT_FOUND);
    EXPECT_EQ(FT_Open(1000, &handle), FT_DEVICE_NOT_FOUND);
}
