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
constexpr QLocale::Country kThailand = QLocale::Country(211);
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

    static void expectBand(const AmateurRegion &region, int band, bool available, quint64 low,
        quint64 high, const char *what)
    {
        const auto info = region.getInfo(AmateurRegion::Band(band));
        EXPECT_EQ(info.available, available) << what << " band " << band;
        EXPECT_EQ(info.low, low) << what << " band " << band;
        EXPECT_EQ(info.high, high) << what << " band " << band;
    }
};

TEST_F(AmateurRegionTest, FirstStartCreatesTheFileWithTheSystemsCountry)
{
    EXPECT_TRUE(settings().path(kFile).endsWith("/Velmora Labs/VelmoraSDR2/itu.ini"));
    AmateurRegion region;
    const auto country = QLocale::system().country();
    EXPECT_EQ(stored("ITU/Country").toInt(), int(country));
    EXPECT_EQ(stored("ITU/Band11M"), "false");
    EXPECT_EQ(stored("ITU/Band60M"), "false");
    EXPECT_EQ(region.current(), region.defaultRegion(country));
}

TEST_F(AmateurRegionTest, StartTakesCountryAndSwitchesAndCompletesTheFile)
{
    settings().write(kFile, "[ITU]\nBand60M=true\nCountry=13\n");
    AmateurRegion region;
    EXPECT_TRUE(region.enable60M());
    EXPECT_FALSE(region.enable11M());
    EXPECT_EQ(region.current(), AmateurRegion::Region3);
    EXPECT_EQ(region.info(), "Location: Australia\nITU: Region 3");
    EXPECT_EQ(stored("ITU/Band11M"), "false");
}

TEST_F(AmateurRegionTest, AnUnreadableFileGivesDefaults)
{
    settings().write(kFile, QByteArray("\x00\xff[[[=\n]ITU\n", 13));
    AmateurRegion region;
    EXPECT_FALSE(region.enable11M());
    EXPECT_FALSE(region.enable60M());
    EXPECT_EQ(stored("ITU/Country").toInt(), int(QLocale::system().country()));
}

TEST_F(AmateurRegionTest, SettersSaveChangesOnlyAndTheRegionIsNeverStored)
{
    writeCountry(kAustria);
    AmateurRegion region;
    const auto savedBy = [](auto &&set) {
        QFile::remove(settings().path(kFile));
        set();
        return QFile::exists(settings().path(kFile));
    };
    EXPECT_FALSE(savedBy([&] { region.setCurrent(AmateurRegion::Region1); }));
    EXPECT_FALSE(savedBy([&] { region.setEnable11M(false); }));
    EXPECT_FALSE(savedBy([&] { region.setEnable60M(false); }));
    EXPECT_FALSE(savedBy([&] { region.setCountry(kAustralia); }));
    EXPECT_TRUE(savedBy([&] { region.setCurrent(AmateurRegion::Region2); }));
    EXPECT_TRUE(savedBy([&] { region.setEnable11M(true); }));
    EXPECT_TRUE(savedBy([&] { region.setEnable60M(true); }));

    AmateurRegion next;
    EXPECT_EQ(next.current(), AmateurRegion::Region3) << "from the country, not the last choice";
    EXPECT_TRUE(next.enable11M());
    EXPECT_TRUE(next.enable60M());
}

TEST_F(AmateurRegionTest, AnotherCountryMovesRegionAnd60MFlagAtTheNextStartOnly)
{
    writeCountry(kAustralia);
    AmateurRegion region;
    region.setCountry(kGermany);
    EXPECT_EQ(region.info(), "Location: Germany\nITU: Region 3");
    EXPECT_FALSE(region.avalible60M());
    region.saveSettings();

    AmateurRegion next;
    EXPECT_EQ(next.info(), "Location: Germany\nITU: Region 1");
    EXPECT_TRUE(next.avalible60M());
}

TEST_F(AmateurRegionTest, EdgesAndAvailabilityFollowCountryAndRegion)
{
    const struct
    {
        QLocale::Country country;
        int region;
        int band;
        bool available;
        quint64 low;
        quint64 high;
        const char *what;
    } rows[] = {
        {kAustria, 0, 0, true, 1810000, 2000000, "region 1"},
        {kAustria, 0, 1, true, 3500000, 3800000, "region 1"},
        {kAustria, 1, 1, true, 3500000, 4000000, "region 2"},
        {kAustria, 2, 1, true, 3500000, 3900000, "region 3"},
        {kAustria, 2, 4, true, 10100000, 10157300, "region 3"},
        {kAustria, 1, 12, true, 144000000, 148000000, "region 2"},
        {kAustria, 1, 13, true, 420000000, 450000000, "region 2"},
        {kAustria, 2, 13, true, 430000000, 450000000, "region 3"},
        {kAustria, 0, 9, true, 26965000, 28000000, "switched on"},
        {kJapan, 2, 9, false, 26965000, 28000000, "Japan, switched on"},
        {kJapan, 2, 0, true, 1800000, 1923500, "Japan"},
        {kJapan, 1, 13, true, 430000000, 440000000, "Japan goes before the region"},
        {kThailand, 2, 1, true, 3500000, 3600000, "Thailand"},
        {kThailand, 2, 3, false, 7000000, 7200000, "Thailand"},
        {kThailand, 2, 4, false, 10100000, 10150000, "Thailand"},
        {kThailand, 2, 9, true, 26965000, 28000000, "Thailand, switched on"},
        {kThailand, 2, 12, true, 144100000, 147000000, "Thailand"},
        {kAustria, 0, 14, false, 0, 0, "behind the last"},
        {kAustria, 0, -1, false, 0, 0, "before the first"},
    };
    AmateurRegion region;
    region.setEnable11M(true);
    for (const auto &row : rows) {
        region.setCountry(row.country);
        region.setCurrent(AmateurRegion::Region(row.region));
        expectBand(region, row.band, row.available, row.low, row.high, row.what);
    }
    region.setEnable11M(false);
    expectBand(region, 9, false, 26965000, 28000000, "switched off");
}

