// SPDX-License-Identifier: GPL-3.0-or-later
#include "Rig.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <numeric>
#include <thread>

namespace
{
using test::Rig;

using Bytes = std::vector<std::uint8_t>;

// A scene without a byte 0x55, so that every marker found is a true one.
void playQuiet()
{
    const double iq[2] = {0.0, 0.0};
    ASSERT_EQ(vr_scene_samples(iq, 1, 48000, 0.0, 1), 0);
}

/// Distances between the markers in a stretch of stream.
std::vector<std::size_t> frameSizes(const Bytes &bytes)
{
    static const std::uint8_t kMarker[5] = {0x55, 0x55, 0x55, 0x55, 1};
    std::vector<std::size_t> sizes;
    auto last = bytes.begin();
    for (auto next = last; next != bytes.end();) {
        next = std::search(last + 5, bytes.end(), kMarker, kMarker + 5);
        sizes.push_back(std::size_t(next - last));
        last = next;
    }
    return sizes;
}

TEST(FaultTest, ByteFaultsChangeTheSizeOfTheirFrameAlone)
{
    Rig rig;
    playQuiet();
    ASSERT_EQ(vr_fault("added-byte@1:100,lost-byte@3:5,lost-byte@4x2"), 0) << vr_last_error();
    rig.stream(0);
    const std::vector<std::size_t> expected = {512, 513, 512, 511, 511, 511, 512};
    EXPECT_EQ(frameSizes(rig.read(6 * 512 + 510)), expected);
}

TEST(FaultTest, ANamedCallFailsWithItsStatus)
{
    constexpr auto kTen = FT_FAILED_TO_WRITE_DEVICE;
    Rig rig;
    ASSERT_EQ(vr_fault("fail:FT_Purge@2x2=10"), 0);
    for (const auto expected : {FT_OK, kTen, kTen, FT_OK})
        EXPECT_EQ(FT_Purge(rig.handle(), 3), expected);
}

TEST(FaultTest, CallsAnswerWithLessWithNothingOrWithTooMuch)
{
    constexpr DWORD kTooMany = 0xdeadbeef;
    struct Row
    {
        const char *kind;
        DWORD devices, read, written, area;
        const char *name;
    };
    constexpr Row kRows[] = {
        {"short", 1, 256, 5, 32, "Zephr"},
        {"zero", 0, 0, 0, 0, ""},
        {"garbage", kTooMany, kTooMany, kTooMany, kTooMany, nullptr},
    };
    for (const Row &row : kRows) {
        SCOPED_TRACE(row.kind);
        Rig rig;
        vr_set_foreign_devices(2);
        playQuiet();
        rig.stream(0);
        for (const char *function :
            {"FT_ListDevices", "FT_Read", "FT_Write", "FT_EE_UASize", "FT_EE_UARead"})
            ASSERT_EQ(vr_fault((row.kind + std::string(":") + function + "@1x2").c_str()), 0);
        DWORD count = 0;
        EXPECT_EQ(FT_ListDevices(&count, nullptr, FT_LIST_NUMBER_ONLY), FT_OK);
        EXPECT_EQ(count, row.devices);
        char name[64] = {};
        EXPECT_EQ(FT_ListDevices(PVOID(2), name, FT_LIST_BY_INDEX | FT_OPEN_BY_DESCRIPTION), FT_OK);
        EXPECT_EQ(row.name ? name : std::string(64, '\xff'),
            row.name ? std::string(row.name) : std::string(name, sizeof name));
        Bytes bytes(512);
        EXPECT_EQ(FT_Read(rig.handle(), bytes.data(), 512, &count), FT_OK);
        EXPECT_EQ(count, row.read);
        Bytes command = test::command(4, 1);
        EXPECT_EQ(FT_Write(rig.handle(), command.data(), DWORD(command.size()), &count), FT_OK);
        EXPECT_EQ(count, row.written);
        EXPECT_EQ(rig.status().attenuator, row.name ? 0u : 1u);
        EXPECT_EQ(FT_EE_UASize(rig.handle(), &count), FT_OK);
        EXPECT_EQ(count, row.area);
        EXPECT_EQ(FT_EE_UARead(rig.handle(), bytes.data(), 64, &count), FT_OK);
        EXPECT_EQ(count, row.area);
    }
}

TEST(FaultTest, AHandleThatIsNoneOpensNothing)
{
    Rig rig;
    FT_Close(rig.handle());
    ASSERT_EQ(vr_fault("zero:FT_Open@1,garbage:FT_Open@2"), 0);
    FT_HANDLE handle = &rig;
    EXPECT_EQ(FT_Open(0, &handle), FT_OK);
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(FT_Open(0, &handle), FT_OK);
    EXPECT_NE(handle, nullptr);
    EXPECT_EQ(FT_Purge(handle, 3), FT_INVALID_HANDLE);
    EXPECT_EQ(FT_Open(0, &handle), FT_OK);
    EXPECT_EQ(FT_Purge(handle, 3), FT_OK);
}

TEST(FaultTest, ACallThatHangsHoldsUpNobodyElse)
{
    constexpr auto kHang = std::chrono::milliseconds(300);
    Rig rig;
    ASSERT_EQ(vr_fault("hang:FT_Read=0.3"), 0);
    rig.stream(0);
    const auto start = std::chrono::steady_clock::now();
    std::thread reader([&rig] { rig.read(512); });
    std::this_thread::sleep_for(kHang / 10);
    EXPECT_EQ(FT_Purge(rig.handle(), FT_PURGE_TX), FT_OK);
    EXPECT_LT(std::chrono::steady_clock::now() - start, kHang);
    reader.join();
    EXPECT_GE(std::chrono::steady_clock::now() - start, kHang);
}

TEST(FaultTest, ReadsFailAndTear)
{
    Rig rig;
    playQuiet();
    rig.stream(0);
    ASSERT_EQ(vr_fault("read-error@2x2,torn-read@5"), 0);
    Bytes all;
    std::string calls; // failed, torn, whole
    for (int i = 0; i < 8; ++i) {
        Bytes buffer(700);
        DWORD received = 0;
        const bool failed = FT_Read(rig.handle(), buffer.data(), 700, &received) != FT_OK;
        calls += failed ? 'f' : received < 700 ? 't' : 'w';
        all.insert(all.end(), buffer.begin(), buffer.begin() + received);
    }
    EXPECT_EQ(calls, "wffwwwtw");       // a failed read does not come to tearing, so it is call 7
    const auto sizes = frameSizes(all); // what a torn read leaves comes with the next
    EXPECT_TRUE(std::all_of(sizes.begin(), sizes.end() - 1, [](auto size) { return size == 512; }));
}

TEST(FaultTest, SilenceHoldsTheStreamForItsTime)
{
    constexpr double kBusyMachine = 2.0; // seconds: it ends at all
    for (const vr_pace pace : {VR_PACE_FREE, VR_PACE_REAL_TIME}) {
        Rig rig;
        vr_set_pace(pace);
        FT_SetTimeouts(rig.handle(), 30, 30);
        ASSERT_EQ(vr_fault("silence@0.0175..0.1"), 0); // 10 frames of 1.75 ms, then 82.5 ms
        const auto start = std::chrono::steady_clock::now();
        rig.stream(0);
        EXPECT_EQ(rig.read(10 * 512).size(), 10u * 512);
        EXPECT_TRUE(rig.read(512).empty());
        while (rig.read(512).empty()) { }
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        EXPECT_GE(took.count(), pace == VR_PACE_REAL_TIME ? 0.1 : 0.0825);
        EXPECT_LT(took.count(), 0.1 + kBusyMachine);
        EXPECT_EQ(rig.status().fifo_overruns, 0u);
    }
}

TEST(FaultTest, AnUnpluggedDeviceIsGoneAndItsHandleStaysDead)
{
    Rig rig;
    const FT_HANDLE old = rig.handle();
    rig.tune(1e6);
    rig.stream(0);
    ASSERT_EQ(vr_fault("unplug@0.0175,replug@0.1"), 0);
    EXPECT_EQ(rig.read(10 * 512).size(), 10u * 512);
    Bytes buffer(512);
    DWORD received = 0;
    EXPECT_EQ(FT_Read(old, buffer.data(), 512, &received), FT_IO_ERROR);
    FT_HANDLE handle = nullptr;
    EXPECT_EQ(FT_Open(0, &handle), FT_DEVICE_NOT_FOUND);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_EQ(rig.status().frequency_word, 0u); // it has lost its power
    EXPECT_EQ(FT_Open(0, &handle), FT_OK);
    EXPECT_EQ(FT_Purge(old, 3), FT_IO_ERROR);
    EXPECT_EQ(FT_Purge(handle, 3), FT_OK);
}

TEST(FaultTest, WhatIsNotUnderstoodIsNamedAndNothingIsAdded)
{
    Rig rig;
    EXPECT_EQ(vr_fault("fail:FT_Purge,lost-byte@5:512"), -1);
    EXPECT_NE(std::string(vr_last_error()).find("\"lost-byte@5:512\""), std::string::npos);
    EXPECT_EQ(FT_Purge(rig.handle(), 3), FT_OK);
    for (const char *text : {"short:FT_Open", "zero:FT_Purge", "hang:FT_Nothing", "hang:FT_Read=-1",
             "garbage:FT_Read@0", "short:FT_Read=3"})
        EXPECT_EQ(vr_fault(text), -1) << text;
}
} // namespace
