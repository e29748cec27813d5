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
    QElapsedTimer clock;
    clock.start();
    ASSERT_TRUE(driver.open(0));
    EXPECT_GE(clock.elapsed(), 15); // three pauses for the ADC
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
    EXPECT_TRUE(
        lines().last().contains("bool HardwareZephrinNANO::open(int) ( 0 ): already opened"));
    EXPECT_TRUE(calls().isEmpty() && warnings().isEmpty());
}

TEST_F(HardwareZephrinNANOTest, AFailureEndsTheAttemptToOpenOrIsLoggedOnly)
{
    const struct
    {
        const char *call;
        int number; // of the calls of that name, from 1
        const char *text;
        bool opens;
    } rows[] = {{"FT_Open", 1, " failed to open,  9", false},
        {"FT_ResetDevice", 1, " failed to reset device,  9", true},
        {"FT_SetBitMode", 1, " failed to reset bit mode,  9", true},
        {"FT_SetBitMode", 2, " failed to set sync FIFO bit mode,  9", false},
        {"FT_SetLatencyTimer", 1, " failed to set latency timer,  9", true},
        {"FT_SetUSBParameters", 1, " failed to set USB parameters,  9", true},
        {"FT_SetFlowControl", 1, " failed to set Flow Control,  9", true},
        {"FT_SetTimeouts", 1, " failed to set timeouts,  9", true},
        {"FT_Write", 2, " failed to init ZephrinNANO", false},
        {"FT_Write", 30, " failed to init ZephrinNANO", false}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        resetDevice();
        log.clear();
        ASSERT_EQ(vr_fault(QString("fail:%1@%2=9").arg(row.call).arg(row.number).toUtf8()), 0);
        EXPECT_EQ(driver.open(0), row.opens);
        EXPECT_EQ(driver.isOpen(), row.opens);
        EXPECT_TRUE(log.warned("bool HardwareZephrinNANO::open(int)") && log.warned(row.text))
            << warnings().join('\n').toStdString();
        const QStringList made = calls();
        if (row.opens) {
            EXPECT_EQ(made.size(), 8 + 30);
            driver.close();
        } else {
            EXPECT_TRUE(made.last().startsWith(row.call)); // given up at once,
            EXPECT_EQ(made.filter(row.call).size(), row.number);
            EXPECT_EQ(device().open, row.number > 1); // and the handle is not given back
            driver.close();                           // of a device that does not count as open
            EXPECT_TRUE(calls().isEmpty());
        }
    }
}

TEST_F(HardwareZephrinNANOTest, ClosedDeviceTakesNoCommand)
{
    HardwareZephrinNANO::Calibrations page;
    EXPECT_FALSE(
        driver.setFrequency(7e6) || driver.setPreamp(0) || driver.read(page) || driver.write(page));
    EXPECT_TRUE(calls().isEmpty() && lines().isEmpty());
    EXPECT_FALSE(driver.writeState()); // asks the library, which knows no such handle
    EXPECT_TRUE(
        log.warned("bool HardwareZephrinNANO::write(const std::vector<uint8_t> &)  failed to "
                   "write data, writed:  0"));
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
        {30720000.0, {{Frequency, 0x40000000}}},
        {55000000.0, {{Frequency, 1922389333}}},
        {55000001.0, {{Frequency, 1922389368}, {State, kLpfOff}}},
        {61440000.0, {{Frequency, 0x80000000}}},
        {122880000.0 + 30720000.0, {{Frequency, 0x40000000}}}, // low 32 bits
        {0.05, {{Frequency, 1}, {State, 0}}},
        {-30720000.0, {{Frequency, 0xc0000000}}},
    };
    for (const auto &row : rows) {
        EXPECT_TRUE(driver.setFrequency(row.hertz));
        EXPECT_EQ(sent(), row.commands) << row.hertz;
    }
    vr_fault("fail:FT_Write@1");
    EXPECT_FALSE(driver.setFrequency(60e6));
    EXPECT_TRUE(sent().empty()); // the filter stays as it is too
    vr_fault("fail:FT_Write@2");
    EXPECT_TRUE(driver.setFrequency(60e6)); // a state that fails does not count
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