TEST_F(AmateurRegionTest, SixtyMetresFollowTheCountrysLimitsThenTheSwitch)
{
    AmateurRegion region;
    region.setCurrent(AmateurRegion::Region1);
    region.setCountry(kGermany);
    expectBand(region, 2, true, 5351500, 5366500, "own limits");
    region.setCountry(kAustria);
    expectBand(region, 2, false, 0, 0, "switched off");
    region.setEnable60M(true);
    expectBand(region, 2, true, 5275000, 5450000, "region 1");
    region.setCurrent(AmateurRegion::Region2);
    expectBand(region, 2, true, 5100000, 5500000, "region 2");
    region.setCountry(kJapan);
    region.setCurrent(AmateurRegion::Region3);
    expectBand(region, 2, true, 5100000, 5500000, "region 3");
    region.setCountry(kGermany);
    expectBand(region, 2, true, 5351500, 5366500, "own limits go before the switch");
}

// Country numbers as they stand in the settings file.
TEST_F(AmateurRegionTest, CountriesHaveTheirOwn60MLimits)
{
    const struct
    {
        int country;
        bool any;
        quint64 low;
        quint64 high;
    } rows[] = {
        {5, true, 5351500, 5366500},
        {58, true, 5250000, 5450000},
        {38, true, 5332000, 5405000},
        {111, true, 5275000, 5450000},
        {225, true, 5330500, 5403500},
        {0, false, 0, 0},
        {108, false, 0, 0},
        {261, false, 0, 0},
    };
    AmateurRegion region;
    for (const auto &row : rows) {
        const auto [any, low, high] = region.limits60M(QLocale::Country(row.country));
        EXPECT_EQ(any, row.any) << row.country;
        EXPECT_EQ(low, row.low) << row.country;
        EXPECT_EQ(high, row.high) << row.country;
        EXPECT_EQ(region.avalible60M(QLocale::Country(row.country)), row.any) << row.country;
    }
    int count = 0;
    for (int country = 0; country <= 261; ++country)
        count += region.avalible60M(QLocale::Country(country));
    EXPECT_EQ(count, 74);
}

TEST_F(AmateurRegionTest, CountriesFallIntoTheirRegion)
{
    AmateurRegion region;
    const auto of = [&](int country) {
        return int(region.defaultRegion(QLocale::Country(country)));
    };
    std::array<int, 3> counts{};
    for (int country = 1; country <= 254; ++country)
        ++counts[std::size_t(of(country))];
    EXPECT_EQ(counts, (std::array<int, 3>{254 - 108 - 35, 108, 35}));
    for (int country : {2, 82, 224, 243, 254})
        EXPECT_EQ(of(country), 0) << country;
    for (int country : {4, 38, 71, 225, 253})
        EXPECT_EQ(of(country), 1) << country;
    for (int country : {1, 13, 108, 211, 232})
        EXPECT_EQ(of(country), 2) << country;
    for (int country : {0, 255, 261, -1, 100000})
        EXPECT_EQ(of(country), 1) << "unknown: " << country;
}

TEST_F(AmateurRegionTest, FrequenciesFindTheFirstBandOfTheTable)
{
    writeCountry(kGermany);
    AmateurRegion region;
    EXPECT_EQ(region.band(14200000), -1) << "no table yet";
    region.init();
    region.init();
    const struct
    {
        unsigned long long frequency;
        int band;
    } rows[] = {
        {1809999, -1},
        {1810000, 0},
        {2000000, 0},
        {2000001, -1},
        {5351500, 2},
        {27000000, 9}, // found though it is switched off
        {28000000, 9}, // the edge is shared, the first band wins
        {28000001, 10},
        {440000000, 13},
        {440000001, -1},
        {~0ULL, -1},
    };
    for (const auto &row : rows)
        EXPECT_EQ(region.band(row.frequency), row.band) << row.frequency;

    region.setCurrent(AmateurRegion::Region2);
    EXPECT_EQ(region.band(1800000), -1) << "the table stays";
    region.init();
    EXPECT_EQ(region.band(1800000), 0);
}

TEST_F(AmateurRegionTest, ListsAreComplete)
{
    AmateurRegion &region = *AmateurRegion::instance();
    EXPECT_EQ(&region, AmateurRegion::instance());
    const auto bands = region.bands();
    ASSERT_EQ(bands.size(), 14);
    for (int band = 0; band < 14; ++band)
        EXPECT_EQ(int(bands[band]), band);
    const auto countries = region.countries();
    ASSERT_EQ(countries.size(), 262);
    EXPECT_EQ(countries[108], "Japan");
    EXPECT_EQ(countries[261], "Europe");
    EXPECT_NE(QMetaType::type("AmateurRegion::Band"), int(QMetaType::UnknownType));
}
} // namespace
