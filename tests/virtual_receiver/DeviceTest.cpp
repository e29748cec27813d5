// SPDX-License-Identifier: GPL-3.0-or-later
#include "Rig.h"
#include "support/FileSizeLimit.h"

#include <csignal>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>

namespace
{
using test::command;
using test::Rig;

using Bytes = std::vector<std::uint8_t>;

Bytes join(std::initializer_list<Bytes> parts)
{
    Bytes all;
    for (const Bytes &part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

TEST(DeviceTest, CommandsSetTheRegisters)
{
    Rig rig;
    rig.tune(14.2e6);
    rig.send(2, 1u << 31 | 5);
    rig.send(3, 0x41C0);
    rig.send(4, 17);
    const auto status = rig.status();
    EXPECT_EQ(status.frequency_word, test::frequencyWord(14.2e6));
    constexpr double kTuningStep = 0.03;
    EXPECT_NEAR(status.frequency_hz, 14.2e6, kTuningStep);
    EXPECT_EQ(status.state_word, 1u << 31 | 5);
    EXPECT_EQ(status.sample_rate_hz, 1536000.0);
    EXPECT_EQ(status.adc_registers[0x41], 0xC0);
    EXPECT_EQ(status.attenuator, 17u);
    EXPECT_EQ(status.streaming, 0);
    EXPECT_EQ(status.commands, 4u);
}

TEST(DeviceTest, ForgottenCallsAreCountedAllTheSame)
{
    Rig rig;
    rig.tune(14.2e6);
    vr_forget_calls();
    EXPECT_STREQ(vr_get_calls(), "");
    EXPECT_EQ(vr_get_commands(nullptr, 0), 0u);
    EXPECT_EQ(rig.status().commands, 1u);
}

TEST(DeviceTest, PacketsAreFoundInAnyByteStream)
{
    const Bytes first = command(1, 0x55555555); // a value like a marker
    const Bytes second = command(4, 9);
    struct Row
    {
        const char *what;
        Bytes bytes;
        std::uint64_t commands;
        std::uint64_t badBytes;
    };
    const Row rows[] = {
        {"garbage", join({{1, 2, 3}, first, {0x55, 0x55, 7}, second}), 2, 6},
        {"a marker byte too many", join({{0x55, 0x55}, first, second}), 2, 2},
        {"a marker byte too few", join({{second.begin() + 1, second.end()}, second}), 1, 10},
        {"wrong type byte", join({{0x55, 0x55, 0x55, 0x55, 0x55, 2}, second}), 1, 6},
    };
    for (const Row &row : rows) {
        for (const std::size_t cut : {std::size_t(4), row.bytes.size()}) { // in writes
            Rig rig;
            for (std::size_t at = 0; at < row.bytes.size(); at += cut)
                rig.write({row.bytes.begin() + long(at),
                    row.bytes.begin() + long(std::min(at + cut, row.bytes.size()))});
            const auto status = rig.status();
            EXPECT_EQ(status.commands, row.commands) << row.what;
            EXPECT_EQ(status.bad_bytes, row.badBytes) << row.what;
            EXPECT_EQ(status.attenuator, 9u) << row.what;
        }
    }
}

Bytes readUserArea(FT_HANDLE handle)
{
    DWORD size = 0;
    EXPECT_EQ(FT_EE_UASize(handle, &size), FT_OK);
    Bytes bytes(size);
    DWORD received = 0;
    EXPECT_EQ(FT_EE_UARead(handle, bytes.data(), size, &received), FT_OK);
    EXPECT_EQ(received, size);
    return bytes;
}

TEST(EepromTest, DefaultPageIsNeutralWithItsChecksum)
{
    Rig rig;
    const Bytes page = readUserArea(rig.handle());
    ASSERT_GE(page.size(), 64u);
    const double neutral[] = {0.0, 1.0, 0.0, 1.0};
    const std::uint32_t checksum = 0x23a373b6; // of these 32 bytes, by zlib
    EXPECT_EQ(std::memcmp(page.data(), neutral, 32), 0);
    EXPECT_EQ(std::memcmp(page.data() + 32, &checksum, 4), 0);
}

TEST(EepromTest, AFileIsReplacedWholeOrNotAtAll)
{
    const test::TemporaryFolder folder;
    const std::string path = folder.write("eeprom.bin", "old calibration");
    Bytes next;
    {
        Rig rig;
        ASSERT_EQ(vr_set_eeprom(path.c_str()), 0);
        const Bytes old = next = readUserArea(rig.handle());
        next[0] = 'O';
        std::signal(SIGXFSZ, SIG_IGN);
        {
            const test::FileSizeLimit full(0);
            EXPECT_EQ(FT_EE_UAWrite(rig.handle(), next.data(), DWORD(next.size())),
                FT_EEPROM_WRITE_FAILED);
        }
        EXPECT_EQ(readUserArea(rig.handle()), old);
        ASSERT_EQ(vr_set_eeprom(path.c_str()), 0); // from the file again
        EXPECT_EQ(readUserArea(rig.handle()), old);
        EXPECT_EQ(FT_EE_UAWrite(rig.handle(), next.data(), DWORD(next.size())), FT_OK);
    }
    Rig rig;
    ASSERT_EQ(vr_set_eeprom(path.c_str()), 0);
    EXPECT_EQ(readUserArea(rig.handle()), next);
    EXPECT_EQ(vr_set_eeprom(folder.file("no/such/folder").c_str()), -1);
    EXPECT_EQ(readUserArea(rig.handle()), next);
    const std::filesystem::directory_iterator files(folder.file(""));
    EXPECT_EQ(std::distance(begin(files), end(files)), 1); // nothing is left over
}
} // namespace
