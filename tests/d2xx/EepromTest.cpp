// SPDX-License-Identifier: GPL-3.0-or-later
#include "UsbTest.h"

#include <fstream>
#include <iterator>

namespace
{
constexpr std::size_t kAreaStart = 88; // of UsbTest::programmedEeprom(): 72 + 14 + 2
constexpr DWORD kAreaSize = 36;        // 2 * 64 - 72 - 14 - 6

class EepromTest : public UsbTest
{
protected:
    void SetUp() override { ASSERT_EQ(open(), FT_OK); }

    static std::vector<std::uint8_t> bytesOf(const std::vector<std::uint16_t> &words)
    {
        std::vector<std::uint8_t> bytes;
        for (const std::uint16_t word : words) {
            bytes.push_back(std::uint8_t(word));
            bytes.push_back(std::uint8_t(word >> 8));
        }
        return bytes;
    }

    FT_STATUS writeArea(std::vector<std::uint8_t> data)
    {
        return FT_EE_UAWrite(handle, data.data(), DWORD(data.size()));
    }

    std::vector<std::vector<std::uint8_t>> copies() const
    {
        std::vector<std::vector<std::uint8_t>> all;
        if (!std::filesystem::exists(backups()))
            return all;
        for (const auto &file : std::filesystem::directory_iterator(backups())) {
            std::ifstream stream(file.path(), std::ios::binary);
            all.emplace_back(
                std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
        }
        return all;
    }

    /// 32 bytes and their CRC-32 from the bit-serial definition.
    static std::vector<std::uint8_t> calibrationPage()
    {
        auto page = pattern(32);
        std::uint32_t crc = ~0u;
        for (const std::uint8_t byte : page) {
            for (int bit = 0; bit < 8; ++bit) {
                const bool flip = (crc ^ byte >> bit) & 1;
                crc = crc >> 1 ^ (flip ? 0xedb88320 : 0);
            }
        }
        for (int i = 0; i < 4; ++i)
            page.push_back(std::uint8_t(~crc >> 8 * i));
        return page;
    }
};
} // namespace

TEST_F(EepromTest, TheUserAreaFollowsTheSerialNumber)
{
    struct Case
    {
        std::uint16_t type;
        std::uint16_t serialWord;
        FT_STATUS status;
        DWORD size;
    };
    const Case cases[] = {
        {0x46, 14 << 8 | 72, FT_OK, 36},
        {0x46, 14 << 8 | 72 | 0x80, FT_OK, 36}, // the offset's highest bit counts nothing here
        {0x56, 20 << 8 | 0xa0, FT_OK, 256 - 160 - 20 - 6}, {0x66, 20 << 8 | 0xa0, FT_OK, 70},
        {0x56, 90 << 8 | 0xa0, FT_EEPROM_NOT_PROGRAMMED, 0}, // no room is left
        {0x56, 0, FT_EEPROM_NOT_PROGRAMMED, 0},
        {0xffff, 0xffff, FT_EEPROM_NOT_PROGRAMMED, 0}, // blank
    };
    for (const Case &c : cases) {
        usb().eeprom.assign(128, 0);
        usb().eeprom[9] = c.serialWord;
        usb().eeprom[15] = c.type;
        DWORD size = 0;
        EXPECT_EQ(FT_EE_UASize(handle, &size), c.status) << std::hex << c.type << c.serialWord;
        EXPECT_EQ(size, c.size) << std::hex << c.type << ' ' << c.serialWord;
    }
}

TEST_F(EepromTest, WritesOnlyItsAreaAndTheChecksumAfterACopy)
{
    const auto before = usb().eeprom;
    const auto page = calibrationPage();
    ASSERT_EQ(writeArea(page), FT_OK);
    auto expected = bytesOf(before);
    std::copy(page.begin(), page.end(), expected.begin() + kAreaStart);
    auto now = usb().eeprom;
    EXPECT_EQ(now.back(), eepromChecksum(now));
    now.back() = before.back();
    EXPECT_EQ(bytesOf(now), expected);
    ASSERT_EQ(copies().size(), 1u);
    EXPECT_EQ(copies().front(), bytesOf(before));

    std::vector<std::uint8_t> data(kAreaSize + 20);
    DWORD got = 0;
    EXPECT_EQ(FT_EE_UARead(handle, data.data(), DWORD(data.size()), &got), FT_OK);
    EXPECT_EQ(got, kAreaSize);
    data.resize(got);
    EXPECT_EQ(data, page);

    const int words = usb().wordsWritten;
    EXPECT_EQ(writeArea(page), FT_OK);
    EXPECT_EQ(usb().wordsWritten, words) << "the same again wears nothing out";
}

TEST_F(EepromTest, RefusesWhereAWriteCouldDoHarm)
{
    const auto good = usb().eeprom;
    std::vector<std::uint16_t> elsewhere = good;
    const auto page = calibrationPage();
    for (std::size_t i = 0; i < page.size(); i += 2)
        elsewhere[10 + i / 2] = std::uint16_t(page[i + 1] << 8 | page[i]);
    elsewhere[15] = good[15];
    // The page moves past the word that tells the EEPROM's kind.
    elsewhere = good;
    for (std::size_t i = 0; i < page.size(); i += 2)
        elsewhere[20 + i / 2] = std::uint16_t(page[i + 1] << 8 | page[i]);
    elsewhere.back() = eepromChecksum(elsewhere);
    std::vector<std::uint16_t> damaged = good;
    damaged[3] ^= 1;

    const struct
    {
        const std::vector<std::uint16_t> &content;
        FT_STATUS status;
        const char *told;
    } cases[] = {
        {elsewhere, FT_EEPROM_WRITE_FAILED, "byte 40"},
        {damaged, FT_EEPROM_NOT_PROGRAMMED, "checksum"},
    };
    for (const auto &c : cases) {
        usb().eeprom = c.content;
        testing::internal::CaptureStderr();
        EXPECT_EQ(writeArea(pattern(36)), c.status);
        EXPECT_NE(testing::internal::GetCapturedStderr().find(c.told), std::string::npos) << c.told;
        EXPECT_EQ(usb().eeprom, c.content);
    }
    usb().eeprom = good;
    EXPECT_EQ(writeArea(pattern(kAreaSize + 1)), FT_INVALID_PARAMETER);
    EXPECT_EQ(usb().wordsWritten, 0);
}

TEST_F(EepromTest, PutsBackWhatWasThereIfItReadsBackOtherwise)
{
    const auto before = usb().eeprom;
    usb().brokenWord = 50;
    usb().eeprom[50] &= 0xfffe;
    usb().eeprom.back() = eepromChecksum(usb().eeprom);
    const auto content = usb().eeprom;
    testing::internal::CaptureStderr();
    EXPECT_EQ(writeArea(std::vector<std::uint8_t>(kAreaSize, 0xff)), FT_EEPROM_WRITE_FAILED);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("is back"), std::string::npos);
    EXPECT_EQ(usb().eeprom, content);
    EXPECT_EQ(copies().size(), 1u);
}

TEST_F(EepromTest, IsNotWrittenWithoutItsCopy)
{
    std::filesystem::create_directories(backups().parent_path());
    std::ofstream(backups()) << "a file where the folder should be";
    testing::internal::CaptureStderr();
    EXPECT_EQ(writeArea(pattern(36)), FT_EEPROM_WRITE_FAILED);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("ZN0001-"), std::string::npos);
    EXPECT_EQ(usb().wordsWritten, 0);
}
