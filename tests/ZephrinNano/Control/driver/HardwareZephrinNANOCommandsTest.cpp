// SPDX-License-Identifier: GPL-3.0-or-later
#include "ZephrinNano/BrokenLibrary.h"
#include "ZephrinNano/Control/driver/DriverTest.h"

#include <cstring>
#include <numeric>

namespace
{
enum Code { Frequency = 1, State = 2, AdcRegister = 3, Attenuator = 4 };
constexpr std::uint32_t kLpfOff = 0x00010000;
constexpr std::uint32_t kAdcWrite = 0x40000000;
constexpr std::uint32_t kAdcReset = 0x80000000;

class HardwareZephrinNANOTest : public DriverTest
{ };

TEST_F(HardwareZephrinNANOTest, OpenSetsUpTheFifoAndThenTheAdc)
{
    ASSERT_TRUE(driver.open(0));
    EXPECT_TRUE(driver.isOpen());
    QStringList expected{"FT_Open(0)", "FT_ResetDevice()", "FT_SetBitMode(255, 0)",
        "FT_SetBitMode(255, 64)", "FT_SetLatencyTimer(36)", "FT_SetUSBParameters(4096, 4096)",
        "FT_SetFlowControl(256, 0, 0)", "FT_SetTimeouts(200, 200)"};
    for (int packet = 0; packet < 3 + 9 * 3; ++packet)
        expected << "FT_Write(11)";
    EXPECT_EQ(calls(), expected);

    std::vector<Sent> words{{State, 0}, {State, kAdcReset}, {State, 0}};
    for (const unsigned word :
        {0x0003, 0x0100, 0x0301, 0x2500, 0x3DA0, 0x41C0, 0x4208, 0x4300, 0x4A01})
        words.insert(words.end(), {{State, kAdcWrite}, {AdcRegister, word}, {State, 0}});
    EXPECT_EQ(sent(), words);
    EXPECT_FALSE(driver.open(0));
    EXPECT_TRUE(calls().isEmpty() && warnings().isEmpty());
}

TEST_F(HardwareZephrinNANOTest, WithoutTheFifoModeTheAttemptToOpenEnds)
{
    ASSERT_EQ(vr_fault("fail:FT_SetBitMode@2"), 0);
    EXPECT_FALSE(driver.open(0) || driver.isOpen());
    EXPECT_EQ(calls().last(), "FT_SetBitMode(255, 64)");
}

// Words are the frequency in units of 122.88 MHz / 2^32 = 0.02861 Hz, rounded toward zero.
TEST_F(HardwareZephrinNANOTest, FilterLeavesAbove55MegahertzWithAStateOfItsOwn)
{
    open();
    const struct
    {
        double hertz;
        std::vector<Sent> commands;
    } rows[] = {
        {0.0, {{Frequency, 0}}},
        {55000000.0, {{Frequency, 1922389333}}},
        {55000001.0, {{Frequency, 1922389368}, {State, kLpfOff}}},
        {122880000.0 + 30720000.0, {{Frequency, 0x40000000}}}, // low 32 bits
        {0.05, {{Frequency, 1}, {State, 0}}},
    };
    for (const auto &row : rows) {
        EXPECT_TRUE(driver.setFrequency(row.hertz));
        EXPECT_EQ(sent(), row.commands) << row.hertz;
    }
    vr_fault("fail:FT_Write@1");
    EXPECT_FALSE(driver.setFrequency(60e6));
    EXPECT_TRUE(sent().empty()); // the filter stays as it is too
}

TEST_F(HardwareZephrinNANOTest, PreampIsAttenuationBelowAndAdcGainAboveZero)
{
    open();
    const struct
    {
        float dB;
        std::uint32_t attenuation;
        std::uint32_t word;
    } rows[] = {{0, 0, 0x2500}, {-0.25f, 0, 0x2500}, {0.3f, 0, 0x2500}, {-0.5f, 1, 0x2500},
        {-10, 20, 0x2500}, {-31.5f, 63, 0x2500}, {-40, 63, 0x2500}, {0.5f, 0, 0x2510},
        {5.9f, 0, 0x25B0}, {6, 0, 0x25C0}, {7, 0, 0x25C0}};
    for (const auto &row : rows) {
        EXPECT_TRUE(driver.setPreamp(row.dB));
        EXPECT_EQ(sent(),
            (std::vector<Sent>{{State, 0}, {Attenuator, row.attenuation}, {State, kAdcWrite},
                {AdcRegister, row.word}, {State, 0}}))
            << row.dB;
    }
}

// The page is 36 bytes; the area may be larger, and is no longer than an EEPROM.
TEST_F(HardwareZephrinNANOTest, CalibrationPageNeedsAUserAreaThatMakesSense)
{
    constexpr std::size_t kPage = sizeof(HardwareZephrinNANO::Calibrations);
    test::BrokenLibrary library;
    open();
    const struct
    {
        std::size_t size; // of the area
        unsigned told;    // by a broken library
        bool fits;
    } rows[] = {{35, 0, false}, {36, 0, true}, {1024, 0, true}, {1024, 0xffffffff, false}};
    for (const auto &[size, told, fits] : rows) {
        log.clear();
        library.userArea = told;
        std::vector<std::uint8_t> area(size);
        std::iota(area.begin(), area.end(), 1);
        ASSERT_EQ(vr_put_eeprom(area.data(), size), 0);
        HardwareZephrinNANO::Calibrations page, before;
        EXPECT_EQ(driver.read(page), fits) << size;
        EXPECT_EQ(std::memcmp(&page, fits ? (void *)area.data() : &before, kPage), 0) << size;
        EXPECT_EQ(warnings().size(), fits ? 0 : 1) << size;
    }
}
} // namespace
