// SPDX-License-Identifier: GPL-3.0-or-later
#include "UsbTest.h"

#include "d2xx/usb/StreamPump.h"

#include <chrono>
#include <future>
#include <thread>

using namespace std::chrono_literals;

namespace
{
constexpr std::size_t kBytes = 300000;

/// More than any wait of this machine, less than the 2 s that a call may take.
constexpr auto kAtOnce = 1500ms;

class StreamTest : public UsbTest
{
protected:
    void SetUp() override { ASSERT_EQ(open(), FT_OK); }

    /// A read that waits in a thread of its own until the device has been asked for bytes.
    std::future<FT_STATUS> readElsewhere()
    {
        auto result = std::async(std::launch::async, [this] {
            FT_STATUS status = FT_OK;
            read(1000, &status);
            return status;
        });
        std::this_thread::sleep_for(20ms);
        return result;
    }
};
} // namespace

TEST_F(StreamTest, GivesEveryByteOnceWithoutTheStatusBytes)
{
    EXPECT_EQ(usb().queued(), d2xx::StreamPump::kTransfers);
    const auto sent = pattern(kBytes);
    usb().send(sent);
    std::vector<std::uint8_t> got;
    for (const std::size_t size : {1, 509, 511, 4096, 32768}) {
        const auto some = read(size);
        ASSERT_EQ(some.size(), size);
        got.insert(got.end(), some.begin(), some.end());
    }
    const auto rest = read(kBytes - got.size());
    got.insert(got.end(), rest.begin(), rest.end());
    EXPECT_EQ(got, sent);
}

TEST_F(StreamTest, AReadThatTimesOutGivesWhatItHas)
{
    FT_SetTimeouts(handle, 100, 100);
    usb().send(pattern(700));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(read(4096), pattern(700));
    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_GE(took, 100ms);
    EXPECT_LT(took, kAtOnce);
    usb().sendNothing();
    EXPECT_TRUE(read(10).empty());
}

TEST_F(StreamTest, ASlowReaderStopsTheDeviceAndLosesNothing)
{
    const std::size_t more = d2xx::StreamPump::kRingBytes + kBytes;
    usb().send(pattern(more));
    while (usb().queued() > 0)
        std::this_thread::sleep_for(1ms);
    EXPECT_EQ(read(more), pattern(more));
}

TEST_F(StreamTest, GoesOnAfterFailedTransfers)
{
    for (const auto status :
        {LIBUSB_TRANSFER_ERROR, LIBUSB_TRANSFER_OVERFLOW, LIBUSB_TRANSFER_STALL}) {
        usb().endTransfers(status, 3);
        usb().send(pattern(5000));
        EXPECT_EQ(read(5000), pattern(5000)) << status;
    }
    EXPECT_GE(usb().calls("libusb_clear_halt"), 1);
}

TEST_F(StreamTest, GoesOnWithFewerTransfersWhileThereIsNoMemory)
{
    usb().fail("libusb_submit_transfer", LIBUSB_ERROR_NO_MEM, 1, true);
    usb().send(pattern(4000));
    EXPECT_EQ(read(4000), pattern(4000));
    usb().fail("libusb_submit_transfer", 0, 1, true);
    usb().send(pattern(kBytes));
    EXPECT_EQ(read(kBytes), pattern(kBytes));
    EXPECT_EQ(usb().queued(), d2xx::StreamPump::kTransfers);
}

TEST_F(StreamTest, ADeviceThatGoesFailsTheReadAndAllCallsAtOnce)
{
    FT_SetTimeouts(handle, 0, 0);
    auto waiting = readElsewhere();
    usb().unplug();
    ASSERT_EQ(waiting.wait_for(kAtOnce), std::future_status::ready);
    EXPECT_EQ(waiting.get(), FT_IO_ERROR);
    FT_STATUS status = FT_OK;
    read(10, &status);
    EXPECT_EQ(status, FT_IO_ERROR);
    EXPECT_EQ(FT_Purge(handle, FT_PURGE_RX | FT_PURGE_TX), FT_IO_ERROR);
    EXPECT_EQ(FT_SetUSBParameters(handle, 4096, 4096), FT_IO_ERROR);
    EXPECT_EQ(FT_SetBitMode(handle, 0xff, FT_BITMODE_RESET), FT_IO_ERROR);
    EXPECT_EQ(FT_Close(handle), FT_OK);
    EXPECT_EQ(FT_Close(handle), FT_INVALID_HANDLE);
    handle = nullptr;
}

