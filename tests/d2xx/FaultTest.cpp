// SPDX-License-Identifier: GPL-3.0-or-later
// Every call of libusb fails in every way at every place: nothing hangs, nothing stays open, and
// the next try with a healthy device streams.
#include "UsbTest.h"

#include <chrono>

namespace
{
constexpr auto kLongest = std::chrono::seconds(4); // closing waits 2 s for transfers at most

struct Fault
{
    const char *function;
    std::vector<int> calls; ///< the numbers of those that fail, with all after them
};

class UsbFaultTest : public UsbTest, public testing::WithParamInterface<Fault>
{
protected:
    /// What a program does with a receiver; the first failure of each kind is enough.
    FT_STATUS session()
    {
        FT_STATUS worst = open(50);
        if (worst != FT_OK)
            return worst;
        const auto step = [&worst](FT_STATUS status) { worst = worst == FT_OK ? status : worst; };
        step(FT_ResetDevice(handle));
        step(FT_SetBitMode(handle, 0xff, FT_BITMODE_SYNC_FIFO));
        step(FT_SetLatencyTimer(handle, 36));
        step(FT_SetUSBParameters(handle, 4096, 4096));
        step(FT_SetFlowControl(handle, FT_FLOW_RTS_CTS, 0, 0));
        step(FT_Purge(handle, FT_PURGE_RX | FT_PURGE_TX));
        DWORD number = 0;
        std::uint8_t command = 0x55;
        step(FT_Write(handle, &command, 1, &number));
        usb().send(pattern(9000));
        std::vector<std::uint8_t> data(9000);
        step(FT_Read(handle, data.data(), DWORD(data.size()), &number));
        if (worst == FT_OK && (number != data.size() || data != pattern(9000)))
            worst = FT_OTHER_ERROR;
        step(FT_EE_UASize(handle, &number));
        step(FT_EE_UARead(handle, data.data(), 36, &number));
        auto page = pattern(36);
        step(FT_EE_UAWrite(handle, page.data(), 36));
        step(FT_Close(handle));
        handle = nullptr;
        return worst;
    }
};
} // namespace

TEST_P(UsbFaultTest, IsSurvivedAndToldWhereverItHappens)
{
    for (const int error : {LIBUSB_ERROR_IO, LIBUSB_ERROR_NO_DEVICE, LIBUSB_ERROR_NO_MEM,
             LIBUSB_ERROR_PIPE, LIBUSB_ERROR_TIMEOUT, LIBUSB_ERROR_ACCESS}) {
        for (const int nth : GetParam().calls) {
            SCOPED_TRACE(std::to_string(error) + " at call " + std::to_string(nth));
            usb().reset();
            usb().plug({});
            usb().eeprom = programmedEeprom();
            usb().fail(GetParam().function, error, nth, true);
            testing::internal::CaptureStderr();
            const auto start = std::chrono::steady_clock::now();
            session();
            EXPECT_LT(std::chrono::steady_clock::now() - start, kLongest);
            EXPECT_EQ(usb().openHandles(), 0);
            usb().reset();
            usb().plug({});
            usb().eeprom = programmedEeprom();
            EXPECT_EQ(session(), FT_OK);
            testing::internal::GetCapturedStderr();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Calls, UsbFaultTest,
    testing::Values(Fault{"libusb_init", {1}}, Fault{"libusb_get_device_list", {1, 2}},
        Fault{"libusb_get_device_descriptor", {1, 2, 3}}, Fault{"libusb_open", {1, 2}},
        Fault{"libusb_get_string_descriptor_ascii", {1, 2}},
        Fault{"libusb_set_auto_detach_kernel_driver", {1}}, Fault{"libusb_claim_interface", {1}},
        Fault{"libusb_release_interface", {1}}, Fault{"libusb_get_max_packet_size", {1}},
        Fault{"libusb_alloc_transfer", {1, 16}},
        Fault{"libusb_submit_transfer", {1, 2, 17, 33, 50}}, Fault{"libusb_bulk_transfer", {1}},
        Fault{"libusb_control_transfer", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 40, 200}}),
    [](const auto &info) { return std::string(info.param.function); });

TEST_F(UsbTest, AHandleThatIsNotOpenAndMissingBuffersAreRefused)
{
    std::uint8_t byte = 0;
    DWORD number = 0;
    int nothing = 0;
    for (FT_HANDLE stale : {FT_HANDLE(nullptr), FT_HANDLE(&nothing)}) {
        EXPECT_EQ(FT_Read(stale, &byte, 1, &number), FT_INVALID_HANDLE);
        EXPECT_EQ(FT_Write(stale, &byte, 1, &number), FT_INVALID_HANDLE);
        EXPECT_EQ(FT_EE_UASize(stale, &number), FT_INVALID_HANDLE);
        EXPECT_EQ(FT_Close(stale), FT_INVALID_HANDLE);
    }
    ASSERT_EQ(open(), FT_OK);
    EXPECT_EQ(FT_Read(handle, nullptr, 1, &number), FT_INVALID_PARAMETER);
    EXPECT_EQ(FT_Write(handle, &byte, 1, nullptr), FT_INVALID_PARAMETER);
    EXPECT_EQ(FT_EE_UARead(handle, nullptr, 1, &number), FT_INVALID_PARAMETER);
    EXPECT_EQ(FT_SetLatencyTimer(handle, 1), FT_INVALID_PARAMETER);
    EXPECT_EQ(FT_Purge(handle, 4), FT_INVALID_PARAMETER);
}

TEST_F(UsbTest, TheSecondOpeningOfADeviceFailsAndTheFirstGoesOn)
{
    ASSERT_EQ(open(), FT_OK);
    usb().fail("libusb_claim_interface", LIBUSB_ERROR_BUSY);
    FT_HANDLE second = nullptr;
    testing::internal::CaptureStderr();
    EXPECT_EQ(FT_Open(0, &second), FT_DEVICE_NOT_OPENED);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("in use"), std::string::npos);
    EXPECT_EQ(second, nullptr);
    usb().send(pattern(100));
    EXPECT_EQ(read(100), pattern(100));
}