TEST_F(HardwareZephrinNANOTest, FailedRegisterWriteStaysAnnouncedUntilThePreampIsSet)
{
    open();
    for (const int failing : {1, 2}) {
        vr_fault(QString("fail:FT_Write@%1").arg(failing).toUtf8());
        EXPECT_FALSE(driver.writeAdcRegistr(0x4101));
        sent();
        EXPECT_TRUE(driver.writeState());
        EXPECT_EQ(sent(), (std::vector<Sent>{{State, kAdcWrite}}));
        EXPECT_TRUE(driver.setPreamp(0));
        EXPECT_EQ(sent().front(), (Sent{State, 0}));
    }
    for (const int failing : {1, 2, 3, 4, 5}) { // of the five packets of setPreamp()
        vr_fault(QString("fail:FT_Write@%1").arg(failing).toUtf8());
        EXPECT_FALSE(driver.setPreamp(3));
    }
}

TEST_F(HardwareZephrinNANOTest, CloseForgetsTheHandleEvenIfItFails)
{
    open();
    vr_fault("fail:FT_Close@1=4");
    driver.close();
    EXPECT_FALSE(driver.isOpen());
    EXPECT_TRUE(log.warned("void HardwareZephrinNANO::close()"));
    EXPECT_TRUE(log.warned(" failed to correct close,  4"));
    driver.close();
    EXPECT_EQ(calls(), QStringList{"FT_Close()"});
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
    } rows[] = {{1, 0, false}, {35, 0, false}, {36, 0, true}, {37, 0, true}, {1024, 0, true},
        {1024, 65537, false}, {1024, 0xffffffff, false}};
    for (const auto &[size, told, fits] : rows) {
        log.clear();
        library.userArea = told;
        std::vector<std::uint8_t> area(size), after(size);
        std::iota(area.begin(), area.end(), 1);
        ASSERT_EQ(vr_put_eeprom(area.data(), size), 0);
        HardwareZephrinNANO::Calibrations page, before;
        EXPECT_EQ(driver.read(page), fits) << size;
        EXPECT_EQ(std::memcmp(&page, fits ? (void *)area.data() : &before, kPage), 0) << size;

        page.checksum = 0x01020304;
        EXPECT_EQ(driver.write(page), fits) << size;
        ASSERT_EQ(vr_get_eeprom(after.data(), size), size);
        if (fits)
            EXPECT_EQ(std::memcmp(after.data(), &page, kPage), 0) << size;
        else
            EXPECT_EQ(after, area) << size;
        EXPECT_EQ(warnings().size(), fits ? 0 : 2) << size;
        EXPECT_NE(fits, log.warned("Incorrect page size"));
    }
}

TEST_F(HardwareZephrinNANOTest, CalibrationFailuresAreNamed)
{
    open();
    const QString read = "bool HardwareZephrinNANO::read(HardwareZephrinNANO::Calibrations &)";
    const QString write = QString(read).replace("read", "write");
    for (const auto &[call, text] : {std::pair{"FT_EE_UASize", read + "  Failed read page size!"},
             {"FT_EE_UARead", read + "  Failed read calibrations!"},
             {"FT_EE_UASize", write + "  Failed read page size!"},
             {"FT_EE_UAWrite", write + "  Failed read calibrations!"}}) {
        log.clear();
        vr_fault(QString("fail:%1@1").arg(call).toUtf8());
        HardwareZephrinNANO::Calibrations page;
        EXPECT_FALSE(text.startsWith(write) ? driver.write(page) : driver.read(page));
        EXPECT_EQ(warnings(), QStringList{text});
        EXPECT_EQ(page.userFreqCoeff, 1.0);
    }
}
} // namespace