TEST_F(StreamTest, ErrorsWithoutEndAreADeviceThatIsGone)
{
    auto waiting = readElsewhere();
    usb().endTransfers(LIBUSB_TRANSFER_ERROR, 1000);
    ASSERT_EQ(waiting.wait_for(kAtOnce), std::future_status::ready);
    EXPECT_EQ(waiting.get(), FT_IO_ERROR);
}

TEST_F(StreamTest, ClosingWakesAReaderOfAnotherThread)
{
    FT_SetTimeouts(handle, 0, 0);
    auto waiting = readElsewhere();
    EXPECT_EQ(FT_Close(handle), FT_OK);
    handle = nullptr;
    ASSERT_EQ(waiting.wait_for(kAtOnce), std::future_status::ready);
    EXPECT_EQ(waiting.get(), FT_INVALID_HANDLE);
}

TEST_F(StreamTest, PurgeDropsWhatCameBeforeAndOnlyThat)
{
    usb().send(pattern(3000));
    read(100);
    while (usb().queued() < d2xx::StreamPump::kTransfers)
        std::this_thread::sleep_for(1ms);
    const int requests = usb().calls("libusb_control_transfer");
    EXPECT_EQ(FT_Purge(handle, FT_PURGE_RX | FT_PURGE_TX), FT_OK);
    EXPECT_EQ(usb().calls("libusb_control_transfer"), requests + 2);
    usb().send(pattern(2000, 77));
    EXPECT_EQ(read(2000), pattern(2000, 77));
}

TEST_F(StreamTest, AnotherTransferSizeInMidStreamKeepsEveryByte)
{
    auto sending = std::async(std::launch::async, [] {
        for (std::uint32_t at = 0; at < kBytes; at += 1000) {
            usb().send(pattern(1000, at));
            std::this_thread::sleep_for(100us);
        }
    });
    std::vector<std::uint8_t> got;
    for (std::size_t i = 0; i < kBytes / 10000; ++i) {
        EXPECT_EQ(FT_SetUSBParameters(handle, 4096u << i % 5, 64), FT_OK);
        const auto some = read(10000);
        got.insert(got.end(), some.begin(), some.end());
    }
    sending.get();
    EXPECT_EQ(got, pattern(kBytes));
    for (const ULONG size : {0u, 63u, 100u, 65600u})
        EXPECT_EQ(FT_SetUSBParameters(handle, size, 4096), FT_INVALID_PARAMETER) << size;
}

TEST_F(StreamTest, ATransferThatTheSystemKeepsHoldsUpClosingForTwoSecondsAtMost)
{
    usb().loseCancelled();
    testing::internal::CaptureStderr();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(FT_Close(handle), FT_OK);
    handle = nullptr;
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2s + kAtOnce);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("16 transfers"), std::string::npos);
}

TEST_F(StreamTest, ACommandGoesOutWhileAReadWaits)
{
    auto waiting = readElsewhere();
    std::vector<std::uint8_t> command = {0x55, 1, 2, 3};
    DWORD taken = 0;
    EXPECT_EQ(FT_Write(handle, command.data(), DWORD(command.size()), &taken), FT_OK);
    EXPECT_EQ(taken, command.size());
    EXPECT_EQ(usb().written(), command);
    usb().fail("libusb_bulk_transfer", LIBUSB_ERROR_TIMEOUT);
    EXPECT_EQ(FT_Write(handle, command.data(), 4, &taken), FT_FAILED_TO_WRITE_DEVICE);
    EXPECT_EQ(taken, 0u);
    usb().send(pattern(1000));
    EXPECT_EQ(waiting.get(), FT_OK);
}
