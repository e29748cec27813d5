// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/AmateurRegion.h"
#include "support/TemporarySettings.h"

#include <QSettings>
#include <gtest/gtest.h>

#include <array>

namespace
{
const char *const kFile = "itu.ini";
constexpr QLocale::Country kJapan = QLocale::Country(108);
constexpr QLocale::Country kGermany = QLocale::Country(82);
constexpr QLocale::Country kAustralia = QLocale::Country(13); // no 60 m limits, region 3
constexpr QLocale::Country kAustria = QLocale::Country(14);   // no 60 m limits, region 1

class AmateurRegionTest : public ::testing::Test
{
protected:
    static void writeCountry(int country)
    {
        settings().write(kFile, "[ITU]\nCountry=" + QByteArray::number(country) + "\n");
    }

    static test::TemporarySettings &settings()
    {
        static test::TemporarySettings folder;
        return folder;
    }

    AmateurRegionTest() { QFile::remove(settings().path(kFile)); }

    static QVariant stored(const char *key)
    {
        return QSettings(settings().path(kFile), QSettings::IniFormat).value(key);
    }
};

TEST_F(AmateurRegionTest, StartReadsAndCompletesTheFileOrMakesIt)
{
    EXPECT_TRUE(settings().path(kFile).endsWith("/Velmora Labs/VelmoraSDR2/itu.ini"));
    AmateurRegion first;
    const auto country = QLocale::system().country();
    EXPECT_EQ(stored("ITU/Country").toInt(), int(country));
    EXPECT_EQ(stored("ITU/Band60M"), "false");
    EXPECT_EQ(first.current(), first.defaultRegion(country));

    settings().write(kFile, "[ITU]\nBand60M=true\nCountry=13\n");
    AmateurRegion region;
    EXPECT_TRUE(region.enable60M());
    EXPECT_FALSE(region.enable11M());
    EXPECT_EQ(region.info(), "Location: Australia\nITU: Region 3");
    EXPECT_EQ(stored("ITU/Band11M"), "false");
}

TEST_F(AmateurRegionTest, AnotherCountryMovesRegionAnd60MFlagAtTheNextStartOnly)
{
    writeCountry(kAustralia);
    AmateurRegion region;
    region.setCountry(kGermany);
    EXPECT_EQ(region.info(), "Location: Germany\nITU: Region 3");
    EXPECT_FALSE(region.avalible60M());
    region.setEnable60M(true); // saves

    AmateurRegion next;
    EXPECT_EQ(next.info(), "Location: Germany\nITU: Region 1");
    EXPECT_TRUE(next.avalible60M());
    EXPECT_TRUE(next.enable60M());
}

TEST_F(AmateurRegionTest, EdgesAndAvailabilityFollowCountryRegionAndSwitches)
{
    enum Switch { Off, On11M, On60M };
    const struct
    {
        QLocale::Country country;
        int region;
        int band;
        Switch on;
        bool available;
        quint64 low;
        quint64 high;
    } rows[] = {
        // Every region's column, and a country's own, which goes before the region.
        {kAustria, 0, 1, Off, true, 3500000, 3800000},
        {kAustria, 1, 1, Off, true, 3500000, 4000000},
        {kAustria, 2, 1, Off, true, 3500000, 3900000},
        {kJapan, 1, 1, Off, true, 3500000, 3805000},
        // 11 m: the switch decides, but not in Japan.
        {kAustria, 0, 9, On11M, true, 26965000, 28000000},
        {kJapan, 2, 9, On11M, false, 26965000, 28000000},
        // 60 m: the country's own limits go before the switch, the switch before nothing.
        {kGermany, 0, 2, On60M, true, 5351500, 5366500},
        {kAustria, 0, 2, Off, false, 0, 0},
        {kAustria, 1, 2, On60M, true, 5100000, 5500000},
    };
    AmateurRegion region;
    for (const auto &row : rows) {
        region.setCountry(row.country);
        region.setCurrent(AmateurRegion::Region(row.region));
        region.setEnable11M(row.on == On11M);
        region.setEnable60M(row.on == On60M);
        const auto info = region.getInfo(AmateurRegion::Band(row.band));
        const auto what = testing::Message()
            << "country " << row.country << " region " << row.region << " band " << row.band;
        EXPECT_EQ(info.available, row.available) << what;
        EXPECT_EQ(info.low, row.low) << what;
        EXPECT_EQ(info.high, row.high) << what;
    }
}

TEST_F(AmateurRegionTest, CountriesHaveTheirRegionAndTheirOwn60MLimits)
{
    AmateurRegion region;
    std::array<int, 3> regions{};
    int limits = 0;
    for (int country = 1; country <= 254; ++country) {
        ++regions[std::size_t(region.defaultRegion(QLocale::Country(country)))];
        limits += region.avalible60M(QLocale::Country(country));
    }
    EXPECT_EQ(regions, (std::array<int, 3>{254 - 108 - 35, 108, 35}));
    EXPECT_EQ(limits, 74);
    EXPECT_EQ(AmateurRegion::countries().at(kJapan), "Japan");
}

TEST_F(AmateurRegionTest, FrequenciesFindTheFirstBandOfTheTable)
{
    writeCountry(kGermany);
    AmateurRegion region;
    region.init();
    for (const auto &[frequency, band] :
        {std::pair(1809999, -1), {1810000, 0}, {27000000, 9}, // found though it is switched off
            {28000000, 9}, // the edge is shared, the first band wins
            {440000000, 13}, {440000001, -1}})
        EXPECT_EQ(region.band(quint64(frequency)), band) << frequency;
}
} // namespace
